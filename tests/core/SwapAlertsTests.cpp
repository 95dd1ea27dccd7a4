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

TEST(SwapAlerts, SayHowMuchSwapIsInUseOrWhatHelps) {
    const auto body = "Your computer uses swap memory (" + byteText(3435973837) + ").";
    EXPECT_EQ(textOf(SwapAlert::low, 3435973837).body, body);
    EXPECT_EQ(textOf(SwapAlert::warning, 3435973837).body, body);
    EXPECT_EQ(textOf(SwapAlert::high, physical).body,
              "Restart your computer if you want to free up swap memory.");
    // More than the formatter's number can hold.
    EXPECT_EQ(textOf(SwapAlert::low, most).body,
              textOf(SwapAlert::low, std::numeric_limits<std::int64_t>::max()).body);
}

} // namespace
} // namespace tidewell
