#include "desktop/session/HangingBuses.h"

#include <cerrno>
#include <cstdlib>
#include <string>

#include <systemd/sd-bus.h>

namespace tidewell {

namespace {

using Milliseconds = std::chrono::milliseconds;

/// Whether the bus takes longer than `patience` to authenticate us. One that refuses or is not
/// there does not hang: connecting to it fails at once.
bool hangs(int (*open)(sd_bus**), Milliseconds patience) {
    using Clock = std::chrono::steady_clock;
    const auto deadline = Clock::now() + patience;
    sd_bus* bus = nullptr;
    int result = open(&bus); // only starts connecting
    while (result >= 0 || result == -EINTR) {
        if (sd_bus_is_ready(bus) != 0) {
            break;
        }
        const auto left =
            std::chrono::duration_cast<std::chrono::microseconds>(deadline - Clock::now());
        if (left.count() <= 0) {
            result = -ETIMEDOUT;
            break;
        }
        result = sd_bus_process(bus, nullptr);
        if (result == 0) {
            result = sd_bus_wait(bus, static_cast<std::uint64_t>(left.count()));
        }
    }
    sd_bus_close_unref(bus);
    // EAGAIN: the socket's backlog of connections is full.
    return result == -ETIMEDOUT || result == -EAGAIN;
}

} // namespace

void leaveOutHangingBuses(Milliseconds patience, Log& log) {
    struct Bus {
        std::string name;
        int (*open)(sd_bus**);
        const char* variable;
    };
    for (const Bus& bus : {Bus{"session", sd_bus_open_user, "DBUS_SESSION_BUS_ADDRESS"},
                           Bus{"system", sd_bus_open_system, "DBUS_SYSTEM_BUS_ADDRESS"}}) {
        if (hangs(bus.open, patience)) {
            logMessage(log, "The " + bus.name + " bus does not answer: going on without it.",
                       "general", __FILE__, "leaveOutHangingBuses(patience:)", __LINE__,
                       LogLevel::error);
            setenv(bus.variable, "disabled:", 1); // no transport of that name: fails at once
        }
    }
}

} // namespace tidewell
