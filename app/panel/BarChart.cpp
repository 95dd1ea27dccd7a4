#include "app/panel/BarChart.h"

#include "app/panel/SampleTimes.h"
#include "base/text/TimeOfDay.h"
#include "ui/DevicePixels.h"
#include "ui/Drawing.h"
#include "ui/Palette.h"
#include "ui/TitledBox.h"

#include <QKeyEvent>
#include <QPainter>

#include <utility>

namespace tidewell {

BarChart::BarChart(double barWidth, double spacing)
    : barWidth_(barWidth)
    , spacing_(spacing) {
    makeAccessible<BarChart, AccessibleItems>();
    setMouseTracking(true);
    setFocusPolicy(Qt::TabFocus);
    setAutoFillBackground(true); // opaque, so that the box below is not painted again
}

QString BarChart::summary() const {
    return itemCount() == 0 ? tr("No samples yet") : itemText(itemCount() - 1);
}

QString BarChart::spanText() const {
    return tidewell::spanText(visibleTimes());
}

QString BarChart::itemText(std::size_t index) const {
    return tr("%1 at %2")
        .arg(valueText(index), QString::fromStdString(timeOfDayString(timestamp(index))));
}

QRectF BarChart::itemFrame(std::size_t index) const {
    return {strip().left(index), 0, barWidth_, static_cast<double>(height())};
}

std::vector<double> BarChart::visibleTimes() const {
    std::vector<double> times;
    for (std::size_t index = strip().firstVisible(); index < itemCount(); ++index) {
        times.push_back(timestamp(index));
    }
    return times;
}

BarStrip BarChart::strip() const {
    return {.width = static_cast<double>(width()),
            .barWidth = barWidth_,
            .spacing = spacing_,
            .count = itemCount()};
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
    marked_ = rebuild(marked_);
    if (!isMarkedByKey_) {
        followPointer();
    } else if (marked_) {
        hover(*marked_, true); // a new bar published that there is none
    }
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
    isMarkedByKey_ = false;
    followPointer();
}

void BarChart::followPointer() {
    mark(pointer_ ? barAt(*pointer_) : std::nullopt);
}

void BarChart::mark(std::optional<std::size_t> bar) {
    const auto before = std::exchange(marked_, bar);
    if (before == bar) {
        return;
    }
    if (before) {
        hover(*before, false);
    }
    if (bar) {
        hover(*bar, true);
    }
    update();
}

void BarChart::markByKey(std::optional<std::size_t> bar) {
    isMarkedByKey_ = bar.has_value();
    mark(bar);
    if (bar) {
        tellOfItem(*this, *bar, QAccessible::Focus);
    }
}

/// The nearest bar from there on, that one included.
std::optional<std::size_t> BarChart::nextBar(std::size_t from, int step) const {
    const std::size_t first = strip().firstVisible();
    for (std::size_t index = from; index >= first && index < itemCount();
         index += static_cast<std::size_t>(step)) { // below zero it wraps to one that is none
        if (barHeight(index) > 0) {
            return index;
        }
    }
    return std::nullopt;
}

void BarChart::keyPressEvent(QKeyEvent* event) {
    const std::size_t first = strip().firstVisible();
    const std::size_t last = itemCount() - 1;
    std::optional<std::size_t> bar;
    switch (event->key()) {
    case Qt::Key_Left:
        bar = marked_ ? nextBar(*marked_ - 1, -1) : nextBar(last, -1);
        break;
    case Qt::Key_Right:
        bar = marked_ ? nextBar(*marked_ + 1, 1) : nextBar(last, -1);
        break;
    case Qt::Key_Home:
        bar = nextBar(first, 1);
        break;
    case Qt::Key_End:
        bar = nextBar(last, -1);
        break;
    case Qt::Key_Escape:
        if (isMarkedByKey_) {
            markByKey(std::nullopt);
            return;
        }
        [[fallthrough]];
    default:
        QWidget::keyPressEvent(event);
        return;
    }
    if (bar) {
        markByKey(bar);
    }
}

void BarChart::focusOutEvent(QFocusEvent* event) {
    if (isMarkedByKey_) {
        markByKey(std::nullopt);
    }
    QWidget::focusOutEvent(event);
}

std::optional<std::size_t> BarChart::barAt(QPointF position) const {
    const auto index = strip().barAt(position.x());
    const double aboveBase = height() - position.y();
    return index && aboveBase > 0 && aboveBase <= barHeight(*index) ? index : std::nullopt;
}

void BarChart::paintGaps(QPainter& painter) const {
    const BarStrip place = strip();
    const QColor colour =
        onGround(withOpacity(toQColor(colours::secondaryText, appearanceOf(palette())), 0.6),
                 palette().base().color());
    for (const std::size_t gap : gapsBefore(visibleTimes())) {
        const double x = place.left(place.firstVisible() + gap) - spacing_ / 2;
        const double pixel = 1 / devicePixelRatioF();
        painter.fillRect(onDevicePixels(painter, {x - pixel / 2, 0, pixel, 1.0 * height()}),
                         colour);
    }
}

void BarChart::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    TitledBox::paintInside(painter, *this, [&] { paintBars(painter); });
    paintReadOut(painter);
    if (showsFocus(*this)) {
        drawFocusRing(painter, rect(), 4, appearanceOf(palette()));
    }
}

void BarChart::paintBars(QPainter& painter) const {
    paintGround(painter);
    const BarStrip place = strip();
    for (std::size_t index = place.firstVisible(); index < place.count; ++index) {
        if (barHeight(index) > 0) {
            paintBar(painter, index, {place.left(index), static_cast<double>(height())});
        }
    }
    painter.setRenderHint(QPainter::Antialiasing, false);
    paintGaps(painter);
}

} // namespace tidewell
