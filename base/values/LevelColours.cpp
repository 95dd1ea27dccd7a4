#include "base/values/LevelColours.h"

#include <algorithm>

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

WarningLevel pressureLevel(std::int64_t percentage) {
    const auto* const limit = std::ranges::lower_bound(pressureLimits, percentage);
    return static_cast<WarningLevel>(limit - pressureLimits.begin());
}

Colour pressureColour(std::int64_t percentage) {
    return levelColour(pressureLevel(percentage));
}

} // namespace tidewell
