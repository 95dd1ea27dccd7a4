#include "support/LevelColours.h"

#include <gtest/gtest.h>

namespace tidewell {
namespace {

TEST(LevelColours, FollowTheLevelAndThePressureAtItsBounds) {
    EXPECT_EQ(levelColour(WarningLevel::none), colours::lightGray);
    EXPECT_EQ(levelColour(WarningLevel::low), colours::systemGreen);
    EXPECT_EQ(levelColour(WarningLevel::warn), colours::systemOrange);
    EXPECT_EQ(levelColour(WarningLevel::high), colours::systemRed);

    EXPECT_EQ(pressureColour(INT64_MIN), colours::lightGray);
    EXPECT_EQ(pressureColour(30), colours::lightGray);
    EXPECT_EQ(pressureColour(31), colours::systemGreen);
    EXPECT_EQ(pressureColour(55), colours::systemGreen);
    EXPECT_EQ(pressureColour(56), colours::systemOrange);
    EXPECT_EQ(pressureColour(80), colours::systemOrange);
    EXPECT_EQ(pressureColour(81), colours::systemRed);
}

} // namespace
} // namespace tidewell
