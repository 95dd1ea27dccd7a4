#pragma once

#include "app/panel/BarStrip.h"

#include <QWidget>

#include <optional>

namespace tidewell {

/// What the two histories have in common: where bars stand, the bar under a pointer that may rest
/// while the bars move, and no work while the chart is hidden. Lengths in points. Main thread.
class BarChart : public QWidget {
    Q_OBJECT

public:
    virtual std::size_t sampleCount() const = 0;
    /// What a sample says, for screen readers. The oldest has the index 0.
    virtual QString sampleText(std::size_t index) const = 0;
    /// The newest sample; says so when there is none.
    QString newestSampleText() const;

protected:
    BarChart(double barWidth, double spacing);

    double barWidth() const { return barWidth_; }
    BarStrip strip() const;

    /// To be called after the samples, or the colours of their bars, have changed.
    void samplesChanged();

    /// Makes the bars from the samples, for the present size. Called while the chart is shown, and
    /// before it is. `hovered` is the bar that is marked as the pointer's; the result is its index
    /// among the new bars, if it goes on being one.
    virtual std::optional<std::size_t> rebuild(std::optional<std::size_t> hovered) = 0;
    /// The chart is hidden: what lives as long as its bars are shown ends.
    virtual void dropBars() = 0;
    /// 0 where there is no bar.
    virtual double barHeight(std::size_t index) const = 0;
    /// The pointer came onto a bar, or left it.
    virtual void hover(std::size_t index, bool inside) = 0;
    virtual void paintBar(QPainter& painter, std::size_t index, QPointF bottomLeft) const = 0;
    /// Paints what lies over all bars.
    virtual void paintReadOut(QPainter& /*painter*/) const {}

    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void rebuildBars();
    void movePointer(std::optional<QPointF> position);
    void followPointer();
    std::optional<std::size_t> barAt(QPointF position) const;

    double barWidth_;
    double spacing_;
    std::optional<QPointF> pointer_; // while it is in the chart
    std::optional<std::size_t> hovered_;
};

} // namespace tidewell
