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

RoundGaugeContent percentage(double value, Colour textColour) {
    return {.value = value,
            .text = percentText(static_cast<std::int64_t>(value)), // without its fraction
            .textColour = textColour,
            .minimumText = integer(0),
            .maximumText = integer(100),
            .minimumTextColour = colours::systemGreen,
            .maximumTextColour = colours::systemRed,
            .gradient = gaugeGradient(value)};
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
    gauge->move(centre - gauge->width() / 2, 0);
    QLabel* label = makeLabel(caption, TextStyle::body);
    label->setParent(this);
    label->setGeometry(centre - toGauge, rowHeight - captionHeight, 2 * toGauge, captionHeight);
    return gauge;
}

void GaugesRow::setContent(std::int64_t memoryPressure, double usedMemoryPercentage) {
    pressure_->setContent(
        percentage(static_cast<double>(memoryPressure), pressureColour(memoryPressure)));
    pressure_->setToolTip(withLevel(percentText(memoryPressure), pressureLevel(memoryPressure)));
    usage_->setContent(percentage(usedMemoryPercentage, colours::primary));
}

void GaugesRow::enterEvent(QEnterEvent* event) {
    entered_();
    QWidget::enterEvent(event);
}

} // namespace tidewell
