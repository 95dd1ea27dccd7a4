#include "platform/linux/PanelPosition.h"

#include <gtest/gtest.h>

namespace tidewell {
namespace {

constexpr QSize panel(350, 760);
constexpr QRect screen(0, 0, 1920, 1080);
constexpr QRect topBar(0, 30, 1920, 1050); // what a bar at the top leaves
constexpr QRect bottomBar(0, 0, 1920, 1040);
constexpr QRect leftBar(64, 0, 1856, 1080);
constexpr QRect rightBar(0, 0, 1860, 1080);

struct Case {
    const char* what;
    std::optional<QPoint> click;
    std::optional<QRect> item;
    QRect screen;
    QRect available;
    QPoint expected;
    QSize size = panel;
};

TEST(PanelPosition, LiesBesideTheClickOrItemInsideTheAvailableArea) {
    constexpr QRect second(1920, 200, 1280, 1024);
    for (const Case& test : {
             Case{"in a bar at the top", QPoint(1000, 15), {}, screen, topBar, {825, 34}},
             Case{"at its right end", QPoint(1910, 15), {}, screen, topBar, {1566, 34}},
             Case{"at its left end", QPoint(3, 15), {}, screen, topBar, {4, 34}},
             Case{"in a bar at the bottom", QPoint(1800, 1060), {}, screen, bottomBar, {1566, 276}},
             Case{"in a bar on the left", QPoint(30, 500), {}, screen, leftBar, {68, 120}},
             Case{"at its lower end", QPoint(30, 1070), {}, screen, leftBar, {68, 316}},
             Case{"in a bar on the right", QPoint(1900, 20), {}, screen, rightBar, {1506, 4}},
             Case{"in a bar that is not told", QPoint(1000, 10), {}, screen, screen, {825, 31}},
             Case{"the same at the bottom", QPoint(1000, 1070), {}, screen, screen, {825, 290}},
             Case{"on another screen", QPoint(2000, 210), {}, second, second, {1924, 231}},
             Case{"our own window", {}, QRect(1768, 8, 144, 28), screen, screen, {1566, 40}},
             Case{"an icon at the bottom",
                  QPoint(1900, 1060),
                  QRect(1890, 1048, 24, 24),
                  screen,
                  bottomBar,
                  {1566, 276}},
             Case{"no click, bar at the top", {}, {}, screen, topBar, {1566, 34}},
             Case{"no click, bar at the bottom", {}, {}, screen, bottomBar, {1566, 276}},
             Case{"no click, bar on the left", {}, {}, screen, leftBar, {68, 316}},
             Case{"no click, bar on the right", {}, {}, screen, rightBar, {1506, 316}},
             Case{"no click, no bar", {}, {}, screen, screen, {1566, 4}},
             Case{"a low screen",
                  QPoint(500, 10),
                  {},
                  {0, 0, 1024, 768},
                  {0, 20, 1024, 748},
                  {325, 20},
                  {350, 748}},
             Case{"barely room",
                  QPoint(500, 10),
                  {},
                  {0, 0, 1024, 768},
                  {0, 8, 1024, 760},
                  {325, 8}},
             Case{"a tiny screen",
                  QPoint(500, 10),
                  {},
                  {0, 0, 320, 240},
                  {0, 20, 320, 220},
                  {0, 20},
                  {320, 220}},
         }) {
        const QRect place =
            panelPosition({test.click, test.item}, test.screen, test.available, panel);
        EXPECT_EQ(
            std::tuple(place.x(), place.y(), place.width(), place.height()),
            std::tuple(test.expected.x(), test.expected.y(), test.size.width(), test.size.height()))
            << test.what;
    }
}

} // namespace
} // namespace tidewell
