#pragma once

#include "base/ports/Bundle.h"

#include <string>

namespace tidewell {

// What the program says of itself, each with a fallback where the information dictionary lacks the
// key. Any thread.

std::string applicationName(const Bundle& bundle); ///< or "Unknown"
std::string version(const Bundle& bundle);         ///< or "No version"
std::string buildNumber(const Bundle& bundle);     ///< or "No build"
std::string copyright(const Bundle& bundle);       ///< or "No copyright information found."

} // namespace tidewell
