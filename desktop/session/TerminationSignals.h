#pragma once

#include "base/values/FileDescriptor.h"

#include <QSocketNotifier>

#include <array>
#include <chrono>
#include <csignal>
#include <functional>
#include <thread>

namespace tidewell {

/// Turns the signals that ask a program to end (SIGTERM, SIGINT, SIGHUP) into one call of a
/// function in the event loop of the thread that creates this. At most one of these exists at a
/// time.
///
/// Only the first signal calls. Later ones are swallowed as long as this lives, so that impatience
/// cannot end the program in the middle of saving; it is to be destroyed once everything is saved,
/// and from then on a signal ends the program at once, as before. SIGHUP stays ignored where the
/// program was started with it ignored (`nohup`).
///
/// Where the event loop does not get to its end within `patience` of the signal, because the main
/// thread waits for a display that has stopped answering, say, a thread of this object's own calls
/// another function, and again each time that the patience has passed.
class TerminationSignals final {
public:
    struct Overdue {
        std::chrono::milliseconds patience;
        std::function<void()> call; ///< on a thread of its own, while this object lives
    };

    /// Throws std::system_error where the kernel gives no event descriptor or no thread.
    TerminationSignals(std::function<void()> endRequested, Overdue overdue);
    TerminationSignals(const TerminationSignals&) = delete;
    TerminationSignals& operator=(const TerminationSignals&) = delete;
    /// Restores the earlier handlers; waits for a call of `overdue`.
    ~TerminationSignals();

private:
    struct Replaced {
        int signal;
        struct sigaction previous;
    };

    void watch(const Overdue& overdue) const;

    FileDescriptor wakeUp_;
    FileDescriptor stop_;
    QSocketNotifier notifier_;
    std::array<Replaced, 3> replaced_;
    std::thread watcher_;
};

} // namespace tidewell
