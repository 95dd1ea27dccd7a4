#include "base/runtime/ContinuousClock.h"

#include <cmath>

namespace tidewell {

ContinuousClock::Instant after(ContinuousClock::Instant start, double seconds) {
    using Duration = ContinuousClock::Duration;
    const auto startCount = start.time_since_epoch().count();
    // 2^63 nanoseconds: doubles below it convert without overflow.
    constexpr double limit = 9223372036854775808.0;
    const double nanoseconds = std::isnan(seconds) ? 0.0 : std::trunc(seconds * 1e9);
    if (nanoseconds >= limit) {
        return ContinuousClock::Instant::max();
    }
    if (nanoseconds < -limit) {
        return ContinuousClock::Instant::min();
    }
    Duration::rep sum = 0;
    if (__builtin_add_overflow(startCount, static_cast<Duration::rep>(nanoseconds), &sum)) {
        return nanoseconds < 0 ? ContinuousClock::Instant::min() : ContinuousClock::Instant::max();
    }
    return ContinuousClock::Instant(Duration(sum));
}

namespace detail {

void SleepAwaiter::sleep(std::shared_ptr<Resumption> resumption, std::stop_token stop) {
    const std::weak_ptr<Resumption> weak = resumption;
    const auto alarm = clock_.setAlarm(deadline_, [resumption = std::move(resumption)] {
        if (resumption->claim()) {
            resumption->resume();
        }
    });
    // The task cannot go on before this returns, even if the alarm rings now: its executor is
    // busy with the very job that called us.
    onCancel_.emplace(std::move(stop), [this, weak, alarm] {
        const auto pending = weak.lock();
        if (pending && pending->claim()) {
            clock_.cancelAlarm(alarm);
            pending->resume();
        }
    });
}

} // namespace detail

} // namespace tidewell
