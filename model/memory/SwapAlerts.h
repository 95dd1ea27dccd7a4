#pragma once

#include "base/values/WarningLevel.h"

#include <cstdint>
#include <functional>
#include <string>

namespace tidewell {

/// The level of `swapUsed` bytes of swap on a machine with `physical` bytes of memory: low up to a
/// fifth of it, warn up to all of it, high above.
WarningLevel classifySwap(std::uint64_t physical, std::uint64_t swapUsed);

struct SwapAlertText {
    std::string title;
    std::string subtitle;
    std::string body;
};

/// What the alert of a level other than `none` says; `swapUsed` in bytes. `translated` gives a text
/// in the user's language.
SwapAlertText textOf(WarningLevel level, std::uint64_t swapUsed,
                     const std::function<std::string(const char* text)>& translated);

} // namespace tidewell
