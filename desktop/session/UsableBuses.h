#pragma once

#include "base/ports/Log.h"

#include <chrono>

namespace tidewell {

/// Leaves out the D-Bus daemons that are no use, by setting the environment variable of their
/// address to a transport that does not exist, so that connecting to them fails at once:
/// - one that accepts connections but does not answer, which would block the main thread for half a
///   minute, in Qt as well as here. Waits up to `patience` for each of the session's and the
///   system's bus (about a millisecond where they are well) and logs one error line for each;
/// - a session's bus without an address: libdbus would start one, which would outlive the program.
/// To be called before there are threads or an application object.
void leaveOutUnusableBuses(std::chrono::milliseconds patience, Log& log);

/// Whether there is a session's bus that accepts connections. Does not wait. Any thread.
bool sessionBusAccepts();

} // namespace tidewell
