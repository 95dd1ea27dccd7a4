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
    if (percentage <= 30) {
        return colours::lightGray;
    }
    if (percentage <= 55) {
        return colours::systemGreen;
    }
    return percentage <= 80 ? colours::systemOrange : colours::systemRed;
}

} // namespace tidewell
