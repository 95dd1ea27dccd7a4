#pragma once

#include "base/runtime/Executor.h"
#include "base/runtime/linux/TimerFdClock.h"

#include <QObject>
#include <QSocketNotifier>

#include <deque>
#include <mutex>

namespace tidewell {

/// The main thread as an executor: jobs run in Qt's event loop. Created on the main thread,
/// after the application object.
class MainThread final : public Executor, private QObject {
public:
    MainThread() = default;
    /// Drops the jobs that wait.
    ~MainThread() override;

    void post(std::function<void()> job) override;

private:
    void customEvent(QEvent* ofOneJob) override;

    // Not in the events themselves: Qt's locks are none that the thread sanitizer sees, so that
    // what it hands from one thread to another looks like a race.
    std::mutex mutex_;
    std::deque<std::function<void()>> jobs_;
};

/// Lets a clock's alarms ring in the event loop of the thread that creates this, which must be the
/// one that destroys it. The clock must outlive it.
class ClockDriver final {
public:
    explicit ClockDriver(TimerFdClock& clock);

private:
    QSocketNotifier notifier_;
};

} // namespace tidewell
