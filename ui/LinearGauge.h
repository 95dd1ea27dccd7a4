#pragma once

#include "base/values/Colour.h"
#include "ui/Gauge.h"

namespace tidewell {

/// What a linear gauge shows.
struct LinearGaugeContent {
    double value = 0;
    double minimum = 0;
    double maximum = 100;
    QString text;
    QString minimumText;
    QString maximumText;
    Colour tint = colours::lightGray; ///< of the filled part
    bool operator==(const LinearGaugeContent&) const = default;
};

/// A capsule that is filled from the minimum to the value, between the texts of its ends, with the
/// value's text centred below. It runs from right to left in right-to-left layouts. Values outside
/// the range stand at its nearer end.
class LinearGauge final : public GaugeOf<LinearGaugeContent> {
public:
    LinearGauge();

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace tidewell
