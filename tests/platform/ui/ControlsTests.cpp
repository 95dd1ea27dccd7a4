#include "platform/ui/LinearGauge.h"
#include "platform/ui/Palette.h"
#include "platform/ui/SymbolButton.h"
#include "platform/ui/TitledBox.h"

#include <gtest/gtest.h>

#include <QLabel>
#include <QTest>

#include <cmath>
#include <limits>

namespace tidewell {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr double largest = std::numeric_limits<double>::max();

TEST(Gauges, PlaceEveryValueWithinTheirEnds) {
    for (const auto& [value, minimum, maximum, fraction] : {
             std::array{25.0, 0.0, 100.0, 0.25},
             std::array{-1.0, 0.0, 100.0, 0.0},
             std::array{5.0, -5.0, 15.0, 0.5},
             std::array{0.0, 0.0, 0.0, 0.0}, // no swap at all
             std::array{nan, 0.0, 100.0, 0.0},
             std::array{infinity, 0.0, 100.0, 1.0},
             std::array{1.0, 0.0, nan, 0.0},
             std::array{0.0, -largest, largest, 0.0},
         }) {
        EXPECT_EQ(gaugeFraction(value, minimum, maximum), fraction)
            << value << " in " << minimum << " to " << maximum;
    }
}

double contrast(Colour text, Colour ground, Appearance appearance) {
    const auto luminance = [appearance](Colour colour) {
        const QColor shown = toQColor(colour, appearance);
        const auto linear = [](float part) {
            return part <= 0.04045F ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * linear(shown.redF()) + 0.7152 * linear(shown.greenF()) +
               0.0722 * linear(shown.blueF());
    };
    const auto [darker, lighter] = std::minmax({luminance(text), luminance(ground)});
    return (lighter + 0.05) / (darker + 0.05);
}

TEST(Palette, KeepsEveryTextReadable) {
    for (const Colour colour :
         {colours::primary, colours::secondaryText, textVariant(colours::systemRed),
          textVariant(colours::systemOrange), textVariant(colours::systemGreen),
          textVariant(colours::lightGray), textVariant(colours::systemBlue)}) {
        for (const Colour ground : {colours::window, colours::box}) {
            for (const Appearance appearance : {Appearance::light, Appearance::dark}) {
                EXPECT_GE(contrast(colour, ground, appearance), 4.5) << std::hex << colour.light;
            }
        }
    }
}

QImage drawn(QWidget& widget, Appearance appearance = Appearance::light) {
    widget.setPalette(paletteFor(appearance));
    widget.resize(widget.sizeHint());
    return widget.grab().toImage();
}

TEST(Gauges, FollowPaletteAndDirection) {
    LinearGauge linear;
    LinearGaugeContent content;
    content.value = 25;
    content.tint = colours::systemGreen;
    linear.setContent(content);
    const auto isTinted = [&](Appearance appearance, int x) {
        const QImage image = drawn(linear, appearance);
        return image.pixelColor(x, image.height() / 2 - 8) ==
               toQColor(colours::systemGreen, appearance);
    };
    EXPECT_TRUE(isTinted(Appearance::light, 10) && !isTinted(Appearance::light, 190));
    EXPECT_TRUE(isTinted(Appearance::dark, 10));
    linear.setLayoutDirection(Qt::RightToLeft);
    EXPECT_TRUE(isTinted(Appearance::light, 190) && !isTinted(Appearance::light, 10));
}

/// Counts how often a widget is asked to paint.
class PaintCounter : public QObject {
public:
    explicit PaintCounter(QWidget& watched) { watched.installEventFilter(this); }
    bool eventFilter(QObject*, QEvent* event) override {
        count += event->type() == QEvent::Paint ? 1 : 0;
        return false;
    }
    int count = 0;
};

TEST(Gauges, ArePaintedOnlyWhenSomethingChanged) {
    LinearGauge gauge;
    LinearGaugeContent content;
    content.value = 1;
    gauge.setContent(content);
    gauge.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&gauge));
    QTest::qWait(0);
    const PaintCounter paints(gauge);
    gauge.setContent(content);
    QTest::qWait(0);
    EXPECT_EQ(paints.count, 0);

    content.tint = colours::systemRed;
    gauge.setContent(content);
    QTest::qWait(0);
    EXPECT_EQ(paints.count, 1);
}

TEST(TitledBox, IsHoveredAsOneWithItsTitleAndContent) {
    QWidget window;
    window.resize(200, 200);
    auto* const content = new QLabel(QStringLiteral("content"));
    TitledBox box(QStringLiteral("Swap"), content, &window);
    box.setGeometry(0, 100, 200, 64);
    std::vector<bool> hovers;
    box.onHover([&](bool isHovered) { hovers.push_back(isHovered); });
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    EXPECT_EQ(content->geometry(), QRect(4, 24, 192, 36));

    QTest::mouseMove(&window, {100, 50});
    QTest::mouseMove(&window, {100, 105}); // title
    QTest::mouseMove(&window, {100, 140}); // content
    QTest::mouseMove(&window, {1, 161});   // edge
    EXPECT_EQ(hovers, std::vector{true});
    QTest::mouseMove(&window, {100, 50});
    QTest::mouseMove(&window, {100, 140});
    box.hide();
    EXPECT_EQ(hovers, (std::vector{true, false, true, false}));
}

TEST(SymbolButton, HasAFocusRingForTheKeyboardAlone) {
    QWidget window;
    SymbolButton button("gear", QStringLiteral("Settings"), 20, &window);
    window.show();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    const QImage idle = drawn(button);
    QTest::mouseClick(&button, Qt::LeftButton);
    EXPECT_EQ(drawn(button), idle);
    button.clearFocus();
    button.setFocus(Qt::TabFocusReason);
    EXPECT_NE(drawn(button), idle);
}

} // namespace
} // namespace tidewell
