#include "desktop/session/TerminationSignals.h"

#include <atomic>
#include <cassert>
#include <cerrno>
#include <cstdint>
#include <system_error>

#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

namespace tidewell {

namespace {

// A signal handler has no other way to reach its object.
// NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables)
std::atomic<int> signalled = -1;
static_assert(std::atomic<int>::is_always_lock_free);

int newEventDescriptor() {
    const int descriptor = eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
    if (descriptor < 0) {
        throw std::system_error(errno, std::generic_category(), "eventfd");
    }
    return descriptor;
}

void makeReadable(int eventDescriptor) {
    const std::uint64_t one = 1;
    while (write(eventDescriptor, &one, sizeof one) < 0 && errno != EAGAIN) {
        // EAGAIN: the counter is full, so that it is readable all the same.
    }
}

extern "C" void noteSignal(int /*signal*/) {
    const int error = errno; // the interrupted code may be about to read it
    makeReadable(signalled.load());
    errno = error;
}

} // namespace

TerminationSignals::TerminationSignals(std::function<void()> endRequested, Overdue overdue)
    : wakeUp_(newEventDescriptor())
    , stop_(newEventDescriptor())
    , notifier_(wakeUp_.get(), QSocketNotifier::Read)
    , replaced_{{{SIGTERM, {}}, {SIGINT, {}}, {SIGHUP, {}}}} {
    assert(signalled == -1);
    signalled = wakeUp_.get();
    QObject::connect(&notifier_, &QSocketNotifier::activated, &notifier_,
                     [this, endRequested = std::move(endRequested)] {
                         notifier_.setEnabled(false);
                         endRequested();
                     });
    for (Replaced& replaced : replaced_) {
        struct sigaction action = {};
        sigfillset(&action.sa_mask);
        action.sa_flags = SA_RESTART;
        action.sa_handler = noteSignal;
        sigaction(replaced.signal, &action, &replaced.previous);
        if (replaced.signal == SIGHUP && replaced.previous.sa_handler == SIG_IGN) {
            sigaction(SIGHUP, &replaced.previous, nullptr);
        }
    }
    watcher_ = std::thread([this, overdue = std::move(overdue)] { watch(overdue); });
}

void TerminationSignals::watch(const Overdue& overdue) const {
    std::array<pollfd, 2> descriptors{{{stop_.get(), POLLIN, 0}, {wakeUp_.get(), POLLIN, 0}}};
    while (::poll(descriptors.data(), descriptors.size(), -1) < 0) {
        // A signal handler has run on this thread.
    }
    pollfd& stop = descriptors.front();
    while (stop.revents == 0) {
        if (::poll(&stop, 1, static_cast<int>(overdue.patience.count())) == 0) {
            overdue.call();
        }
    }
}

TerminationSignals::~TerminationSignals() {
    makeReadable(stop_.get());
    watcher_.join();
    for (const Replaced& replaced : replaced_) {
        sigaction(replaced.signal, &replaced.previous, nullptr);
    }
    signalled = -1;
}

} // namespace tidewell
