#pragma once

#include "base/runtime/Waiting.h"
#include "base/values/Interface.h"

#include <chrono>
#include <cstdint>

namespace tidewell {

/// A monotonic clock that goes on counting while the machine is suspended. It must outlive the
/// tasks that sleep on it. All operations may be called from any thread.
class ContinuousClock : public Interface {
public:
    using Duration = std::chrono::nanoseconds;
    /// Time since some fixed moment of this machine's uptime.
    using Instant = std::chrono::time_point<ContinuousClock, Duration>;
    using AlarmId = std::uint64_t;

    virtual Instant now() const = 0;

    /// Calls `ring` once, at `deadline` or as soon after it as the clock can, on a thread of the
    /// clock's choice and never from within this call. A deadline in the past rings at once. Rings
    /// in the order of their deadlines, equal ones in the order in which they were set.
    virtual AlarmId setAlarm(Instant deadline, std::function<void()> ring) = 0;

    /// Forgets an alarm; one that rang or never was is ignored.
    virtual void cancelAlarm(AlarmId alarm) = 0;
};

/// `seconds` later than `start`, clamped to the clock's range (292 years). NaN counts as 0.
ContinuousClock::Instant after(ContinuousClock::Instant start, double seconds);

namespace detail {

class SleepAwaiter {
public:
    SleepAwaiter(ContinuousClock& clock, ContinuousClock::Instant deadline)
        : clock_(clock)
        , deadline_(deadline) {}

    bool await_ready() const noexcept { return false; }

    template <std::derived_from<PromiseBase> Promise>
    void await_suspend(std::coroutine_handle<Promise> coroutine) {
        sleep(std::make_shared<Resumption>(coroutine), coroutine.promise().task().stop.get_token());
    }
    void await_resume() const noexcept {}

private:
    void sleep(std::shared_ptr<Resumption> resumption, std::stop_token stop);

    ContinuousClock& clock_;
    ContinuousClock::Instant deadline_;
    std::optional<OnCancel> onCancel_;
};

} // namespace detail

/// `co_await sleepFor(clock, seconds)`: waits until so many seconds have passed since the call, see
/// `after`. Cancelling the task ends the wait at once.
inline detail::SleepAwaiter sleepFor(ContinuousClock& clock, double seconds) {
    return {clock, after(clock.now(), seconds)};
}

} // namespace tidewell
