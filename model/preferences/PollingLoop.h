#pragma once

#include "base/runtime/ContinuousClock.h"
#include "model/preferences/StoredPreferences.h"

#include <memory>
#include <type_traits>

namespace tidewell {

/// The loop of a model that samples: runs `step(model)`, or awaits it where it is a task, at once
/// and again after each pause of the polling interval, which is read anew before every pause. Ends
/// only by being cancelled: during a pause at once, during a step once that has returned.
/// `defaults` and `clock` must outlive it.
template <typename Model, typename Result>
Task<void> repeatOnPollingInterval(std::shared_ptr<Model> model,
                                   Result (*step)(std::shared_ptr<Model>),
                                   const UserDefaults* defaults, ContinuousClock* clock) {
    for (;;) {
        const bool cancelled = co_await currentTaskIsCancelled();
        if (cancelled) {
            co_return;
        }
        if constexpr (std::is_void_v<Result>) {
            step(model);
        } else {
            co_await step(model);
        }
        const auto deadline = after(clock->now(), pollingIntervalForLoops(*defaults));
        const SleepResult slept = co_await sleepUntil(*clock, deadline);
        if (slept == SleepResult::cancelled) {
            co_return;
        }
    }
}

} // namespace tidewell
