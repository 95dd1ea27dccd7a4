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

void RunningTask::post(std::shared_ptr<RunningTask> task, std::coroutine_handle<> step) {
    Executor& executor = task->executor;
    executor.post([self = std::move(task), step] {
        if (!self->stop.stop_requested()) {
            step.resume();
        } // else it is destroyed with this job
    });
}

void RunningTask::start(std::shared_ptr<RunningTask> task) {
    const auto body = task->body.coroutine_;
    post(std::move(task), body);
}

} // namespace detail

void Resumption::resume() {
    detail::RunningTask::post(std::move(task_), coroutine_);
}

void spawn(Executor& executor, Task<void> task) {
    detail::RunningTask::start(std::make_shared<detail::RunningTask>(executor, std::move(task)));
}

OwnedTask::OwnedTask(Executor& executor, Task<void> task) {
    auto running = std::make_shared<detail::RunningTask>(executor, std::move(task));
    stop_ = running->stop;
    detail::RunningTask::start(std::move(running));
}

} // namespace tidewell
