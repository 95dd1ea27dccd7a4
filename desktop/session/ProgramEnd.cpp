#include "desktop/session/ProgramEnd.h"

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
std::atomic<ProgramEnd*> current = nullptr;

void answer(QSessionManager& manager) {
    manager.setRestartHint(QSessionManager::RestartNever);
}

} // namespace

ProgramEnd::ProgramEnd(std::function<void()> ends)
    : ends_(std::move(ends)) {
    assert(current == nullptr);
    current = this;
    static const int registered = std::atexit(&ProgramEnd::atExit);
    static_cast<void>(registered);

    // Directly: the session manager looks at the answers when the signal returns.
    QObject::connect(qGuiApp, &QGuiApplication::commitDataRequest, &context_, answer,
                     Qt::DirectConnection);
    QObject::connect(qGuiApp, &QGuiApplication::saveStateRequest, &context_, answer,
                     Qt::DirectConnection);
    QObject::connect(qGuiApp, &QGuiApplication::aboutToQuit, &context_, [this] { end(); });
}

ProgramEnd::~ProgramEnd() {
    current = nullptr;
}

void ProgramEnd::atExit() {
    ProgramEnd* const programEnd = current;
    // Called from another thread, exit() leaves the main thread running.
    if (programEnd != nullptr && programEnd->thread_ == std::this_thread::get_id()) {
        programEnd->end();
    }
}

void ProgramEnd::end() {
    if (const auto ends = std::exchange(ends_, nullptr)) {
        ends();
    }
}

} // namespace tidewell
