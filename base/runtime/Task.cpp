#include "base/runtime/Task.h"

#include "base/runtime/Waiting.h"

namespace tidewell {

namespace detail {

RunningTask::RunningTask(Executor& executor, Task<void> body)
    : executor_(executor)
    , body_(std::move(body)) {
    body_.coroutine_.promise().attach(*this, std::noop_coroutine());
}

void RunningTask::start() {
    executor_.post([self = shared_from_this()] { self->resume(self->body_.coroutine_); });
}

void RunningTask::resume(std::coroutine_handle<> coroutine) {
    coroutine.resume();
    if (body_.coroutine_.done()) {
        try {
            body_.coroutine_.promise().takeResult();
        } catch (...) {
            std::terminate(); // nobody awaits a spawned task who could handle it
        }
    }
}

} // namespace detail

void Resumption::resume() {
    auto& executor = task_->executor();
    executor.post([task = std::move(task_), coroutine = coroutine_] { task->resume(coroutine); });
}

TaskHandle spawn(Executor& executor, Task<void> task) {
    const auto running = std::make_shared<detail::RunningTask>(executor, std::move(task));
    running->start();
    return TaskHandle(running->stop());
}

} // namespace tidewell
