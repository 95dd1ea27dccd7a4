#pragma once

#include "base/ports/Log.h"

#include <chrono>

namespace tidewell {

/// Lets a message bus that accepts connections but does not talk count as absent for this
/// process: connecting to it would hold the main thread for half a minute, in the toolkit as well
/// as here. Waits up to `patience` for each of the session's and the system's bus (about a
/// millisecond where they are well), logs one error line for each that hangs, and points the
/// bus's environment variable to nowhere. To be called first in `main`, before there are threads
/// or an application object.
void leaveOutHangingBuses(std::chrono::milliseconds patience, Log& log);

} // namespace tidewell
