#pragma once

#include <string>

namespace tidewell {

/// Why the platform could not do something, in words for the log.
struct PlatformError {
    std::string description;
};

} // namespace tidewell
