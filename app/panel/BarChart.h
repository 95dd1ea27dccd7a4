#pragma once

#include "app/panel/BarStrip.h"
#include "ui/AccessibleItems.h"

#include <QWidget>

#include <optional>
#include <vector>

namespace tidewell {

/// What the two histories have in common: where bars stand, the one that is marked, by a pointer
/// that may rest while the bars move or by the arrow keys, and no work while the chart is hidden.
/// Assistive technology reads a list of samples. Lengths in points. Main thread.
class BarChart : public QWidget, public PaintedItems {
    Q_OBJECT

public:
    /// The newest sample; says so when there is none.
    QString summary() const override;
    /// How far the bars that are to be seen reach back. Empty below two of them.
    QString spanText() const;

    QString itemText(std::size_t index) const override;
    QRectF itemFrame(std::size_t index) const override;
    std::optional<std::size_t> currentItem() const override {
        return isMarkedByKey_ ? marked_ : std::nullopt;
    }

protected:
    BarChart(double barWidth, double spacing);

    double barWidth() const { return barWidth_; }
    BarStrip strip() const;
    /// The bar that the pointer or the keyboard marks.
    std::optional<std::size_t> markedBar() const { return marked_; }

    /// Of a sample, of which the oldest has the index 0: seconds since 1970-01-01 00:00:00 UTC.
    virtual double timestamp(std::size_t index) const = 0;
    virtual QString valueText(std::size_t index) const = 0;

    /// To be called after the samples, or the colours of their bars, have changed.
    void samplesChanged();

    /// Makes the bars from the samples, for the present size. Called while the chart is shown, and
    /// before it is. `marked` is the marked bar; the result is its index among the new bars, if it
    /// goes on being one.
    virtual std::optional<std::size_t> rebuild(std::optional<std::size_t> marked) = 0;
    /// The chart is hidden: what lives as long as its bars are shown ends.
    virtual void dropBars() = 0;
    /// 0 where there is no bar.
    virtual double barHeight(std::size_t index) const = 0;
    /// A bar is marked from now on, or no longer.
    virtual void hover(std::size_t index, bool inside) = 0;
    virtual void paintBar(QPainter& painter, std::size_t index, QPointF bottomLeft) const = 0;
    /// What lies below all bars.
    virtual void paintGround(QPainter& /*painter*/) const {}
    /// What lies over all bars.
    virtual void paintReadOut(QPainter& /*painter*/) const {}

    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void rebuildBars();
    void movePointer(std::optional<QPointF> position);
    void followPointer();
    void mark(std::optional<std::size_t> bar);
    void markByKey(std::optional<std::size_t> bar);
    std::optional<std::size_t> nextBar(std::size_t from, int step) const;
    std::optional<std::size_t> barAt(QPointF position) const;
    std::vector<double> visibleTimes() const;
    void paintBars(QPainter& painter) const;
    void paintGaps(QPainter& painter) const;

    double barWidth_;
    double spacing_;
    std::optional<QPointF> pointer_; // while it is in the chart
    std::optional<std::size_t> marked_;
    bool isMarkedByKey_ = false; // then the pointer has no say until it moves
};

} // namespace tidewell
