#pragma once

#include <QSlider>

namespace tidewell {

/// A horizontal slider over a few whole numbers, with a mark for each. Main thread.
class StepSlider final : public QSlider {
public:
    StepSlider(int minimum, int maximum);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return {60, sizeHint().height()}; }

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace tidewell
