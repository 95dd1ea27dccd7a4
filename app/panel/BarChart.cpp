#include "app/panel/BarChart.h"

#include "ui/Accessible.h"

#include <QMouseEvent>
#include <QPainter>

#include <utility>

namespace tidewell {

namespace {

class AccessibleChart final : public QAccessibleWidget {
public:
    explicit AccessibleChart(BarChart* chart)
        : QAccessibleWidget(chart, QAccessible::Chart)
        , chart_(chart) {}

    QString text(QAccessible::Text kind) const override {
        if (kind == QAccessible::Description || kind == QAccessible::Value) {
            return chart_->newestSampleText();
        }
        return QAccessibleWidget::text(kind);
    }

private:
    const BarChart* chart_;
};

} // namespace

BarChart::BarChart(double barWidth, double spacing)
    : barWidth_(barWidth)
    , spacing_(spacing) {
    makeAccessible<BarChart, AccessibleChart>();
    setMouseTracking(true);
}

QString BarChart::newestSampleText() const {
    return sampleCount() == 0 ? tr("No samples yet") : sampleText(sampleCount() - 1);
}

BarStrip BarChart::strip() const {
    return {.width = static_cast<double>(width()),
            .barWidth = barWidth_,
            .spacing = spacing_,
            .count = sampleCount()};
}

void BarChart::samplesChanged() {
    if (!isVisible()) {
        return;
    }
    rebuildBars();
    update();
    if (QAccessible::isActive()) {
        QAccessibleEvent event(this, QAccessible::DescriptionChanged);
        QAccessible::updateAccessibility(&event);
    }
}

void BarChart::rebuildBars() {
    hovered_ = rebuild(hovered_);
    followPointer();
}

void BarChart::showEvent(QShowEvent* event) {
    rebuildBars();
    QWidget::showEvent(event);
}

void BarChart::hideEvent(QHideEvent* event) {
    movePointer(std::nullopt);
    dropBars();
    QWidget::hideEvent(event);
}

void BarChart::resizeEvent(QResizeEvent* event) {
    if (isVisible()) {
        rebuildBars();
    }
    QWidget::resizeEvent(event);
}

void BarChart::mouseMoveEvent(QMouseEvent* event) {
    movePointer(event->position());
    event->ignore(); // the box around the chart follows the pointer, too
}

void BarChart::enterEvent(QEnterEvent* event) {
    movePointer(event->position());
}

void BarChart::leaveEvent(QEvent* /*event*/) {
    movePointer(std::nullopt);
}

void BarChart::movePointer(std::optional<QPointF> position) {
    pointer_ = position;
    followPointer();
}

void BarChart::followPointer() {
    const auto entered = pointer_ ? barAt(*pointer_) : std::nullopt;
    const auto left = std::exchange(hovered_, entered);
    if (left == entered) {
        return;
    }
    if (left) {
        hover(*left, false);
    }
    if (entered) {
        hover(*entered, true);
    }
    update();
}

std::optional<std::size_t> BarChart::barAt(QPointF position) const {
    const auto index = strip().barAt(position.x());
    const double aboveBase = height() - position.y();
    return index && aboveBase > 0 && aboveBase <= barHeight(*index) ? index : std::nullopt;
}

void BarChart::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    const BarStrip place = strip();
    for (std::size_t index = place.firstVisible(); index < place.count; ++index) {
        if (barHeight(index) > 0) {
            paintBar(painter, index, {place.left(index), static_cast<double>(height())});
        }
    }
    paintReadOut(painter);
}

} // namespace tidewell
