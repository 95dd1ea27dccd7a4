#include "desktop/session/SessionEnd.h"

#include <QGuiApplication>
#include <QSessionManager>

#include <atomic>
#include <cassert>
#include <cstdlib>
#include <utility>

namespace tidewell {

namespace {

// A function that runs at exit has no other way to reach its object.
// NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables)
std::atomic<SessionEnd*> current = nullptr;

void answer(QSessionManager& manager) {
    manager.setRestartHint(QSessionManager::RestartNever);
}

} // namespace

SessionEnd::SessionEnd(std::function<void()> ends)
    : ends_(std::move(ends)) {
    assert(current == nullptr);
    current = this;
    static const int registered = std::atexit(&SessionEnd::atExit);
    static_cast<void>(registered);

    // Directly: the session manager looks at the answers when the signal returns.
    QObject::connect(qGuiApp, &QGuiApplication::commitDataRequest, &context_, answer,
                     Qt::DirectConnection);
    QObject::connect(qGuiApp, &QGuiApplication::saveStateRequest, &context_, answer,
                     Qt::DirectConnection);
    QObject::connect(qGuiApp, &QGuiApplication::aboutToQuit, &context_, [this] { end(); });
}

SessionEnd::~SessionEnd() {
    current = nullptr;
}

void SessionEnd::atExit() {
    SessionEnd* const sessionEnd = current;
    // Called from another thread, exit() leaves the main thread running.
    if (sessionEnd != nullptr && sessionEnd->thread_ == std::this_thread::get_id()) {
        sessionEnd->end();
    }
}

void SessionEnd::end() {
    if (const auto ends = std::exchange(ends_, nullptr)) {
        ends();
    }
}

} // namespace tidewell
