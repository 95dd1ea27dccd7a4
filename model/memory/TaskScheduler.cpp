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

OwnedTask TaskScheduler::start() {
    return {executor_, runLoop(shared_from_this())};
}

Task<void> TaskScheduler::runLoop(Self self) {
    do {
        const Callback& callback = self->callback_;
        auto call = runOn(self->mainThread_, [&callback] {
            if (callback) {
                callback();
            }
        });
        co_await call;

        co_await sleepFor(self->clock_, executionInterval);
    } while (repeating);
}

} // namespace tidewell
