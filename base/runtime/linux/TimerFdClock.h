#pragma once

#include "base/runtime/ContinuousClock.h"

#include <map>
#include <mutex>
#include <system_error>

namespace tidewell {

/// The real clock: CLOCK_BOOTTIME, with one timerfd for all alarms. An event loop has to poll
/// `fileDescriptor()` and call `ringDueAlarms()` when it is readable; alarms ring inside that call,
/// on its thread. An alarm that came due during a suspend rings right after the resume.
class TimerFdClock final : public ContinuousClock {
public:
    /// Throws std::system_error where the kernel gives no timer.
    TimerFdClock();
    /// Drops the alarms that have not rung.
    ~TimerFdClock() override;

    Instant now() const override;
    AlarmId setAlarm(Instant deadline, std::function<void()> ring) override;
    void cancelAlarm(AlarmId alarm) override;

    int fileDescriptor() const { return timer_; }
    void ringDueAlarms();

private:
    struct Alarm {
        AlarmId id;
        std::function<void()> ring;
    };
    using Alarms = std::multimap<Instant, Alarm>;

    void armTimer(); // with mutex_ held

    int timer_;
    std::mutex mutex_;
    Alarms alarms_;
    AlarmId lastId_ = 0;
};

} // namespace tidewell
