#include "model/memory/SwapAlerts.h"

#include "base/text/ByteText.h"
#include "model/memory/Translatable.h"

#include <string_view>

namespace tidewell {

namespace {

constexpr auto title = "Tidewell";
constexpr auto lowSubtitle = translatable("MemoryWatcher", "Swap memory usage");
constexpr auto warningSubtitle = translatable("MemoryWatcher", "High swap usage");
constexpr auto highSubtitle = translatable("MemoryWatcher", "Very high swap usage");
constexpr auto bodyWithAmount =
    translatable("MemoryWatcher", "Your computer uses swap memory (%1).");
constexpr auto highBody =
    translatable("MemoryWatcher", "Restart your computer if you want to free up swap memory.");

std::string withAmount(std::string text, std::uint64_t swapUsed) {
    constexpr std::string_view place = "%1";
    if (const auto at = text.find(place); at != std::string::npos) {
        text.replace(at, place.size(), sizeText(swapUsed));
    }
    return text;
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

SwapAlertText textOf(WarningLevel level, std::uint64_t swapUsed,
                     const std::function<std::string(const char* text)>& translated) {
    if (level == WarningLevel::high) {
        return {title, translated(highSubtitle), translated(highBody)};
    }
    return {title, translated(level == WarningLevel::warn ? warningSubtitle : lowSubtitle),
            withAmount(translated(bodyWithAmount), swapUsed)};
}

} // namespace tidewell
