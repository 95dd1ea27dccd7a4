#include "desktop/session/MainThread.h"

#include <QCoreApplication>
#include <QMetaObject>

namespace tidewell {

MainThread::~MainThread() {
    // Before the context goes: what goes with a job may post another one.
    QCoreApplication::removePostedEvents(&context_);
}

void MainThread::post(std::function<void()> job) {
    QMetaObject::invokeMethod(&context_, std::move(job), Qt::QueuedConnection);
}

ClockDriver::ClockDriver(TimerFdClock& clock)
    : notifier_(clock.fileDescriptor(), QSocketNotifier::Read) {
    QObject::connect(&notifier_, &QSocketNotifier::activated, &notifier_,
                     [&clock] { clock.ringDueAlarms(); });
}

} // namespace tidewell
