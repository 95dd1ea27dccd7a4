#include "core/SwapAlerts.h"
#include "support/ByteText.h"

#include <gtest/gtest.h>

#include <limits>

namespace tidewell {
namespace {

constexpr std::uint64_t physical = 17179869184;
constexpr std::uint64_t most = std::numeric_limits<std::uint64_t>::max();

TEST(SwapAlerts, AreClassifiedByAFifthAndTheWholeOfPhysicalMemory) {
    struct Case {
        std::uint64_t physical, swapUsed;
        WarningLevel level;
    };
    for (const auto& [memory, used, level] :
         {Case{physical, 0, WarningLevel::none}, Case{physical, 1, WarningLevel::low},
          Case{physical, 3435973836, WarningLevel::low},
          Case{physical, 3435973837, WarningLevel::warn},
          Case{physical, 17179869184, WarningLevel::warn},
          Case{physical, 17179869185, WarningLevel::high}, Case{4, 1, WarningLevel::warn},
          Case{4, 0, WarningLevel::none}, Case{most, most, WarningLevel::warn}}) {
        EXPECT_EQ(classifySwap(memory, used), level) << memory << " " << used;
    }
}

TEST(SwapAlerts, TellTheLowLevelOnceAndTheUpperOnesEachTime) {
    using enum WarningLevel;
    for (const auto previous : {none, low, warn, high}) {
        EXPECT_EQ(swapAlertFor(previous, none), std::nullopt);
        EXPECT_EQ(swapAlertFor(previous, low),
                  previous == low ? std::nullopt : std::optional(SwapAlert::low));
        EXPECT_EQ(swapAlertFor(previous, warn), SwapAlert::warning);
        EXPECT_EQ(swapAlertFor(previous, high), SwapAlert::high);
    }
}

TEST(SwapAlerts, SayHowMuchSwapIsInUseOrWhatHelps) {
    const auto body = "Your computer uses swap memory (" + byteText(3435973837) + ").";
    for (const auto& [alert, subtitle] : {std::pair{SwapAlert::low, "Swap memory usage"},
                                          {SwapAlert::warning, "High swap usage"}}) {
        const auto text = textOf(alert, 3435973837);
        EXPECT_EQ(text.title, "Tidewell");
        EXPECT_EQ(text.subtitle, subtitle);
        EXPECT_EQ(text.body, body);
    }
    const auto high = textOf(SwapAlert::high, physical);
    EXPECT_EQ(high.title, "Tidewell");
    EXPECT_EQ(high.subtitle, "Very high swap usage");
    EXPECT_EQ(high.body, "Restart your computer if you want to free up swap memory.");
    // More than the formatter's number can hold.
    EXPECT_EQ(textOf(SwapAlert::low, most).body,
              textOf(SwapAlert::low, std::numeric_limits<std::int64_t>::max()).body);
}

} // namespace
} // namespace tidewell
