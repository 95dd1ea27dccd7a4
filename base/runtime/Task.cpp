#include "base/runtime/Task.h"

#include "base/runtime/Waiting.h"

namespace tidewell {

namespace detail {

RunningTask::RunningTask(Executor& executor, Task<void> body, Cancelled cancelled)
    : executor_(executor)
    , cancelled_(cancelled)
    , body_(std::move(body)) {
    body_.coroutine_.promise().attach(*this, std::noop_coroutine());
}

void RunningTask::start() {
    executor_.post([self = shared_from_this()] { self->resume(self->body_.coroutine_); });
}

void RunningTask::resume(std::coroutine_handle<> coroutine) {
    if (endsWhenCancelled() && stop_.stop_requested()) {
        return; // it is destroyed with the job that called this
    }
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

namespace {

std::stop_source start(Executor& executor, Task<void> task,
                       detail::RunningTask::Cancelled cancelled) {
    const auto running =
        std::make_shared<detail::RunningTask>(executor, std::move(task), cancelled);
    running->start();
    return running->stop();
}

} // namespace

TaskHandle spawn(Executor& executor, Task<void> task) {
    return TaskHandle(start(executor, std::move(task), detail::RunningTask::Cancelled::isTold));
}

OwnedTask::OwnedTask(Executor& executor, Task<void> task)
    : stop_(start(executor, std::move(task), detail::RunningTask::Cancelled::ends)) {}

} // namespace tidewell
