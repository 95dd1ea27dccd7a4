#include "ui/RoundGauge.h"

#include "ui/DevicePixels.h"
#include "ui/Fonts.h"
#include "ui/Palette.h"

#include <QPainter>

#include <algorithm>
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
constexpr double span = 270; // clockwise

QPointF onArc(QPointF middle, double fraction) {
    const double angle = (startAngle - fraction * span) * std::numbers::pi / 180;
    return middle + arcRadius * QPointF(std::cos(angle), -std::sin(angle));
}

/// How far along the arc the ray through `point` crosses it, 0 to 1; in the gap the nearer end.
double alongArc(QPointF point) {
    const double angle = std::atan2(-point.y(), point.x()) * 180 / std::numbers::pi;
    const double clockwise = std::fmod(startAngle - angle + 360, 360.0);
    const double middleOfGap = (360 + span) / 2;
    return clockwise < span ? clockwise / span : clockwise < middleOfGap ? 1 : 0;
}

/// Linear between neighbours.
QColor colourAt(const std::vector<QColor>& colours, double fraction) {
    const double place = fraction * static_cast<double>(colours.size() - 1);
    const auto index = std::min(static_cast<std::size_t>(place), colours.size() - 1);
    const QColor from = colours[index];
    const QColor to = colours[std::min(index + 1, colours.size() - 1)];
    const auto part = static_cast<float>(place - static_cast<double>(index));
    return QColor::fromRgbF(std::lerp(from.redF(), to.redF(), part),
                            std::lerp(from.greenF(), to.greenF(), part),
                            std::lerp(from.blueF(), to.blueF(), part));
}

void drawCentred(QPainter& painter, QPointF baselineMiddle, const QString& text, QColor colour) {
    const double width = QFontMetricsF(painter.font()).horizontalAdvance(text);
    painter.setPen(colour);
    painter.drawText(baselineMiddle - QPointF(width / 2, 0), text);
}

} // namespace

// Pixel by pixel: for a QConicalGradient Qt starts pool threads, and keeps them.
QImage roundGaugeArc(const std::vector<Colour>& gradient, Appearance appearance,
                     double devicePixelRatio) {
    std::vector<QColor> colours;
    colours.reserve(gradient.size() + 1);
    for (const Colour colour : gradient) {
        colours.push_back(toQColor(colour, appearance));
    }
    if (colours.empty()) {
        colours.push_back(toQColor(colours::lightGray, appearance));
    }
    const int side = static_cast<int>(std::ceil(diameter * devicePixelRatio));
    QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(devicePixelRatio);
    for (int y = 0; y < side; ++y) {
        auto* const line = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < side; ++x) {
            const QPointF point =
                (QPointF(x + 0.5, y + 0.5) - QPointF(side, side) / 2) / devicePixelRatio;
            const double fromArc = std::abs(std::hypot(point.x(), point.y()) - arcRadius);
            if (fromArc > stroke / 2 + 1 / devicePixelRatio) { // most of the square
                line[x] = 0;
                continue;
            }
            const double fraction = alongArc(point);
            const QPointF fromLine = point - onArc({}, fraction);
            const double outside = std::hypot(fromLine.x(), fromLine.y()) - stroke / 2;
            const double coverage = std::clamp(0.5 - outside * devicePixelRatio, 0.0, 1.0);
            line[x] = coverage == 0
                          ? 0
                          : qPremultiply(withOpacity(colourAt(colours, fraction), coverage).rgba());
        }
    }
    return image;
}

RoundGauge::RoundGauge() {
    setFixedSize(gaugeSize);
    setAutoFillBackground(true); // opaque, so that what is below is not painted again
}

const QImage& RoundGauge::arc(Appearance appearance) {
    if (arc_.isNull() || arc_.devicePixelRatio() != devicePixelRatioF() ||
        arcGradient_ != content().gradient || arcAppearance_ != appearance) {
        arcGradient_ = content().gradient;
        arcAppearance_ = appearance;
        arc_ = roundGaugeArc(arcGradient_, arcAppearance_, devicePixelRatioF());
    }
    return arc_;
}

double RoundGauge::markerPlace(const RoundGaugeContent& content) const {
    constexpr double arcLength = arcRadius * span * std::numbers::pi / 180;
    constexpr int stepsPerPixel = 4;
    const double steps = std::ceil(arcLength * devicePixelRatioF()) * stepsPerPixel;
    const double place = gaugeFraction(content.value, content.minimum, content.maximum);
    return std::round(place * steps) / steps;
}

bool RoundGauge::looksLike(const RoundGaugeContent& other) const {
    RoundGaugeContent moved = content();
    moved.value = other.value;
    return moved == other && markerPlace(moved) == markerPlace(content());
}

void RoundGauge::paintEvent(QPaintEvent*) {
    const RoundGaugeContent& shown = content();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setLayoutDirection(Qt::LayoutDirectionAuto); // texts run as they are written
    const Appearance appearance = appearanceOf(palette());
    const QPointF middle(width() / 2.0, (height() - gaugeSize.height()) / 2.0 + diameter / 2);

    drawOnDevicePixels(painter, middle - QPointF(diameter, diameter) / 2, arc(appearance));

    const QPointF marker = onArc(middle, markerPlace(shown));
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
    drawCentred(painter, {0, natural.capHeight() / 2}, shown.text,
                textColour(shown.textColour, appearance));
    painter.restore();

    QFont endFont = textFont(TextStyle::footnote, font());
    endFont.setWeight(QFont::DemiBold);
    painter.setFont(endFont);
    drawCentred(painter, middle + QPointF(-endTextDistance, endTextBaseline), shown.minimumText,
                textColour(shown.minimumTextColour, appearance));
    drawCentred(painter, middle + QPointF(endTextDistance, endTextBaseline), shown.maximumText,
                textColour(shown.maximumTextColour, appearance));
}

} // namespace tidewell
