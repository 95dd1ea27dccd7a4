#include "desktop/session/UsableBuses.h"

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <string_view>

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

// No transport of that name: connecting fails at once.
constexpr auto nowhere = "disabled:";
constexpr auto sessionVariable = "DBUS_SESSION_BUS_ADDRESS";

/// Whether libdbus would start a bus, as dbus-launch does.
bool wouldBeStarted() {
    const char* address = std::getenv(sessionVariable);
    if (address != nullptr && *address != '\0') {
        return std::string_view(address).starts_with("autolaunch:");
    }
    const char* runtime = std::getenv("XDG_RUNTIME_DIR");
    std::error_code error;
    return runtime == nullptr ||
           !std::filesystem::is_socket(std::filesystem::path(runtime) / "bus", error);
}

} // namespace

bool sessionBusAccepts() {
    sd_bus* bus = nullptr;
    const int result = sd_bus_open_user(&bus); // only starts connecting
    sd_bus_close_unref(bus);
    return result >= 0;
}

void leaveOutUnusableBuses(Milliseconds patience, Log& log) {
    if (wouldBeStarted()) {
        setenv(sessionVariable, nowhere, 1);
    }
    struct Bus {
        std::string name;
        int (*open)(sd_bus**);
        const char* variable;
    };
    for (const Bus& bus : {Bus{"session", sd_bus_open_user, sessionVariable},
                           Bus{"system", sd_bus_open_system, "DBUS_SYSTEM_BUS_ADDRESS"}}) {
        if (hangs(bus.open, patience)) {
            logError(log, "The " + bus.name + " bus does not answer: going on without it.",
                     "leaveOutUnusableBuses()");
            setenv(bus.variable, nowhere, 1);
        }
    }
}

} // namespace tidewell
