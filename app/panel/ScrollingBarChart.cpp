#include "app/panel/ScrollingBarChart.h"

#include "base/text/ByteText.h"
#include "base/values/LevelColours.h"
#include "ui/Palette.h"

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

QString ScrollingBarChart::valueText(std::size_t index) const {
    return QString::fromStdString(byteText(swapUsedArray_.at(index).value));
}

std::optional<std::size_t> ScrollingBarChart::rebuild(std::optional<std::size_t> marked) {
    level_ = memoryWatcher_->warningLevel();
    labelFont_ = VerticalBarWithText::labelFont();
    const std::int64_t largest =
        swapUsedArray_.empty() ? 0 : std::ranges::max(swapUsedArray_, {}, &SwapItem::value).value;
    bars_.clear();
    firstBar_ = strip().firstVisible();
    std::optional<std::size_t> markedNow;
    for (std::size_t index = firstBar_; index < swapUsedArray_.size(); ++index) {
        const auto& [value, timestamp] = swapUsedArray_[index];
        auto& bar = bars_.emplace_back();
        if (value < 1) {
            continue;
        }
        bar = VerticalBarWithText{.barColor = levelColour(level_),
                                  .textValue = byteText(value),
                                  .barHeight = swapBarHeight(height(), value, largest),
                                  .barWidth = barWidth(),
                                  .timeStamp = timestamp,
                                  .hovered = marked == index};
        // Also where the samples moved on and the pointer's mark did not.
        bar->appear();
        markedNow = bar->hovered ? marked : markedNow;
    }
    return markedNow;
}

double ScrollingBarChart::barHeight(std::size_t index) const {
    // An index before the first bar wraps around to one that has no bar either.
    const std::size_t place = index - firstBar_;
    return place < bars_.size() && bars_[place] ? bars_[place]->barHeight : 0;
}

void ScrollingBarChart::hover(std::size_t index, bool inside) {
    bars_.at(index - firstBar_)->hover(inside);
}

void ScrollingBarChart::paintBar(QPainter& painter, std::size_t index, QPointF bottomLeft) const {
    bars_.at(index - firstBar_)->paint(painter, bottomLeft, labelFont_, appearanceOf(palette()));
}

} // namespace tidewell
