#include "core/SwapAlerts.h"

#include <gtest/gtest.h>

#include <limits>

namespace tidewell {
namespace {

TEST(SwapAlerts, AreClassifiedByAFifthAndTheWholeOfPhysicalMemory) {
    using enum WarningLevel;
    constexpr std::uint64_t physical = 17179869184;
    constexpr std::uint64_t most = std::numeric_limits<std::uint64_t>::max();
    struct Case {
        std::uint64_t physical, swapUsed;
        WarningLevel level;
    };
    for (const auto& [memory, used, level] :
         {Case{physical, 0, none}, Case{physical, 1, low}, Case{physical, 3435973836, low},
          Case{physical, 3435973837, warn}, Case{physical, physical, warn},
          Case{physical, physical + 1, high}, Case{4, 1, warn}, Case{most, most, warn}}) {
        EXPECT_EQ(classifySwap(memory, used), level) << memory << " " << used;
    }
    // More than the formatter's number can hold.
    EXPECT_EQ(textOf(SwapAlert::low, most).body,
              textOf(SwapAlert::low, std::numeric_limits<std::int64_t>::max()).body);
}

} // namespace
} // namespace tidewell
