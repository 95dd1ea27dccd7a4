#include "desktop/statusitem/PanelPosition.h"

#include <gtest/gtest.h>

namespace tidewell {
namespace {

TEST(PanelPosition, LiesBesideTheClickOrItemInsideTheAvailableArea) {
    constexpr QRect screen(0, 0, 1920, 1080);
    constexpr QRect topBar(0, 30, 1920, 1050); // what a bar at the top leaves
    constexpr QRect bottomBar(0, 0, 1920, 1040);
    constexpr QRect leftBar(64, 0, 1856, 1080);
    constexpr QRect rightBar(0, 0, 1860, 1080);
    constexpr QRect second(1920, 200, 1280, 1024);
    constexpr QRect low(0, 0, 1024, 768);
    const auto expectAt = [](const char* what, const StatusItemActivation& click,
                             const QRect& whole, const QRect& available, const QPoint& expected) {
        const QRect place = panelPosition(click, whole, available, {350, 760});
        EXPECT_EQ(place.topLeft(), expected) << what;
        EXPECT_TRUE(available.contains(place)) << what;
    };
    expectAt("bar at the top", {{{1000, 15}}, {}}, screen, topBar, {825, 34});
    expectAt("no click, bar on the left", {}, screen, leftBar, {68, 316});
    expectAt("bar at the bottom", {{{1800, 1060}}, {}}, screen, bottomBar, {1566, 276});
    expectAt("bar on the left", {{{30, 1070}}, {}}, screen, leftBar, {68, 316});
    expectAt("bar on the right", {{{1900, 20}}, {}}, screen, rightBar, {1506, 4});
    expectAt("untold bar at the top", {{{1000, 10}}, {}}, screen, screen, {825, 31});
    expectAt("another screen", {{{2000, 210}}, {}}, second, second, {1924, 231});
    expectAt("our own window", {{}, {{1768, 8, 144, 28}}}, screen, screen, {1566, 40});
    expectAt("low screen", {{{500, 10}}, {}}, low, {0, 20, 1024, 748}, {325, 20});
    expectAt("tiny screen", {{{5, 10}}, {}}, {0, 0, 320, 240}, {0, 20, 320, 220}, {0, 20});
}

} // namespace
} // namespace tidewell
