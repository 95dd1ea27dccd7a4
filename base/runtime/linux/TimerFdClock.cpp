#include "base/runtime/linux/TimerFdClock.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <ctime>
#include <sys/timerfd.h>
#include <unistd.h>

namespace tidewell {

TimerFdClock::TimerFdClock()
    : timer_(timerfd_create(CLOCK_BOOTTIME, TFD_NONBLOCK | TFD_CLOEXEC)) {
    if (timer_ < 0) {
        throw std::system_error(errno, std::generic_category(), "timerfd_create");
    }
}

TimerFdClock::~TimerFdClock() {
    Alarms dropped;
    {
        const std::lock_guard lock(mutex_);
        dropped.swap(alarms_);
    }
    // Destroying an alarm may destroy a task that cancels its other alarms: not under the lock,
    // and while the timer is still there.
    dropped.clear();
    close(timer_);
}

ContinuousClock::Instant TimerFdClock::now() const {
    timespec time{};
    clock_gettime(CLOCK_BOOTTIME, &time);
    return Instant(std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec));
}

ContinuousClock::AlarmId TimerFdClock::setAlarm(Instant deadline, std::function<void()> ring) {
    const std::lock_guard lock(mutex_);
    const AlarmId id = ++lastId_;
    const auto added = alarms_.emplace(deadline, Alarm{id, std::move(ring)});
    if (added == alarms_.begin()) {
        armTimer();
    }
    return id;
}

void TimerFdClock::cancelAlarm(AlarmId alarm) {
    Alarms::node_type dropped; // destroyed after the lock is released, see the destructor
    const std::lock_guard lock(mutex_);
    const auto found = std::ranges::find_if(
        alarms_, [alarm](const Alarms::value_type& entry) { return entry.second.id == alarm; });
    if (found == alarms_.end()) {
        return;
    }
    const bool wasNext = found == alarms_.begin();
    dropped = alarms_.extract(found);
    if (wasNext) {
        armTimer();
    }
}

void TimerFdClock::ringDueAlarms() {
    std::uint64_t expirations = 0;
    // Only makes the descriptor unreadable again; that it was not readable is no error.
    [[maybe_unused]] const auto bytes = read(timer_, &expirations, sizeof expirations);

    // One by one: what an alarm does may cancel one that has come due with it, or run an event loop
    // in which others have to ring.
    const Instant present = now();
    for (;;) {
        Alarms::node_type due; // destroyed without the lock, see the destructor
        {
            const std::lock_guard lock(mutex_);
            if (alarms_.empty() || alarms_.begin()->first > present) {
                return; // the timer was set when that one became the next
            }
            due = alarms_.extract(alarms_.begin());
            armTimer();
        }
        due.mapped().ring();
    }
}

void TimerFdClock::armTimer() {
    itimerspec setting{}; // all zero: disarmed
    if (!alarms_.empty()) {
        // A zero setting would disarm; the deadlines before the epoch of the clock are due anyway.
        const auto next =
            std::max(alarms_.begin()->first.time_since_epoch(), std::chrono::nanoseconds(1));
        const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(next);
        setting.it_value.tv_sec = static_cast<std::time_t>(seconds.count());
        setting.it_value.tv_nsec =
            static_cast<decltype(timespec::tv_nsec)>((next - seconds).count());
    }
    timerfd_settime(timer_, TFD_TIMER_ABSTIME, &setting, nullptr);
}

} // namespace tidewell
