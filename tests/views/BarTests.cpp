#include "views/VerticalBarWithExtension.h"
#include "views/VerticalBarWithText.h"

#include <gtest/gtest.h>

namespace tidewell {
namespace {

TEST(Labels, ArePaddedToEightCharactersAsReadersCountThem) {
    for (const auto& [text, padded] :
         {std::pair{"1023.9 MB", "1023.9 MB"},
          {"١٫٢ GB", "  ١٫٢ GB"},
          {"e\u0301🇩🇪👩‍👩‍👧 MB", "  e\u0301🇩🇪👩‍👩‍👧 MB"}}) {
        EXPECT_EQ(paddedLabel(text), padded);
    }
    EXPECT_EQ(labelElevation(53), 28);
    EXPECT_EQ(labelElevation(66), 33) << "moved up to stay whole";
}

TEST(Extensions, FillTheColumnAboveTheirBars) {
    EXPECT_EQ(extensionHeight(100, 37), 63);
    EXPECT_EQ(extensionHeight(100, 140), 0);
    EXPECT_EQ(extensionHeight(100, -1), 100);
}

} // namespace
} // namespace tidewell
