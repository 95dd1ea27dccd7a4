#pragma once

#include "base/values/Colour.h"
#include "base/values/WarningLevel.h"

#include <array>
#include <cstdint>

namespace tidewell {

/// The colour of a swap warning level: grey, green, orange, red. Any thread.
Colour levelColour(WarningLevel level);

/// The highest percentages that are grey, green and orange.
inline constexpr std::array<std::int64_t, 3> pressureLimits{30, 55, 80};

/// The colour of a memory pressure in percent: grey up to 30, negative values included, green up
/// to 55, orange up to 80, red above. Any thread.
Colour pressureColour(std::int64_t percentage);

} // namespace tidewell
