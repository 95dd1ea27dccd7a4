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

enum class BusState {
    answers,
    fails, ///< at once: it refuses, or is not there
    hangs, ///< takes longer than the patience to authenticate us
};

BusState stateOf(int (*open)(sd_bus**), Milliseconds patience) {
    using Clock = std::chrono::steady_clock;
    const auto deadline = Clock::now() + patience;
    sd_bus* bus = nullptr;
    int result = open(&bus); // only starts connecting
    while (result >= 0 || result == -EINTR) {
        if (const int isReady = sd_bus_is_ready(bus); isReady != 0) {
            result = isReady;
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
    const bool hangs = result == -ETIMEDOUT || result == -EAGAIN;
    return result > 0 ? BusState::answers : hangs ? BusState::hangs : BusState::fails;
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

bool sessionBusAnswers() {
    return stateOf(sd_bus_open_user, Milliseconds(20)) == BusState::answers;
}

UnusableBuses::UnusableBuses(Milliseconds patience, Log& log) {
    if (wouldBeStarted()) {
        leaveOut(sessionVariable);
    }
    struct Bus {
        std::string name;
        int (*open)(sd_bus**);
        const char* variable;
    };
    for (const Bus& bus : {Bus{"session", sd_bus_open_user, sessionVariable},
                           Bus{"system", sd_bus_open_system, "DBUS_SYSTEM_BUS_ADDRESS"}}) {
        if (stateOf(bus.open, patience) == BusState::hangs) {
            logError(log, "The " + bus.name + " bus does not answer: going on without it.",
                     "UnusableBuses()");
            leaveOut(bus.variable);
            isSessionHanging_ = isSessionHanging_ || bus.variable == sessionVariable;
        }
    }
}

void UnusableBuses::leaveOut(const char* variable) {
    const char* const address = std::getenv(variable);
    addresses_.emplace_back(variable, address == nullptr ? std::nullopt
                                                         : std::optional<std::string>(address));
    setenv(variable, nowhere, 1);
}

void UnusableBuses::giveBack() {
    for (const auto& [variable, address] : addresses_) {
        if (address) {
            setenv(variable, address->c_str(), 1);
        } else {
            unsetenv(variable);
        }
    }
    addresses_.clear();
}

} // namespace tidewell
