#include "app/panel/ScrollingBarChartFixed.h"

#include "base/text/IntegerText.h"
#include "base/text/TimeOfDay.h"
#include "base/values/LevelColours.h"
#include "ui/DevicePixels.h"
#include "ui/Fonts.h"
#include "ui/Palette.h"

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

QString ScrollingBarChartFixed::sampleText(std::size_t index) const {
    const auto& [value, timestamp] = memoryPressureArray_.at(index);
    return tr("%1% at %2")
        .arg(QString::fromStdString(integerText(value)),
             QString::fromStdString(timeOfDayString(timestamp)));
}

std::optional<std::size_t> ScrollingBarChartFixed::rebuild(std::optional<std::size_t> hovered) {
    const auto earlier = std::exchange(bars_, {});
    auto next = earlier.begin(); // samples keep their order
    std::optional<std::size_t> hoveredNow;
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
        hoveredNow = bar.hovered ? bars_.size() - 1 : hoveredNow;
    }
    if (hovered && !hoveredNow) {
        hoverValue_ = noHover; // the bar went from under the pointer
    }
    return hoveredNow;
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
                         QChar::LineFeed + QString::fromStdString(integerText(hoverValue_.value)) +
                         u'%';
    const QRectF area(0, padding, width(), fixedHeight_);
    const QRectF lines = painter.boundingRect(area, Qt::AlignHCenter | Qt::AlignTop, text);
    const QRectF frame = lines.adjusted(-padding, -padding, padding, padding);

    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(toQColor(colours::window, appearance));
    painter.drawRoundedRect(onDevicePixels(painter, frame), radius, radius);
    painter.setPen(toQColor(colours::primary, appearance));
    painter.drawText(lines, Qt::AlignHCenter | Qt::AlignTop, text);
}

} // namespace tidewell
