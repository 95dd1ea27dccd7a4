#include "model/memory/TaskScheduler.h"

#include "base/runtime/Waiting.h"

#include <utility>

namespace tidewell {

TaskScheduler::TaskScheduler(Executor& executor, Executor& mainThread, ContinuousClock& clock,
                             Callback callback)
    : executor_(executor)
    , mainThread_(mainThread)
    , clock_(clock)
    , callback_(std::move(callback)) {}

TaskHandle TaskScheduler::start() {
    return spawn(executor_, runLoop(shared_from_this()));
}

Task<void> TaskScheduler::runLoop(Self self) {
    do {
        const bool cancelled = co_await currentTaskIsCancelled();
        if (cancelled) {
            co_return;
        }
        const Callback& callback = self->callback_;
        auto call = runOn(self->mainThread_, [&callback] {
            if (callback) {
                callback();
            }
        });
        co_await call;

        const auto deadline = after(self->clock_.now(), executionInterval);
        const SleepResult slept = co_await sleepUntil(self->clock_, deadline);
        if (slept == SleepResult::cancelled) {
            co_return;
        }
    } while (repeating);
}

} // namespace tidewell
