#include "views/BarStrip.h"
#include "views/ScrollingBarChart.h"
#include "views/VerticalBarWithExtension.h"

#include <gtest/gtest.h>

namespace tidewell {
namespace {

TEST(BarStrip, StandsAtTheRightEdgeAndLosesItsOldestBarsAtTheLeft) {
    const BarStrip few{.width = 300, .barWidth = 3, .spacing = 0, .count = 40};
    EXPECT_EQ(few.leadingPadding(), 180);
    const BarStrip many{.width = 300, .barWidth = 3, .spacing = 0, .count = 150};
    EXPECT_EQ(many.leadingPadding(), 0);
    EXPECT_EQ(many.firstVisible(), 50U);
    const BarStrip wide{.width = 300, .barWidth = 22.1, .spacing = 1, .count = 5};
    EXPECT_DOUBLE_EQ(wide.leadingPadding(), 184.5);
    EXPECT_DOUBLE_EQ(wide.left(0), 185.5) << "no gap beyond the newest bar";
    EXPECT_EQ(wide.barAt(299.9), 4U);
    EXPECT_EQ(wide.barAt(300), std::nullopt);
}

TEST(Bars, AreAsHighAsTheirSamples) {
    constexpr std::int64_t gigabyte = 1 << 30;
    constexpr std::int64_t most = std::numeric_limits<std::int64_t>::max();
    EXPECT_EQ(swapBarHeight(100, 2 * gigabyte, 4 * gigabyte), 40);
    EXPECT_EQ(swapBarHeight(100, most, most), 80);
    EXPECT_EQ(swapBarHeight(100, 0, 0), 0);
    EXPECT_EQ(extensionHeight(100, 37), 63);
    EXPECT_EQ(extensionHeight(100, 140), 0);
    EXPECT_EQ(extensionHeight(100, -1), 100);
}

TEST(Labels, ArePaddedToEightCharactersAsReadersCountThem) {
    for (const auto& [text, padded] :
         {std::pair{"512 KB", "  512 KB"},
          {"1023.9 MB", "1023.9 MB"},
          {"١٫٢ GB", "  ١٫٢ GB"},
          {"e\u0301🇩🇪👩‍👩‍👧 MB", "  e\u0301🇩🇪👩‍👩‍👧 MB"}}) {
        EXPECT_EQ(paddedLabel(text), padded);
    }
    EXPECT_EQ(labelElevation(53), 28);
    EXPECT_EQ(labelElevation(66), 33) << "moved up to stay whole";
}

} // namespace
} // namespace tidewell
