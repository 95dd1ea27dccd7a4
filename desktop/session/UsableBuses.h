#pragma once

#include "base/ports/Log.h"

#include <chrono>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace tidewell {

/// The D-Bus daemons that are no use. They are left out by setting the environment variable of
/// their address to a transport that does not exist, so that connecting to them fails at once:
/// - one that accepts connections but does not answer, which would block the main thread for half a
///   minute, in Qt as well as here. Waits up to `patience` for each of the session's and the
///   system's bus (about a millisecond where they are well) and logs one error line for each;
/// - a session's bus without an address: libdbus would start one, which would outlive the program.
class UnusableBuses {
public:
    /// Before there are threads or an application object.
    UnusableBuses(std::chrono::milliseconds patience, Log& log);

    /// Once Qt has connected to what is left: gives the environment its addresses back, for the
    /// programs that are started from here.
    void giveBack();

    /// Whether there is a session's bus that may yet answer.
    bool isSessionHanging() const { return isSessionHanging_; }

private:
    void leaveOut(const char* variable);

    std::vector<std::pair<const char*, std::optional<std::string>>> addresses_;
    bool isSessionHanging_ = false;
};

/// Whether there is a session's bus that answers, within 20 ms. Any thread.
bool sessionBusAnswers();

} // namespace tidewell
