#include "platform/linux/PanelPosition.h"

#include <gtest/gtest.h>

namespace tidewell {
namespace {

struct Case {
    const char* what = nullptr;
    std::optional<QPoint> click;
    std::optional<QRect> item;
    QRect screen;
    QRect available;
    QPoint expected;
};

TEST(PanelPosition, LiesBesideTheClickOrItemInsideTheAvailableArea) {
    constexpr QRect screen(0, 0, 1920, 1080);
    constexpr QRect topBar(0, 30, 1920, 1050); // what a bar at the top leaves
    constexpr QRect bottomBar(0, 0, 1920, 1040);
    constexpr QRect leftBar(64, 0, 1856, 1080);
    constexpr QRect rightBar(0, 0, 1860, 1080);
    constexpr QRect second(1920, 200, 1280, 1024);
    constexpr QRect low(0, 0, 1024, 768);
    for (const Case& test : {
             Case{"bar at the top", {{1000, 15}}, {}, screen, topBar, {825, 34}},
             Case{"no click, bar on the left", {}, {}, screen, leftBar, {68, 316}},
             Case{"bar at the bottom", {{1800, 1060}}, {}, screen, bottomBar, {1566, 276}},
             Case{"bar on the left", {{30, 1070}}, {}, screen, leftBar, {68, 316}},
             Case{"bar on the right", {{1900, 20}}, {}, screen, rightBar, {1506, 4}},
             Case{"untold bar at the top", {{1000, 10}}, {}, screen, screen, {825, 31}},
             Case{"another screen", {{2000, 210}}, {}, second, second, {1924, 231}},
             Case{"our own window", {}, {{1768, 8, 144, 28}}, screen, screen, {1566, 40}},
             Case{"low screen", {{500, 10}}, {}, low, {0, 20, 1024, 748}, {325, 20}},
             Case{"tiny screen", {{5, 10}}, {}, {0, 0, 320, 240}, {0, 20, 320, 220}, {0, 20}},
         }) {
        const QRect place =
            panelPosition({test.click, test.item}, test.screen, test.available, {350, 760});
        EXPECT_EQ(place.topLeft(), test.expected) << test.what;
        EXPECT_TRUE(test.available.contains(place)) << test.what;
    }
}

} // namespace
} // namespace tidewell
