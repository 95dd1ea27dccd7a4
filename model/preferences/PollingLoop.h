#pragma once

#include "base/runtime/ContinuousClock.h"
#include "model/preferences/StoredPreferences.h"

#include <memory>

namespace tidewell {

/// The loop of a model that samples: awaits `step(model)` at once, and again after each pause of
/// the polling interval, which is read anew before every pause. Ends only by being cancelled:
/// during a pause at once, during a step once that has returned. `defaults` and `clock` must
/// outlive it.
template <typename Model>
Task<void> repeatOnPollingInterval(std::shared_ptr<Model> model,
                                   Task<void> (*step)(std::shared_ptr<Model>),
                                   const UserDefaults* defaults, ContinuousClock* clock) {
    for (;;) {
        const bool cancelled = co_await currentTaskIsCancelled();
        if (cancelled) {
            co_return;
        }
        co_await step(model);
        const auto deadline = after(clock->now(), pollingIntervalForLoops(*defaults));
        const SleepResult slept = co_await sleepUntil(*clock, deadline);
        if (slept == SleepResult::cancelled) {
            co_return;
        }
    }
}

} // namespace tidewell
