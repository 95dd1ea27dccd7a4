#include "desktop/session/ProgramEnd.h"

#include <QCoreApplication>

#include <atomic>
#include <cassert>
#include <cstdlib>
#include <utility>

namespace tidewell {

namespace {

// A function that runs at exit has no other way to reach its object.
// NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables)
std::atomic<ProgramEnd*> current = nullptr;

} // namespace

ProgramEnd::ProgramEnd(std::function<void()> ends)
    : ends_(std::move(ends)) {
    assert(current == nullptr);
    current = this;
    static const int registered = std::atexit([] {
        ProgramEnd* const programEnd = current;
        // Called from another thread, exit() leaves the main thread running.
        if (programEnd != nullptr && programEnd->thread_ == std::this_thread::get_id()) {
            programEnd->end();
        }
    });
    static_cast<void>(registered);

    QObject::connect(qApp, &QCoreApplication::aboutToQuit, &context_, [this] { end(); });
}

ProgramEnd::~ProgramEnd() {
    current = nullptr;
}

void ProgramEnd::end() {
    if (const auto ends = std::exchange(ends_, nullptr)) {
        ends();
    }
}

} // namespace tidewell
