#include "app/panel/ScrollingBarChart.h"

#include "base/text/ByteText.h"
#include "base/text/TimeOfDay.h"
#include "base/values/LevelColours.h"
#include "ui/Palette.h"

#include <QPaintEvent>
#include <QPainter>

#include <algorithm>

namespace tidewell {

double swapBarHeight(double chartHeight, std::int64_t value, std::int64_t largest) {
    return value < 1
               ? 0
               : chartHeight * 0.8 * (static_cast<double>(value) / static_cast<double>(largest));
}

ScrollingBarChart::ScrollingBarChart(std::shared_ptr<MemoryWatcher> memoryWatcher,
                                     std::vector<SwapItem> swapUsedArray, double barWidth,
                                     double spacing)
    : BarChart(barWidth, spacing)
    , memoryWatcher_(std::move(memoryWatcher))
    , swapUsedArray_(std::move(swapUsedArray)) {
    setAccessibleName(tr("Swap Usage"));
}

void ScrollingBarChart::setData(const std::vector<SwapItem>& swapUsedArray) {
    if (swapUsedArray_ == swapUsedArray && level_ == memoryWatcher_->warningLevel()) {
        return;
    }
    swapUsedArray_ = swapUsedArray;
    samplesChanged();
}

QString ScrollingBarChart::newestSampleText() const {
    return swapUsedArray_.empty()
               ? tr("No samples yet")
               : tr("%1 at %2")
                     .arg(QString::fromStdString(byteText(swapUsedArray_.back().value)),
                          QString::fromStdString(timeOfDayString(swapUsedArray_.back().timestamp)));
}

void ScrollingBarChart::rebuild() {
    level_ = memoryWatcher_->warningLevel();
    const std::int64_t largest =
        swapUsedArray_.empty() ? 0 : std::ranges::max(swapUsedArray_, {}, &SwapItem::value).value;
    const auto earlier = std::exchange(bars_, {});
    const std::size_t firstEarlier =
        std::exchange(firstBar_, strip(swapUsedArray_.size()).firstVisible());
    for (std::size_t index = firstBar_; index < swapUsedArray_.size(); ++index) {
        const auto& [value, timestamp] = swapUsedArray_[index];
        auto& bar = bars_.emplace_back();
        if (value < 1) {
            continue;
        }
        // Below the first: wraps to a place that is none.
        const std::size_t place = index - firstEarlier;
        const bool hovered = place < earlier.size() && earlier[place] && earlier[place]->hovered;
        bar = VerticalBarWithText{.barColor = levelColour(level_),
                                  .textValue = byteText(value),
                                  .barHeight = swapBarHeight(height(), value, largest),
                                  .barWidth = barWidth(),
                                  .timeStamp = timestamp,
                                  .hovered = hovered};
        // Also for a place whose sample has moved on: its old label would be another sample's.
        bar->appear();
    }
}

void ScrollingBarChart::dropBars() {
    bars_.clear();
}

std::optional<std::size_t> ScrollingBarChart::barAt(QPointF position) const {
    const auto index = strip(swapUsedArray_.size()).barAt(position.x());
    if (!index || !bars_.at(*index - firstBar_)) {
        return std::nullopt;
    }
    const double top = height() - bars_.at(*index - firstBar_)->barHeight;
    return position.y() >= top && position.y() < height() ? index : std::nullopt;
}

std::optional<std::size_t> ScrollingBarChart::hoveredBar() const {
    const auto bar = std::ranges::find_if(bars_, [](const auto& it) { return it && it->hovered; });
    return bar == bars_.end()
               ? std::nullopt
               : std::optional(firstBar_ + static_cast<std::size_t>(bar - bars_.begin()));
}

void ScrollingBarChart::hover(std::size_t bar, bool inside) {
    bars_.at(bar - firstBar_)->hover(inside);
}

void ScrollingBarChart::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    const QFont font = VerticalBarWithText::labelFont();
    const BarStrip place = strip(swapUsedArray_.size());
    for (std::size_t index = firstBar_; index < swapUsedArray_.size(); ++index) {
        const auto& bar = bars_.at(index - firstBar_);
        if (bar && place.reaches(index, event->rect().left(), event->rect().right() + 1)) {
            bar->paint(painter, {place.left(index), static_cast<double>(height())}, font,
                       appearanceOf(palette()));
        }
    }
}

} // namespace tidewell
