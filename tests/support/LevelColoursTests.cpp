#include "support/LevelColours.h"

#include <gtest/gtest.h>

namespace tidewell {
namespace {

TEST(LevelColours, FollowThePressureAtItsBounds) {
    using enum WarningLevel;
    using Bound = std::pair<std::int64_t, WarningLevel>;
    for (const auto& [pressure, level] :
         {Bound{INT64_MIN, none}, Bound{30, none}, Bound{31, low}, Bound{55, low}, Bound{56, warn},
          Bound{80, warn}, Bound{81, high}}) {
        EXPECT_EQ(pressureColour(pressure), levelColour(level)) << pressure;
    }
}

} // namespace
} // namespace tidewell
