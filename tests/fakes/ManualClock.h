#pragma once

#include "base/runtime/ContinuousClock.h"

#include <map>

namespace tidewell {

/// Virtual time, advanced by hand. One thread, except for setting and cancelling alarms of other
/// threads' tasks, which the test has to order itself.
class ManualClock final : public ContinuousClock {
public:
    Instant now() const override { return now_; }
    double seconds() const {
        return std::chrono::duration<double>(now_.time_since_epoch()).count();
    }

    AlarmId setAlarm(Instant deadline, std::function<void()> ring) override {
        alarms_.emplace(deadline, Alarm{++lastId_, std::move(ring)});
        return lastId_;
    }

    void cancelAlarm(AlarmId alarm) override {
        std::erase_if(alarms_, [alarm](const auto& entry) { return entry.second.id == alarm; });
    }

    /// Lets time pass and rings what has come due, as after a sleep of the machine: all at the
    /// new time.
    void advance(double seconds) {
        now_ = after(now_, seconds);
        while (!alarms_.empty() && alarms_.begin()->first <= now_) {
            const auto due = alarms_.extract(alarms_.begin());
            due.mapped().ring();
        }
    }

    /// Forgets all alarms, as a clock does that is destroyed.
    void dropAlarms() { alarms_.clear(); }

    std::size_t pendingAlarms() const { return alarms_.size(); }

private:
    struct Alarm {
        AlarmId id;
        std::function<void()> ring;
    };
    std::multimap<Instant, Alarm> alarms_;
    AlarmId lastId_ = 0;
    Instant now_{};
};

} // namespace tidewell
