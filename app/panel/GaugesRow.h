#pragma once

#include "base/values/Colour.h"

#include <QWidget>

#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

namespace tidewell {

class RoundGauge;

/// The colours of a round gauge that shows a percentage, from its minimum to its maximum. Pure.
std::vector<Colour> gaugeGradient(double value);

/// The two round gauges of the panel, memory pressure and memory usage. Main thread.
class GaugesRow final : public QWidget {
    Q_OBJECT

public:
    /// `entered` is called when the pointer comes over the row.
    GaugesRow(int width, std::function<void()> entered);

    /// Both in percent.
    void setContent(std::int64_t memoryPressure, double usedMemoryPercentage);

protected:
    void enterEvent(QEnterEvent* event) override;

private:
    RoundGauge* addGauge(int side, const QString& caption);

    std::function<void()> entered_;
    std::optional<std::int64_t> shownPressure_;
    std::optional<double> shownUsage_;
    RoundGauge* pressure_;
    RoundGauge* usage_;
};

} // namespace tidewell
