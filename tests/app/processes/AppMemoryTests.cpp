#include "app/panel/AnchorPoint.h"
#include "app/processes/AppMemoryPlacement.h"

#include <gtest/gtest.h>

namespace tidewell {
namespace {

TEST(AnchorPoint, IsStoredAsTheShortestJsonArrayOfTwoNumbers) {
    for (const auto& [point, text] : {std::pair{QPointF(812, 640.5), "[812,640.5]"},
                                      {QPointF(-0.0, -1280), "[0,-1280]"},
                                      {QPointF(0.1, 1e300), "[0.1,1e+300]"}}) {
        const Data data = encodePoint(point).value();
        EXPECT_EQ(std::string(data.begin(), data.end()), text);
        EXPECT_EQ(decodePoint(data), point);
    }
    EXPECT_EQ(encodePoint({0, std::numeric_limits<double>::infinity()}), std::nullopt);
    for (const std::string text : {"", "[1]", "[1,\"2\"]", "{\"x\":1}", "[1,1e999]"}) {
        EXPECT_FALSE(decodePoint(Data(text.begin(), text.end()))) << text;
    }
}

TEST(AppMemoryPlacement, IsLeftOfThePanelOrElsewhereWholeWhenNothingWouldBeSeen) {
    const QRect main(0, 0, 1440, 900);
    const QRect below(100, 900, 1440, 900);
    const QRect narrow(0, 0, 600, 900);
    const auto place = [](QPointF anchor, const QList<QRect>& screens) {
        return appMemoryPosition(anchor, QSize(400, 380), 350, screens);
    };
    EXPECT_EQ(place({1000, 100}, {main}), QPoint(576, 291));
    EXPECT_EQ(place({0, 0}, {main}), QPoint(374, 391)) << "on the other side of the panel";
    EXPECT_EQ(place({1000, 100}, {main.translated(1440, 100), main}), QPoint(2016, 391));
    EXPECT_EQ(place({1000, -500}, {main, below}), QPoint(576, 891)) << "below the main screen";
    EXPECT_EQ(place({0, 0}, {narrow}), QPoint(200, 391)) << "too narrow for both";
    EXPECT_EQ(place({1e300, -1e300}, {main, below}), QPoint(1040, 520)) << "far from everything";
}

} // namespace
} // namespace tidewell
