#pragma once

#include "base/ports/Log.h"

#include <chrono>

namespace tidewell {

/// Leaves out a D-Bus daemon that accepts connections but does not answer: connecting to it would
/// block the main thread for half a minute, in Qt as well as here. Waits up to `patience` for each
/// of the session's and the system's bus (about a millisecond where they are well), logs one error
/// line for each that hangs, and sets the environment variable of its address to a transport that
/// does not exist. To be called before there are threads or an application object.
void leaveOutHangingBuses(std::chrono::milliseconds patience, Log& log);

} // namespace tidewell
