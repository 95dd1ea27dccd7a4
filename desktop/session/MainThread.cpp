#include "desktop/session/MainThread.h"

#include <QCoreApplication>
#include <QEvent>

#include <utility>

namespace tidewell {

MainThread::~MainThread() {
    // One by one, while there still is a queue: what goes with a job may post another one.
    while (!jobs_.empty()) {
        const auto dropped = std::move(jobs_.front());
        jobs_.pop_front();
    }
}

void MainThread::post(std::function<void()> job) {
    {
        const std::lock_guard lock(mutex_);
        jobs_.push_back(std::move(job));
    }
    QCoreApplication::postEvent(this, new QEvent(QEvent::User));
}

void MainThread::customEvent(QEvent* /*ofOneJob*/) {
    std::function<void()> job;
    {
        const std::lock_guard lock(mutex_);
        job = std::move(jobs_.front());
        jobs_.pop_front();
    }
    job();
}

ClockDriver::ClockDriver(TimerFdClock& clock)
    : notifier_(clock.fileDescriptor(), QSocketNotifier::Read) {
    QObject::connect(&notifier_, &QSocketNotifier::activated, &notifier_,
                     [&clock] { clock.ringDueAlarms(); });
}

} // namespace tidewell
