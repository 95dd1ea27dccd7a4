#include "desktop/statusitem/LabelPosition.h"
#include "desktop/statusitem/PanelPosition.h"

#include <gtest/gtest.h>

namespace tidewell {
namespace {

constexpr QRect whole(0, 0, 1920, 1080);
constexpr ScreenArea bare{whole, whole};
constexpr ScreenArea topBar{whole, {0, 30, 1920, 1050}};
constexpr ScreenArea bottomBar{whole, {0, 0, 1920, 1040}};
constexpr ScreenArea leftBar{whole, {64, 0, 1856, 1080}};
constexpr ScreenArea rightBar{whole, {0, 0, 1860, 1080}};
constexpr ScreenArea second{{1920, 200, 1280, 1024}, {1920, 200, 1280, 1024}};
constexpr ScreenArea secondWithBar{{1920, 200, 1280, 1024}, {1920, 200, 1280, 984}};

constexpr QRect at(int x, int y) {
    return {x, y, 1, 1};
}

TEST(PanelPosition, LiesBesideTheItemInsideTheAvailableArea) {
    const auto expectAt = [](const char* what, const std::optional<QRect>& item,
                             const std::vector<ScreenArea>& screens, const QPoint& expected) {
        const QRect place = panelPosition(item, screens, {350, 760});
        EXPECT_EQ(place.topLeft(), expected) << what;
        EXPECT_TRUE(std::ranges::any_of(screens, [&place](const ScreenArea& screen) {
            return screen.available.contains(place);
        })) << what;
    };
    expectAt("bar at the top", at(1000, 15), {topBar}, {825, 34});
    expectAt("unknown item, bar on the left", {}, {leftBar}, {68, 316});
    expectAt("unknown item, bar on another screen", {}, {bare, secondWithBar}, {2846, 420});
    expectAt("bar at the bottom", at(1800, 1060), {bottomBar}, {1566, 276});
    expectAt("bar on the left", at(30, 1070), {leftBar}, {68, 316});
    expectAt("bar on the right", at(1900, 20), {rightBar}, {1506, 4});
    expectAt("untold bar at the top", {{984, -6, 33, 33}}, {bare}, {825, 31});
    expectAt("another screen", {{1984, 194, 33, 33}}, {bare, second}, {1924, 231});
    expectAt("our own window", {{1768, 8, 144, 28}}, {bare}, {1566, 40});
    expectAt("our own window, no room below", {{1500, 400, 144, 28}}, {bare}, {1146, 33});
    expectAt("low screen", at(500, 10), {{{0, 0, 1024, 768}, {0, 20, 1024, 748}}}, {325, 20});
    expectAt("tiny screen", at(5, 10), {{{0, 0, 320, 240}, {0, 20, 320, 220}}}, {0, 20});
    EXPECT_EQ(panelPosition(at(5, 10), {}, {350, 760}).size(), QSize(350, 760)) << "unplugged";
}

TEST(LabelPosition, IsWhereItWasDraggedOnAScreenOfTheSameGeometry) {
    constexpr QSize label(100, 28);
    const std::string kept = storedLabelPosition({{2000, 300}, label}, {topBar, second});
    const auto expectAt = [&](const char* what, const std::string& stored,
                              const std::vector<ScreenArea>& screens, const QPoint& expected) {
        EXPECT_EQ(labelPosition(stored, screens, label), expected) << what;
    };
    expectAt("never dragged", {}, {topBar, second}, {1812, 78});
    expectAt("dragged", kept, {topBar, second}, {2000, 300});
    expectAt("that screen is gone", kept, {topBar}, {1812, 78});
    expectAt("a bar has come there", "1880 0 0 0 1920 1080", {topBar}, {1820, 30});
    expectAt("damaged", "2147483647 0 0 0 1920 108", {topBar}, {1812, 78});
}

TEST(StatusItemPlace, BelievesWhatLiesInTheStripOfABar) {
    constexpr ScreenArea scaled{{0, 0, 1280, 900}, {0, 0, 1280, 856}, 1.5};
    constexpr auto useless = HostCoordinates::useless;
    constexpr auto logical = HostCoordinates::logical;
    constexpr auto native = HostCoordinates::native;
    const auto expectAt = [](const char* what, const PlaceSources& sources, const QPoint& told,
                             std::vector<ScreenArea> screens, const std::optional<QRect>& place) {
        StatusItemPlace item(sources, [&screens] { return screens; });
        item.clickedAt(told);
        EXPECT_EQ(item.lastKnown(), place) << what;
        item.clickedAt({0, 0});
        EXPECT_EQ(item.lastKnown(), place) << what << ", then without a place";
        screens = {second};
        EXPECT_EQ(item.lastKnown(), std::nullopt) << what << ", on a screen that went";
    };
    const PlaceSources x11{[] { return QPoint(1800, 15); }, useless};
    expectAt("X11, relative to a window", x11, {11, 15}, {topBar}, at(1800, 15));
    expectAt("X11, untold bar", x11, {11, 15}, {bare}, {{1784, -1, 33, 33}});
    expectAt("GNOME", {{}, logical}, {1180, 16}, {topBar}, at(1180, 16));
    expectAt("GNOME, in no bar", {{}, logical}, {1180, 500}, {topBar}, {});
    expectAt("Plasma, native pixels", {{}, native}, {1595, 1319}, {scaled}, at(1063, 879));
    expectAt("Plasma, logical pixels", {{}, native}, {1063, 879}, {scaled}, at(1063, 879));
    expectAt("Plasma, on no screen", {{}, native}, {5000, 879}, {scaled}, {});
    expectAt("bar of unknown breadth", {{}, native, true}, {1063, 860}, {bare}, {});
    expectAt("bar of unknown breadth", {{}, native, true}, {1063, 1050}, {bare}, at(1063, 1079));
    expectAt("relative to a widget", {{}, useless}, {11, 15}, {topBar}, {});
    EXPECT_EQ(
        StatusItemPlace({{}, native, true, true}, [] { return std::vector{bare}; }).lastKnown(),
        at(1919, 1079));
}

TEST(StatusItemPlace, TakesThePointerOfAClickWithoutCoordinatesOnlyInABar) {
    QPoint pointer(1800, 15);
    StatusItemPlace item({[&pointer] { return pointer; }, HostCoordinates::useless},
                         [] { return std::vector{topBar}; });
    item.clicked();
    EXPECT_EQ(item.lastKnown(), at(1800, 15));
    pointer = {300, 400}; // on a menu entry, say
    item.clicked();
    EXPECT_EQ(item.lastKnown(), at(1800, 15));
    item.isAt({10, 20, 30, 40});
    EXPECT_EQ(item.lastKnown(), QRect(10, 20, 30, 40));
}

} // namespace
} // namespace tidewell
