#pragma once

#include "base/values/WarningLevel.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace tidewell {

/// The level of `swapUsed` bytes of swap on a machine with `physical` bytes of memory: low up to a
/// fifth of it, warn up to all of it, high above.
WarningLevel classifySwap(std::uint64_t physical, std::uint64_t swapUsed);

enum class SwapAlert { low, warning, high };

/// The alert to post when a check finds `next` after `previous`: the upper two levels alert at
/// every check, the low one only when it is entered.
std::optional<SwapAlert> swapAlertFor(WarningLevel previous, WarningLevel next);

struct SwapAlertText {
    std::string title;
    std::string subtitle;
    std::string body;
};

/// What an alert says; `swapUsed` in bytes. `translated` gives a text in the user's language.
SwapAlertText textOf(SwapAlert alert, std::uint64_t swapUsed,
                     const std::function<std::string(const char* text)>& translated);

} // namespace tidewell
