#include "core/SwapAlerts.h"

#include <gtest/gtest.h>

#include <limits>

namespace tidewell {
namespace {

TEST(SwapAlerts, AreClassifiedByAFifthAndTheWholeOfPhysicalMemory) {
    using enum WarningLevel;
    constexpr std::uint64_t most = std::numeric_limits<std::uint64_t>::max();
    for (const auto& [used, level] : {std::pair{0ULL, none},
                                      {1ULL, low},
                                      {3435973836ULL, low},
                                      {3435973837ULL, warn},
                                      {17179869184ULL, warn},
                                      {17179869185ULL, high}}) {
        EXPECT_EQ(classifySwap(17179869184, used), level) << used;
    }
    EXPECT_EQ(classifySwap(most, most), warn);
}

} // namespace
} // namespace tidewell
