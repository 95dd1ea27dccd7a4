#include "ui/CheckBox.h"
#include "ui/Drawing.h"
#include "ui/Fonts.h"
#include "ui/Geometry.h"
#include "ui/LinearGauge.h"
#include "ui/Palette.h"
#include "ui/RoundGauge.h"
#include "ui/ScrollThumb.h"
#include "ui/Style.h"
#include "ui/TitledBox.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QTest>

#include <cmath>

namespace tidewell {
namespace {

TEST(Gauges, PlaceEveryValueWithinTheirEnds) {
    using Case = std::array<double, 4>;
    for (const auto& [value, minimum, maximum, fraction] :
         {Case{25, 0, 100, 0.25}, Case{-1, 0, 100, 0}, Case{5, -5, 15, 0.5},
          Case{0, 0, 0, 0}, // no swap at all
          Case{std::nan(""), 0, 100, 0}, Case{HUGE_VAL, 0, 100, 1}, Case{1, 0, std::nan(""), 0},
          Case{0, -1e308, 1e308, 0}}) {
        EXPECT_EQ(gaugeFraction(value, minimum, maximum), fraction)
            << value << " in " << minimum << " to " << maximum;
    }
}

double contrast(const QColor& one, const QColor& other) {
    const auto luminance = [](const QColor& colour) {
        const auto linear = [](float part) {
            return part <= 0.04045F ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
               0.0722 * linear(colour.blueF());
    };
    const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

TEST(Palette, KeepsTextsReadableAndBarsVisible) {
    using namespace colours;
    for (const Appearance appearance :
         {Appearance::light, Appearance::dark, Appearance::highContrastLight,
          Appearance::highContrastDark}) {
        const double text = hasHighContrast(appearance) ? 7 : 4.5;
        for (const Colour ground : {window, box}) {
            const QColor below = toQColor(ground, appearance);
            for (const Colour colour : {primary, secondaryText, systemRed, systemOrange,
                                        systemGreen, lightGray, systemBlue}) {
                EXPECT_GE(contrast(textColour(colour, appearance), below), text)
                    << std::hex << colour.light << " in " << static_cast<int>(appearance);
            }
        }
        for (const Colour colour : {systemRed, systemOrange, systemGreen, lightGray}) {
            EXPECT_GE(contrast(barColour(colour, appearance), toQColor(box, appearance)), 3)
                << std::hex << colour.light << " in " << static_cast<int>(appearance);
        }
        EXPECT_EQ(appearanceOf(paletteFor(appearance)), appearance);
    }
}

TEST(Gauges, FollowPaletteAndDirection) {
    LinearGauge linear;
    LinearGaugeContent content;
    content.value = 25;
    content.tint = colours::systemGreen;
    linear.setContent(content);
    linear.resize(linear.sizeHint());
    const auto isTinted = [&](Appearance appearance, int x) {
        linear.setPalette(paletteFor(appearance));
        const QImage image = linear.grab().toImage();
        return image.pixelColor(x, image.height() / 2 - 8) ==
               toQColor(colours::systemGreen, appearance);
    };
    EXPECT_TRUE(isTinted(Appearance::light, 10) && !isTinted(Appearance::light, 190));
    EXPECT_TRUE(isTinted(Appearance::dark, 10));
    linear.setLayoutDirection(Qt::RightToLeft);
    EXPECT_TRUE(isTinted(Appearance::light, 190) && !isTinted(Appearance::light, 10));
}

TEST(RoundGauge, ShadesItsArcFromTheFirstColourToTheLast) {
    using namespace colours;
    for (const double scale : {1.0, 1.5, 2.0}) {
        const QImage arc =
            roundGaugeArc({systemTeal, systemBlue, systemOrange}, Appearance::dark, scale);
        const auto isAt = [&](double x, double y, Colour colour) {
            const auto place = (QPointF(x, y) * scale).toPoint();
            const QColor shown = arc.pixelColor(place);
            const QColor expected = toQColor(colour, Appearance::dark);
            return shown.alpha() == 255 && std::abs(shown.red() - expected.red()) < 16 &&
                   std::abs(shown.blue() - expected.blue()) < 16;
        };
        EXPECT_TRUE(isAt(12.5, 56.5, systemTeal)) << scale;
        EXPECT_TRUE(isAt(34.8, 3.6, systemBlue)) << "at the top";
        EXPECT_TRUE(isAt(56.5, 56.5, systemOrange));
        for (const QPointF empty : {QPointF(34.8, 66), {34.8, 34.8}, {1, 1}}) {
            EXPECT_EQ(qAlpha(arc.pixel((empty * scale).toPoint())), 0);
        }
    }
}

TEST(TitledBox, IsHoveredAsOneWithItsTitleAndContentUntilItIsHidden) {
    QWidget window;
    window.resize(200, 200);
    TitledBox box(QStringLiteral("Swap"), new QLabel(QStringLiteral("content")), &window);
    box.setGeometry(0, 100, 200, 64);
    std::vector<bool> hovers;
    box.onHover([&](bool isHovered) { hovers.push_back(isHovered); });
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    for (const int y :
         {50, 105, 140, 161, 50, 140}) { // above, title, content, edge, above, content
        QTest::mouseMove(&window, {100, y});
    }
    window.hide();
    EXPECT_EQ(hovers, (std::vector{true, false, true, false}));
}

TEST(Focus, IsMarkedForThoseWhoGetAboutByKeyboard) {
    QWidget window;
    CheckBox first(QStringLiteral("first"), &window);
    CheckBox second(QStringLiteral("second"), &window);
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    QTest::mouseClick(&first, Qt::LeftButton);
    EXPECT_TRUE(first.hasFocus());
    EXPECT_FALSE(showsFocus(first));
    QTest::keyClick(&first, Qt::Key_Tab);
    EXPECT_TRUE(showsFocus(second));
    EXPECT_FALSE(showsFocus(first));
}

TEST(Fonts, GrowWithTheDesktopsUpToAQuarter) {
    const QFont usual = QApplication::font();
    for (const auto& [points, size] : {std::pair(8.0, 12), {11.0, 12}, {12.0, 13}, {20.0, 15}}) {
        QFont font = usual;
        font.setPointSizeF(points);
        QApplication::setFont(font);
        EXPECT_EQ(textFont(TextStyle::body).pixelSize(), size);
        EXPECT_EQ(textFont(TextStyle::title).pixelSize(), 20);
    }
    QApplication::setFont(usual);
}

TEST(Style, DrawsButtonsAndPickersAlike) {
    Style style;
    QWidget window;
    QComboBox picker(&window);
    QPushButton button(&window);
    window.setPalette(paletteFor(Appearance::light));
    for (QWidget* control : {static_cast<QWidget*>(&picker), static_cast<QWidget*>(&button)}) {
        control->setStyle(&style);
        control->setGeometry(100, 100, 100, 26); // where no pointer rests
    }
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    const auto colourAt = [&](QWidget& control, int x) {
        return control.grab().toImage().pixelColor(x, 13);
    };
    button.setDefault(true);
    EXPECT_EQ(colourAt(button, 8), window.palette().color(QPalette::Highlight));
    button.setEnabled(false);
    EXPECT_EQ(colourAt(button, 8), window.palette().color(QPalette::Base)) << "disabled";
    button.setEnabled(true);
    const QColor ring = toQColor(colours::accent, Appearance::light);
    for (QWidget* control : {static_cast<QWidget*>(&picker), static_cast<QWidget*>(&button)}) {
        EXPECT_NE(colourAt(*control, 1), ring);
        control->setFocus(Qt::TabFocusReason);
        window.setAttribute(Qt::WA_KeyboardFocusChange);
        EXPECT_EQ(colourAt(*control, 1), ring);
    }
}

TEST(ThumbScrollArea, LeavesTheContentItsWholeWidth) {
    auto* const content = new QWidget;
    content->setMinimumHeight(500);
    ThumbScrollArea area(content);
    area.resize(300, 600);
    area.show();
    EXPECT_EQ(content->size(), QSize(300, 600));
    EXPECT_FALSE(area.verticalScrollBar()->isVisible());
    area.resize(300, 400);
    EXPECT_EQ(content->size(), QSize(300, 500));
    QWidget* const above = area.childAt(300 - ScrollThumb::thickness, 395);
    ASSERT_EQ(above, area.verticalScrollBar()) << "it lies over the content";
    QTest::mouseClick(above, Qt::LeftButton, {}, {5, 395});
    EXPECT_GT(area.verticalScrollBar()->value(), 0);
}

TEST(Geometry, MovesRectanglesNoFurtherThanTheyMust) {
    const QRectF area(100, 50, 400, 300);
    for (const auto& [wanted, corner] : {std::pair{QRectF(150, 60, 20, 20), QPointF(150, 60)},
                                         {QRectF(-9e9, 340, 20, 20), QPointF(100, 330)},
                                         {QRectF(490, 0, 20, 20), QPointF(480, 50)},
                                         {QRectF(490, 60, 800, 20), QPointF(100, 60)}}) {
        EXPECT_EQ(movedInto(area, wanted), QRectF(corner, wanted.size()));
    }
}

} // namespace
} // namespace tidewell
