#pragma once

#include <QObject>

#include <functional>
#include <thread>

namespace tidewell {

/// Calls a function once when the program ends, whichever way the end comes: the event loop's
/// regular end (Quit, a signal's) or `exit()`, which is what Qt calls when the X server goes away
/// under the program at log-out. The objects that `main` holds are still there in both cases. Of a
/// Wayland compositor that goes, QtMessages tells.
///
/// Created after the application object, on the main thread, after the things that `ends` uses;
/// at most one exists at a time. Destroying it calls nothing.
class ProgramEnd final {
public:
    explicit ProgramEnd(std::function<void()> ends);
    ProgramEnd(const ProgramEnd&) = delete;
    ProgramEnd& operator=(const ProgramEnd&) = delete;
    ~ProgramEnd();

private:
    void end();

    std::function<void()> ends_;
    std::thread::id thread_ = std::this_thread::get_id();
    QObject context_;
};

} // namespace tidewell
