#include "app/panel/ScrollingBarChartFixed.h"

#include "base/text/TimeOfDay.h"
#include "base/values/LevelColours.h"
#include "ui/DevicePixels.h"
#include "ui/Drawing.h"
#include "ui/Fonts.h"
#include "ui/Palette.h"
#include "ui/TextDirection.h"

#include <QPainter>

#include <algorithm>
#include <cmath>
#include <utility>

namespace tidewell {

ScrollingBarChartFixed::ScrollingBarChartFixed(double fixedHeight,
                                               std::vector<MemoryPressureItem> memoryPressureArray,
                                               double barWidth, double spacing,
                                               MemoryPressureItem hoverValue)
    : BarChart(barWidth, spacing)
    , fixedHeight_(fixedHeight)
    , memoryPressureArray_(std::move(memoryPressureArray))
    , hoverValue_(hoverValue) {
    setAccessibleName(tr("Memory Pressure"));
    setFixedHeight(static_cast<int>(std::ceil(fixedHeight)));
}

void ScrollingBarChartFixed::setData(const std::vector<MemoryPressureItem>& memoryPressureArray) {
    if (memoryPressureArray_ == memoryPressureArray) {
        return;
    }
    memoryPressureArray_ = memoryPressureArray;
    samplesChanged();
}

QString ScrollingBarChartFixed::valueText(std::size_t index) const {
    return percentText(memoryPressureArray_.at(index).value);
}

std::optional<std::size_t> ScrollingBarChartFixed::rebuild(std::optional<std::size_t> marked) {
    const auto earlier = std::exchange(bars_, {});
    auto next = earlier.begin(); // samples keep their order
    std::optional<std::size_t> markedNow;
    for (const auto& item : memoryPressureArray_) {
        auto& bar = bars_.emplace_back(VerticalBarWithExtension{.barWidth = barWidth(),
                                                                .barHeight = fixedHeight_,
                                                                .memoryPressureItem = item,
                                                                .fill = pressureColour(item.value),
                                                                .hoverValue = &hoverValue_});
        const auto same = std::ranges::find(next, earlier.end(), item,
                                            &VerticalBarWithExtension::memoryPressureItem);
        if (same == earlier.end()) {
            bar.appear();
            continue;
        }
        next = same + 1;
        bar.hovered = same->hovered;
        markedNow = bar.hovered ? bars_.size() - 1 : markedNow;
    }
    if (marked && !markedNow) {
        hoverValue_ = noHover; // the bar went from under the pointer
    }
    return markedNow;
}

double ScrollingBarChartFixed::barHeight(std::size_t index) const {
    return pressureBarHeight(bars_.at(index).memoryPressureItem.value);
}

void ScrollingBarChartFixed::hover(std::size_t index, bool inside) {
    bars_.at(index).hover(inside);
}

void ScrollingBarChartFixed::paintBar(QPainter& painter, std::size_t index,
                                      QPointF bottomLeft) const {
    bars_.at(index).paint(painter, bottomLeft, appearanceOf(palette()));
}

void ScrollingBarChartFixed::paintGround(QPainter& painter) const {
    const double pixel = 1 / devicePixelRatioF();
    for (const std::int64_t limit : pressureLimits) {
        const QRectF line(0, height() - pressureBarHeight(limit), width(), pixel);
        painter.fillRect(onDevicePixels(painter, line), hairline(appearanceOf(palette())));
    }
}

void ScrollingBarChartFixed::paintReadOut(QPainter& painter) const {
    if (hoverValue_.value < 0) {
        return;
    }
    constexpr double padding = 2;
    constexpr double radius = 3;
    const Appearance appearance = appearanceOf(palette());
    painter.setLayoutDirection(Qt::LayoutDirectionAuto); // texts run as they are written
    painter.setFont(textFont(TextStyle::footnote, font()));
    const QString text = QString::fromStdString(timeOfDayString(hoverValue_.timestamp)) +
                         QChar::LineFeed + percentText(hoverValue_.value);
    const QRectF area(0, padding, width(), fixedHeight_);
    QRectF lines = painter.boundingRect(area, Qt::AlignHCenter | Qt::AlignTop, text);
    if (const auto marked = markedBar()) { // it would hide the mark that it speaks of
        const double column = strip().left(*marked);
        const double room = 2 * padding;
        if (column < lines.right() + room && column + barWidth() > lines.left() - room) {
            column < area.center().x() ? lines.moveLeft(column + barWidth() + room)
                                       : lines.moveRight(column - room);
        }
    }
    const QRectF frame =
        onDevicePixels(painter, lines.adjusted(-padding, -padding, padding, padding));

    drawSoftBox(painter, frame, radius, toQColor(colours::window, appearance), hairline(appearance),
                1 / devicePixelRatioF());
    painter.setPen(toQColor(colours::primary, appearance));
    painter.drawText(lines, Qt::AlignHCenter | Qt::AlignTop, text);
}

} // namespace tidewell
