#pragma once

#include "app/panel/BarStrip.h"

#include <QWidget>

#include <optional>

namespace tidewell {

/// What the charts have in common: a pointer that may rest while the bars move under it, no work
/// while nothing is to be seen, and a voice for screen readers. Main thread.
class BarChart : public QWidget {
    Q_OBJECT

public:
    /// The newest sample in words, for screen readers. Says so when there is none.
    virtual QString newestSampleText() const = 0;

protected:
    /// Lengths in points.
    BarChart(double barWidth, double spacing);

    double barWidth() const { return barWidth_; }
    /// Where so many bars stand at the present size.
    BarStrip strip(std::size_t count) const;

    /// After the samples, or the colours they are painted in, have changed.
    void samplesChanged();

    /// Makes the bars anew from the samples, for the present size; what the pointer did to those
    /// that stay is kept. Called while the chart is shown, and before it is shown.
    virtual void rebuild() = 0;
    /// The bar whose hover region holds `position`.
    virtual std::optional<std::size_t> barAt(QPointF position) const = 0;
    /// The bar that was told last that the pointer is on it.
    virtual std::optional<std::size_t> hoveredBar() const = 0;
    virtual void hover(std::size_t bar, bool inside) = 0;
    /// The bars are no longer shown: what lives as long as they do ends.
    virtual void dropBars() = 0;

    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    void movePointer(std::optional<QPointF> position);
    void followPointer();

    double barWidth_;
    double spacing_;
    std::optional<QPointF> pointer_; // while it is in the chart
};

} // namespace tidewell
