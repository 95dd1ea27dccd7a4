#include "ui/RoundGauge.h"

#include "ui/Fonts.h"
#include "ui/Palette.h"

#include <QConicalGradient>
#include <QPainter>

#include <cmath>
#include <numbers>

namespace tidewell {

namespace {

// Points of the layout: the measures of a small gauge, scaled by 1.2.
constexpr double diameter = 69.6;
constexpr double stroke = 7.2;
constexpr double arcRadius = (diameter - stroke) / 2;
constexpr double markerRadius = 4.3;
constexpr double markerRing = 6.8;
constexpr double valueTextSize = 17;
constexpr double valueTextWidth = 46;    // of the 55 within the arc
constexpr double endTextDistance = 14.5; // of the texts' middles from the gauge's
constexpr double endTextBaseline = 35;   // below the gauge's middle
constexpr QSize gaugeSize(72, 72);

// Degrees counterclockwise from three o'clock, as in QPainter::drawArc().
constexpr double startAngle = 225;
constexpr double span = -270;

QPointF onArc(QPointF middle, double fraction) {
    const double angle = (startAngle + fraction * span) * std::numbers::pi / 180;
    return middle + arcRadius * QPointF(std::cos(angle), -std::sin(angle));
}

QBrush alongArc(QPointF middle, const std::vector<Colour>& colours, Appearance appearance) {
    if (colours.empty()) {
        return toQColor(colours::lightGray, appearance);
    }
    // QConicalGradient runs counterclockwise once round, here from the middle of the gap.
    QConicalGradient gradient(middle, -90);
    const double start = (startAngle + 90) / 360;
    for (std::size_t i = 0; i < colours.size(); ++i) {
        const double fraction =
            colours.size() == 1 ? 0
                                : static_cast<double>(i) / static_cast<double>(colours.size() - 1);
        gradient.setColorAt(start + fraction * span / 360, toQColor(colours[i], appearance));
    }
    return gradient;
}

void drawCentred(QPainter& painter, QPointF baselineMiddle, const QString& text, QColor colour) {
    const double width = QFontMetricsF(painter.font()).horizontalAdvance(text);
    painter.setPen(colour);
    painter.drawText(baselineMiddle - QPointF(width / 2, 0), text);
}

} // namespace

RoundGauge::RoundGauge(QWidget* parent)
    : GaugeOf(parent) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize RoundGauge::sizeHint() const {
    return gaugeSize;
}

void RoundGauge::paintEvent(QPaintEvent*) {
    const RoundGaugeContent& shown = content();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setLayoutDirection(Qt::LayoutDirectionAuto); // texts run as they are written
    const Appearance appearance = appearanceOf(palette());
    const QPointF middle(width() / 2.0, (height() - gaugeSize.height()) / 2.0 + diameter / 2);
    const auto textColour = [appearance](Colour colour) {
        return toQColor(textVariant(colour), appearance);
    };

    const QRectF circle(middle - QPointF(arcRadius, arcRadius), QSizeF(2, 2) * arcRadius);
    painter.setPen(
        QPen(alongArc(middle, shown.gradient, appearance), stroke, Qt::SolidLine, Qt::RoundCap));
    painter.drawArc(circle, static_cast<int>(startAngle * 16), static_cast<int>(span * 16));

    const QPointF marker = onArc(middle, gaugeFraction(shown.value, shown.minimum, shown.maximum));
    painter.setPen(Qt::NoPen);
    painter.setBrush(palette().color(backgroundRole()));
    painter.drawEllipse(marker, markerRing, markerRing);
    painter.setBrush(palette().color(foregroundRole()));
    painter.drawEllipse(marker, markerRadius, markerRadius);

    QFont valueFont = font();
    valueFont.setPixelSize(static_cast<int>(valueTextSize));
    valueFont.setWeight(QFont::DemiBold);
    const QFontMetricsF natural(valueFont);
    const double textWidth = natural.horizontalAdvance(shown.text);
    painter.setFont(valueFont);
    painter.save();
    painter.translate(middle);
    if (textWidth > valueTextWidth) { // digits of a wide font are drawn smaller rather than cut
        painter.scale(valueTextWidth / textWidth, valueTextWidth / textWidth);
    }
    drawCentred(painter, {0, natural.capHeight() / 2}, shown.text, textColour(shown.textColour));
    painter.restore();

    QFont endFont = textFont(TextStyle::footnote, font());
    endFont.setWeight(QFont::DemiBold);
    painter.setFont(endFont);
    drawCentred(painter, middle + QPointF(-endTextDistance, endTextBaseline), shown.minimumText,
                textColour(shown.minimumTextColour));
    drawCentred(painter, middle + QPointF(endTextDistance, endTextBaseline), shown.maximumText,
                textColour(shown.maximumTextColour));
}

} // namespace tidewell
