#include "app/panel/ScrollingBarChartFixed.h"

#include "app/panel/DevicePixels.h"
#include "base/text/IntegerText.h"
#include "base/text/TimeOfDay.h"
#include "base/values/LevelColours.h"
#include "ui/Fonts.h"
#include "ui/Palette.h"

#include <QPaintEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <ranges>

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

QString ScrollingBarChartFixed::newestSampleText() const {
    if (memoryPressureArray_.empty()) {
        return tr("No samples yet");
    }
    const auto& [value, timestamp] = memoryPressureArray_.back();
    return tr("%1% at %2")
        .arg(QString::fromStdString(integerText(value)),
             QString::fromStdString(timeOfDayString(timestamp)));
}

void ScrollingBarChartFixed::rebuild() {
    const auto earlier = std::exchange(bars_, {});
    auto next = earlier.begin(); // samples keep their order, and each bar goes on as one
    bool isHoverKept = false;
    for (const auto& item : memoryPressureArray_) {
        auto& bar = bars_.emplace_back(VerticalBarWithExtension{.barWidth = barWidth(),
                                                                .barHeight = fixedHeight_,
                                                                .memoryPressureItem = item,
                                                                .fill = pressureColour(item.value),
                                                                .hoverValue = &hoverValue_});
        const auto same = std::ranges::find(next, earlier.end(), item,
                                            &VerticalBarWithExtension::memoryPressureItem);
        if (same != earlier.end()) {
            next = same + 1;
            bar.hovered = same->hovered;
            isHoverKept = isHoverKept || same->hovered;
        } else {
            bar.appear();
        }
    }
    if (!isHoverKept && std::ranges::any_of(earlier, &VerticalBarWithExtension::hovered)) {
        hoverValue_ = noHover; // its bar went from under the pointer
    }
}

void ScrollingBarChartFixed::dropBars() {
    bars_.clear();
}

std::optional<std::size_t> ScrollingBarChartFixed::barAt(QPointF position) const {
    const auto index = strip(memoryPressureArray_.size()).barAt(position.x());
    const bool isInside =
        index && position.y() < fixedHeight_ &&
        position.y() >= fixedHeight_ - pressureBarHeight(bars_.at(*index).memoryPressureItem.value);
    return isInside ? index : std::nullopt;
}

std::optional<std::size_t> ScrollingBarChartFixed::hoveredBar() const {
    const auto bar = std::ranges::find_if(bars_, &VerticalBarWithExtension::hovered);
    return bar == bars_.end() ? std::nullopt
                              : std::optional(static_cast<std::size_t>(bar - bars_.begin()));
}

void ScrollingBarChartFixed::hover(std::size_t bar, bool inside) {
    bars_.at(bar).hover(inside);
}

void ScrollingBarChartFixed::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    const BarStrip place = strip(memoryPressureArray_.size());
    for (std::size_t index = place.firstVisible(); index < bars_.size(); ++index) {
        if (place.reaches(index, event->rect().left(), event->rect().right() + 1)) {
            bars_[index].paint(painter, {place.left(index), fixedHeight_}, appearanceOf(palette()));
        }
    }
    if (hoverValue_.value >= 0) {
        paintReadOut(painter);
    }
}

void ScrollingBarChartFixed::paintReadOut(QPainter& painter) const {
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
