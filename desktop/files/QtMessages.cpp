#include "desktop/files/QtMessages.h"

#include <atomic>
#include <cassert>
#include <cstdlib>
#include <utility>

namespace tidewell {

namespace {

// Qt's handler has no other way to reach its object.
// NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables)
std::atomic<QtMessages*> current = nullptr;

} // namespace

QtMessages::QtMessages(Log& log)
    : log_(log) {
    assert(current == nullptr);
    current = this;
    qInstallMessageHandler(
        [](QtMsgType type, const QMessageLogContext& /*context*/, const QString& message) {
            if (QtMessages* const messages = current) {
                messages->take(type, message);
            }
        });
}

QtMessages::~QtMessages() {
    qInstallMessageHandler(nullptr);
    current = nullptr;
}

void QtMessages::started() {
    const std::lock_guard lock(mutex_);
    isStarting_ = false;
    if (!last_.isEmpty()) {
        log(last_);
    }
}

void QtMessages::onCompositorLost(std::function<void()> lost) {
    const std::lock_guard lock(lossMutex_);
    compositorLost_ = std::move(lost);
}

void QtMessages::take(QtMsgType type, const QString& message) {
    // There is no other sign of it.
    if (message.startsWith(QStringLiteral("The Wayland connection "))) {
        const std::lock_guard lock(lossMutex_);
        if (compositorLost_) {
            compositorLost_();
        }
    }
    std::unique_lock lock(mutex_);
    if (type == QtFatalMsg) {
        log(isStarting_ && !last_.isEmpty() ? last_ + QStringLiteral("; ") + message : message);
        lock.unlock();
        std::exit(EXIT_FAILURE); // Qt itself would abort, with nothing saved
    }
    const bool isRepeated = message == last_ || (isStarting_ && !last_.isEmpty());
    if (type == QtDebugMsg || isRepeated) {
        return;
    }
    last_ = message;
    if (!isStarting_) {
        log(message);
    }
}

void QtMessages::log(const QString& message) {
    logError(log_, "Qt: " + message.toStdString(), "log()");
}

} // namespace tidewell
