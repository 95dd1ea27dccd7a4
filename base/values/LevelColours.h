#pragma once

#include "base/values/Colour.h"
#include "base/values/WarningLevel.h"

#include <array>
#include <cstdint>

namespace tidewell {

/// The colour of a swap warning level: grey, green, orange, red. Any thread.
Colour levelColour(WarningLevel level);

/// The highest percentages of memory pressure that are `none`, `low` and `warn`.
inline constexpr std::array<std::int64_t, 3> pressureLimits{30, 55, 80};

/// The level of a memory pressure in percent; `none` for negative values. Any thread.
WarningLevel pressureLevel(std::int64_t percentage);

/// The colour of that level. Any thread.
Colour pressureColour(std::int64_t percentage);

} // namespace tidewell
