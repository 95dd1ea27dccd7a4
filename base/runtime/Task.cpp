#include "base/runtime/Task.h"

#include "base/runtime/OwnedTask.h"
#include "base/runtime/Waiting.h"

namespace tidewell {

namespace detail {

RunningTask::RunningTask(Executor& itsExecutor, Task<void> itsBody)
    : executor(itsExecutor)
    , body(std::move(itsBody)) {
    body.coroutine_.promise().attach(*this, std::noop_coroutine());
}

void RunningTask::post(std::coroutine_handle<> step) {
    executor.post([self = shared_from_this(), step] {
        if (!self->stop.stop_requested()) {
            step.resume();
        } // else it is destroyed with this job
    });
}

} // namespace detail

void Resumption::resume() {
    const auto task = std::move(task_);
    task->post(coroutine_);
}

void spawn(Executor& executor, Task<void> task) {
    std::make_shared<detail::RunningTask>(executor, std::move(task))->start();
}

OwnedTask::OwnedTask(Executor& executor, Task<void> task) {
    const auto running = std::make_shared<detail::RunningTask>(executor, std::move(task));
    stop_ = running->stop;
    running->start();
}

} // namespace tidewell
