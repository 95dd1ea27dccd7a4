#include "base/values/LevelColours.h"

namespace tidewell {

Colour levelColour(WarningLevel level) {
    switch (level) {
    case WarningLevel::none:
        break;
    case WarningLevel::low:
        return colours::systemGreen;
    case WarningLevel::warn:
        return colours::systemOrange;
    case WarningLevel::high:
        return colours::systemRed;
    }
    return colours::lightGray;
}

Colour pressureColour(std::int64_t percentage) {
    if (percentage <= pressureLimits[0]) {
        return colours::lightGray;
    }
    if (percentage <= pressureLimits[1]) {
        return colours::systemGreen;
    }
    return percentage <= pressureLimits[2] ? colours::systemOrange : colours::systemRed;
}

} // namespace tidewell
