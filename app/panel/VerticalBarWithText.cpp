#include "app/panel/VerticalBarWithText.h"

#include "base/text/TimeOfDay.h"
#include "ui/DevicePixels.h"
#include "ui/Drawing.h"
#include "ui/Fonts.h"
#include "ui/Palette.h"

#include <QFontDatabase>
#include <QFontMetricsF>
#include <QPainterPath>

#include <unicode/brkiter.h>

#include <algorithm>
#include <cmath>
#include <memory>

namespace tidewell {

namespace {

constexpr double labelElevation = 28; // of its middle, above the bar's base

std::size_t characterCount(std::string_view text) {
    UErrorCode status = U_ZERO_ERROR;
    const auto wide = icu::UnicodeString::fromUTF8(
        icu::StringPiece(text.data(), static_cast<std::int32_t>(text.size())));
    const std::unique_ptr<icu::BreakIterator> boundaries(
        icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
    if (boundaries == nullptr) {
        return static_cast<std::size_t>(wide.countChar32()); // ICU's data is missing
    }
    boundaries->setText(wide);
    std::size_t count = 0;
    while (boundaries->next() != icu::BreakIterator::DONE) {
        ++count;
    }
    return count;
}

/// Rounded at the top, square at the bottom. Only the top is a path: for high ones Qt's raster
/// engine takes pool threads.
void drawBar(QPainter& painter, const QRectF& bar, double topRadius, const QColor& colour) {
    const double radius = std::min({topRadius, bar.height(), bar.width() / 2});
    const QSizeF corner(2 * radius, 2 * radius);
    // On whole pixels, or a pale line would run between the two.
    const double pixel = 1 / painter.deviceTransform().m22();
    const double junction = bar.bottom() - std::floor((bar.height() - radius) / pixel) * pixel;
    QPainterPath top(QPointF(bar.left(), junction));
    top.arcTo({bar.topLeft(), corner}, 180, -90);
    top.arcTo({QPointF(bar.right() - 2 * radius, bar.top()), corner}, 90, -90);
    top.lineTo(bar.right(), junction);
    top.closeSubpath();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillPath(top, colour);
    painter.fillRect(QRectF(QPointF(bar.left(), junction), bar.bottomRight()), colour);
}

} // namespace

std::string paddedLabel(std::string_view text) {
    constexpr std::size_t width = 8;
    const std::size_t count = characterCount(text);
    return std::string(count < width ? width - count : 0, ' ').append(text);
}

void VerticalBarWithText::appear() {
    label = hovered ? timeOfDayString(timeStamp) : paddedLabel(textValue);
}

void VerticalBarWithText::hover(bool inside) {
    hovered = inside;
    appear();
}

QFont VerticalBarWithText::labelFont() {
    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    font.setPixelSize(11); // no bar is wider for those who like large texts
    font.setWeight(QFont::DemiBold);
    return font;
}

void VerticalBarWithText::paint(QPainter& painter, QPointF bottomLeft, const QFont& font,
                                Appearance appearance) const {
    // Only the sides and the base: the top's rounding hides what is between two pixels.
    const double height = std::max(barHeight, 1 / painter.deviceTransform().m11());
    const QRectF bar(bottomLeft - QPointF(0, height), QSizeF(barWidth, height));
    drawBar(painter, onDevicePixels(painter, bar), topRadius, barColour(barColor, appearance));

    const QFontMetricsF metrics(font, painter.device());
    const QString text = QString::fromStdString(label);
    const double textWidth = metrics.horizontalAdvance(text);
    painter.save();
    painter.translate(bottomLeft + QPointF(barWidth / 2, -labelElevation));
    painter.rotate(-90);
    // The beginning of a long text, a time with "PM" say, would be below the base.
    const double shrinking = std::min(1.0, 2 * labelElevation / textWidth);
    painter.scale(shrinking, shrinking);
    const QSizeF size(textWidth + 2 * 3, metrics.height());
    const QRectF frame =
        onDevicePixels(painter, {QPointF(-size.width() / 2, -size.height() / 2), size});
    painter.setPen(Qt::NoPen);
    painter.setBrush(withOpacity(toQColor(colours::window, appearance),
                                 hovered || hasHighContrast(appearance) ? 1.0 : 0.5));
    painter.drawRoundedRect(frame, 2, 2);
    painter.setFont(font);
    painter.setPen(toQColor(colours::primary, appearance));
    drawTextLine(painter, frame, Qt::AlignHCenter, text, textWidth);
    painter.restore();
}

} // namespace tidewell
