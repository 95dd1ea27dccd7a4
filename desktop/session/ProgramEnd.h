#pragma once

#include <QObject>

#include <functional>
#include <thread>

namespace tidewell {

/// Calls a function once when the program ends, whichever way the end comes: the event loop's
/// regular end (Quit, a signal's, the session manager's) or `exit()`, which is what Qt calls when
/// the X server goes away under the program at log-out. The objects that `main` holds are still
/// there in both cases.
///
/// Of the session manager's requests only the answers are given here: never a prompt, never to be
/// started again by it (that is the login item's matter). They are no reason to save: they also
/// come when a session is merely recorded, and after those that do end it the session manager ends
/// the event loop, or the display goes. So that it can, no window may refuse to be closed.
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
    static void atExit();
    void end();

    std::function<void()> ends_;
    std::thread::id thread_ = std::this_thread::get_id();
    QObject context_;
};

} // namespace tidewell
