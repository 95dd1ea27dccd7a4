#pragma once

#include "base/values/FileDescriptor.h"

#include <QSocketNotifier>

#include <array>
#include <csignal>
#include <functional>

namespace tidewell {

/// Turns the signals that ask a program to end (SIGTERM, SIGINT, SIGHUP) into one call of a
/// function in the event loop of the thread that creates this. At most one of these exists at a
/// time.
///
/// Only the first signal calls. Later ones are swallowed as long as this lives, so that impatience
/// cannot end the program in the middle of saving; it is to be destroyed once everything is saved,
/// and from then on a signal ends the program at once, as before. SIGHUP stays ignored where the
/// program was started with it ignored (`nohup`).
class TerminationSignals final {
public:
    /// Throws std::system_error where the kernel gives no event descriptor.
    explicit TerminationSignals(std::function<void()> endRequested);
    TerminationSignals(const TerminationSignals&) = delete;
    TerminationSignals& operator=(const TerminationSignals&) = delete;
    /// Restores the earlier handlers.
    ~TerminationSignals();

private:
    struct Replaced {
        int signal;
        struct sigaction previous;
    };

    FileDescriptor wakeUp_;
    QSocketNotifier notifier_;
    std::array<Replaced, 3> replaced_;
};

} // namespace tidewell
