#pragma once

#include "app/panel/BarChart.h"
#include "app/panel/VerticalBarWithText.h"
#include "model/memory/MemoryWatcher.h"
#include "model/memory/SwapItem.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace tidewell {

/// The history of the swap in use: a labelled bar for each sample, the highest one at four fifths
/// of the chart, all in the colour of the present warning level. A bar is known by its place in the
/// history: the pointer's mark stays there when the samples move on. Main thread.
class ScrollingBarChart final : public BarChart {
    Q_OBJECT

public:
    /// `memoryWatcher`, never null, knows the warning level. `swapUsedArray` is oldest first.
    /// Lengths in points.
    ScrollingBarChart(std::shared_ptr<MemoryWatcher> memoryWatcher,
                      std::vector<SwapItem> swapUsedArray, double barWidth, double spacing);

    /// After every change of the history or of the warning level. Nothing is repainted when both
    /// are as they were.
    void setData(const std::vector<SwapItem>& swapUsedArray);

    std::size_t itemCount() const override { return swapUsedArray_.size(); }

    /// One for each sample of which something is to be seen, the newest last; empty slots in
    /// between for samples without a bar. None while the chart is hidden.
    const std::vector<std::optional<VerticalBarWithText>>& bars() const { return bars_; }

protected:
    double timestamp(std::size_t index) const override {
        return swapUsedArray_.at(index).timestamp;
    }
    QString valueText(std::size_t index) const override;
    std::optional<std::size_t> rebuild(std::optional<std::size_t> marked) override;
    void dropBars() override { bars_.clear(); }
    double barHeight(std::size_t index) const override;
    void hover(std::size_t index, bool inside) override;
    void paintBar(QPainter& painter, std::size_t index, QPointF bottomLeft) const override;

private:
    std::shared_ptr<MemoryWatcher> memoryWatcher_;
    std::vector<SwapItem> swapUsedArray_;
    WarningLevel level_ = WarningLevel::none; // of which the bars have the colour
    std::vector<std::optional<VerticalBarWithText>> bars_;
    QFont labelFont_;
    std::size_t firstBar_ = 0; // its index in the history
};

/// The height of the bar of `value` bytes where `largest` is the history's largest; no bar, and
/// hence no height, below one byte.
double swapBarHeight(double chartHeight, std::int64_t value, std::int64_t largest);

} // namespace tidewell
