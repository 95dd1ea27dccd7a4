#include "core/SwapAlerts.h"

#include "support/ByteText.h"

namespace tidewell {

namespace {

constexpr auto title = "Tidewell";

std::string bodyWithAmount(std::uint64_t swapUsed) {
    return "Your computer uses swap memory (" + sizeText(swapUsed) + ").";
}

} // namespace

WarningLevel classifySwap(std::uint64_t physical, std::uint64_t swapUsed) {
    if (swapUsed > physical) {
        return WarningLevel::high;
    }
    if (swapUsed > physical / 5) {
        return WarningLevel::warn;
    }
    return swapUsed == 0 ? WarningLevel::none : WarningLevel::low;
}

std::optional<SwapAlert> swapAlertFor(WarningLevel previous, WarningLevel next) {
    switch (next) {
    case WarningLevel::none:
        return std::nullopt;
    case WarningLevel::low:
        return previous == WarningLevel::low ? std::nullopt : std::optional(SwapAlert::low);
    case WarningLevel::warn:
        return SwapAlert::warning;
    case WarningLevel::high:
        return SwapAlert::high;
    }
    return std::nullopt;
}

SwapAlertText textOf(SwapAlert alert, std::uint64_t swapUsed) {
    switch (alert) {
    case SwapAlert::low:
        return {title, "Swap memory usage", bodyWithAmount(swapUsed)};
    case SwapAlert::warning:
        return {title, "High swap usage", bodyWithAmount(swapUsed)};
    case SwapAlert::high:
        break;
    }
    return {title, "Very high swap usage",
            "Restart your computer if you want to free up swap memory."};
}

} // namespace tidewell
