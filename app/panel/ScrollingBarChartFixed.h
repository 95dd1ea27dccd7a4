#pragma once

#include "app/panel/BarChart.h"
#include "app/panel/VerticalBarWithExtension.h"
#include "model/memory/MemoryPressureItem.h"

#include <vector>

namespace tidewell {

/// The history of the memory pressure: a bar for each sample, a point high for each percent,
/// coloured by its own value, and a read-out of the one under the pointer. A bar is known by its
/// sample, and moves with it. Main thread.
class ScrollingBarChartFixed final : public BarChart {
    Q_OBJECT

public:
    /// `memoryPressureArray` is oldest first. Lengths in points; the chart is `fixedHeight` high.
    /// The read-out shows `hoverValue` until a bar writes there, which each does when it is first
    /// shown.
    ScrollingBarChartFixed(double fixedHeight, std::vector<MemoryPressureItem> memoryPressureArray,
                           double barWidth, double spacing, MemoryPressureItem hoverValue);

    /// After every change of the history. Nothing is repainted when it is as it was.
    void setData(const std::vector<MemoryPressureItem>& memoryPressureArray);

    /// What the read-out shows; nothing where the value is negative.
    MemoryPressureItem hoverValue() const { return hoverValue_; }
    std::size_t itemCount() const override { return memoryPressureArray_.size(); }

    /// One for each sample, none while the chart is hidden.
    const std::vector<VerticalBarWithExtension>& bars() const { return bars_; }

protected:
    double timestamp(std::size_t index) const override {
        return memoryPressureArray_.at(index).timestamp;
    }
    QString valueText(std::size_t index) const override;
    std::optional<std::size_t> rebuild(std::optional<std::size_t> marked) override;
    void dropBars() override { bars_.clear(); }
    double barHeight(std::size_t index) const override;
    void hover(std::size_t index, bool inside) override;
    void paintBar(QPainter& painter, std::size_t index, QPointF bottomLeft) const override;
    void paintGround(QPainter& painter) const override;
    void paintReadOut(QPainter& painter) const override;

private:
    double fixedHeight_;
    std::vector<MemoryPressureItem> memoryPressureArray_;
    MemoryPressureItem hoverValue_;
    std::vector<VerticalBarWithExtension> bars_;
};

} // namespace tidewell
