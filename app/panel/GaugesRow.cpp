#include "app/panel/GaugesRow.h"

#include "base/text/IntegerText.h"
#include "base/values/LevelColours.h"
#include "ui/Labels.h"
#include "ui/LevelWords.h"
#include "ui/Palette.h"
#include "ui/RoundGauge.h"
#include "ui/TextDirection.h"

#include <QLabel>

#include <utility>

namespace tidewell {

namespace {

constexpr int rowHeight = 92;
constexpr int captionHeight = 18;
/// From the row's middle to a gauge's: columns as wide as the arcs, and 110 between them.
constexpr int toGauge = 82;

QString integer(std::int64_t value) {
    return QString::fromStdString(integerText(value));
}

void showPercentage(RoundGauge& gauge, double value, Colour textColour) {
    RoundGaugeContent content = gauge.content();
    content.value = value;
    content.text = percentText(static_cast<std::int64_t>(value)); // without its fraction
    content.textColour = textColour;
    content.gradient = gaugeGradient(value);
    gauge.setContent(std::move(content));
}

} // namespace

std::vector<Colour> gaugeGradient(double value) {
    using namespace colours;
    if (value > 80) {
        return {systemBlue, systemOrange, systemRed};
    }
    if (value > 60) {
        return {systemTeal, systemBlue, systemOrange};
    }
    if (value > 40) {
        return {systemTeal, systemBlue};
    }
    if (value > 20) {
        return {systemGreen, systemTeal};
    }
    return {systemGreen};
}

GaugesRow::GaugesRow(int width, std::function<void()> entered)
    : entered_(std::move(entered)) {
    setFixedSize(width, rowHeight);
    const int side = isRightToLeft() ? 1 : -1;
    pressure_ = addGauge(side, tr("Pressure"));
    usage_ = addGauge(-side, tr("Memory Usage"));
}

RoundGauge* GaugesRow::addGauge(int side, const QString& caption) {
    const int centre = width() / 2 + side * toGauge;
    auto* gauge = new RoundGauge;
    gauge->setParent(this);
    gauge->setAccessibleName(caption);
    RoundGaugeContent content;
    content.minimumText = integer(0);
    content.maximumText = integer(100);
    content.minimumTextColour = colours::systemGreen;
    content.maximumTextColour = colours::systemRed;
    gauge->setContent(std::move(content));
    gauge->move(centre - gauge->width() / 2, 0);
    QLabel* label = makeLabel(caption, TextStyle::body);
    label->setParent(this);
    label->setGeometry(centre - toGauge, rowHeight - captionHeight, 2 * toGauge, captionHeight);
    return gauge;
}

void GaugesRow::setContent(std::int64_t memoryPressure, double usedMemoryPercentage) {
    if (std::exchange(shownPressure_, memoryPressure) != memoryPressure) {
        showPercentage(*pressure_, static_cast<double>(memoryPressure),
                       pressureColour(memoryPressure));
        pressure_->setToolTip(
            withLevel(percentText(memoryPressure), pressureLevel(memoryPressure)));
    }
    if (std::exchange(shownUsage_, usedMemoryPercentage) != usedMemoryPercentage) {
        showPercentage(*usage_, usedMemoryPercentage, colours::primary);
    }
}

void GaugesRow::enterEvent(QEnterEvent* event) {
    entered_();
    QWidget::enterEvent(event);
}

} // namespace tidewell
