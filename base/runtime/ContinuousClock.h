#pragma once

#include "base/runtime/Waiting.h"

#include <chrono>
#include <cstdint>

namespace tidewell {

/// A monotonic clock that goes on counting while the machine is suspended. It must outlive the
/// tasks that sleep on it. All operations may be called from any thread.
class ContinuousClock {
public:
    using Duration = std::chrono::nanoseconds;
    /// Time since some fixed moment of this machine's uptime.
    using Instant = std::chrono::time_point<ContinuousClock, Duration>;
    using AlarmId = std::uint64_t;

    ContinuousClock() = default;
    ContinuousClock(const ContinuousClock&) = delete;
    ContinuousClock& operator=(const ContinuousClock&) = delete;
    virtual ~ContinuousClock() = default;

    virtual Instant now() const = 0;

    /// Calls `ring` once at `deadline` or as soon after it as the clock's owner gets to it, never
    /// from within this call. A deadline in the past rings at once. Rings in the order of their
    /// deadlines, equal ones in the order in which they were set.
    virtual AlarmId setAlarm(Instant deadline, std::function<void()> ring) = 0;

    /// Forgets an alarm; one that rang or never was is ignored.
    virtual void cancelAlarm(AlarmId alarm) = 0;
};

/// `seconds` later than `start`, clamped to the clock's range (292 years). NaN counts as 0.
ContinuousClock::Instant after(ContinuousClock::Instant start, double seconds);

enum class SleepResult { elapsed, cancelled };

namespace detail {

class SleepAwaiter {
public:
    SleepAwaiter(ContinuousClock& clock, ContinuousClock::Instant deadline)
        : clock_(clock)
        , deadline_(deadline) {}

    bool await_ready() const noexcept { return false; }

    template <std::derived_from<PromiseBase> Promise>
    bool await_suspend(std::coroutine_handle<Promise> coroutine) {
        const std::stop_source& stop = coroutine.promise().task().stop();
        if (stop.stop_requested()) {
            result_ = SleepResult::cancelled;
            // Suspended, it has nobody who would resume it.
            return coroutine.promise().task().endsWhenCancelled();
        }
        sleepUntilWoken(std::make_shared<Resumption>(coroutine), stop.get_token());
        return true;
    }

    SleepResult await_resume();

private:
    /// Runs on the thread that cancels. Holds the resumption weakly: the alarm owns it, and so a
    /// task whose alarm is dropped with the clock is not kept alive by its own cancellation.
    struct Cancel {
        SleepAwaiter& awaiter;
        std::weak_ptr<Resumption> resumption;
        void operator()() const;
    };

    void sleepUntilWoken(std::shared_ptr<Resumption> resumption, std::stop_token stop);

    ContinuousClock& clock_;
    ContinuousClock::Instant deadline_;
    ContinuousClock::AlarmId alarm_ = 0;
    // Written by whoever claims the resumption, read when the task goes on: the executor's queue
    // stands between the two.
    SleepResult result_ = SleepResult::elapsed;
    std::optional<std::stop_callback<Cancel>> onCancel_;
};

} // namespace detail

/// `co_await sleepUntil(clock, deadline)`: waits until the clock reaches `deadline`. Cancelling the
/// task ends the wait at once, with `cancelled`; so does having been cancelled before.
inline detail::SleepAwaiter sleepUntil(ContinuousClock& clock, ContinuousClock::Instant deadline) {
    return {clock, deadline};
}

} // namespace tidewell
