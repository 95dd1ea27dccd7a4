#include "app/panel/BarChart.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QMouseEvent>

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

QAccessibleInterface* accessibleChart(const QString& /*className*/, QObject* object) {
    auto* const chart = qobject_cast<BarChart*>(object);
    return chart == nullptr ? nullptr : new AccessibleChart(chart); // the toolkit's
}

} // namespace

BarChart::BarChart(double barWidth, double spacing)
    : barWidth_(barWidth)
    , spacing_(spacing) {
    QAccessible::installFactory(accessibleChart); // does nothing the second time
    setMouseTracking(true);
}

BarStrip BarChart::strip(std::size_t count) const {
    return {.width = static_cast<double>(width()),
            .barWidth = barWidth_,
            .spacing = spacing_,
            .count = count};
}

void BarChart::samplesChanged() {
    if (!isVisible()) {
        return;
    }
    rebuild();
    followPointer();
    update();
    if (QAccessible::isActive()) {
        QAccessibleEvent event(this, QAccessible::DescriptionChanged);
        QAccessible::updateAccessibility(&event);
    }
}

void BarChart::showEvent(QShowEvent* event) {
    rebuild();
    QWidget::showEvent(event);
}

void BarChart::hideEvent(QHideEvent* event) {
    movePointer(std::nullopt);
    dropBars();
    QWidget::hideEvent(event);
}

void BarChart::resizeEvent(QResizeEvent* event) {
    if (isVisible()) {
        rebuild();
        followPointer();
    }
    QWidget::resizeEvent(event);
}

void BarChart::mouseMoveEvent(QMouseEvent* event) {
    movePointer(event->position());
    event->ignore(); // for whoever else follows the pointer
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
    const auto left = hoveredBar();
    const auto entered = pointer_ ? barAt(*pointer_) : std::nullopt;
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

} // namespace tidewell
