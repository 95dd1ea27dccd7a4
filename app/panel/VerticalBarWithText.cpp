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
#include <memory>

namespace tidewell {

namespace {

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

/// Rounded at the top, square at the bottom.
QPainterPath barShape(const QRectF& bar, double topRadius) {
    const double radius = std::min({topRadius, bar.height(), bar.width() / 2});
    const QSizeF corner(2 * radius, 2 * radius);
    QPainterPath path(bar.bottomLeft());
    path.arcTo({bar.topLeft(), corner}, 180, -90);
    path.arcTo({QPointF(bar.right() - 2 * radius, bar.top()), corner}, 90, -90);
    path.lineTo(bar.bottomRight());
    path.closeSubpath();
    return path;
}

} // namespace

std::string paddedLabel(std::string_view text) {
    constexpr std::size_t width = 8;
    const std::size_t count = characterCount(text);
    return std::string(count < width ? width - count : 0, ' ').append(text);
}

double labelElevation(double textWidth) {
    return std::max(28.0, textWidth / 2);
}

void VerticalBarWithText::appear() {
    label = hovered ? timeOfDayString(timeStamp) : paddedLabel(textValue);
}

void VerticalBarWithText::hover(bool inside) {
    hovered = inside;
    appear();
}

QFont VerticalBarWithText::labelFont() {
    QFont font = textFont(TextStyle::callout, QFontDatabase::systemFont(QFontDatabase::FixedFont));
    font.setWeight(QFont::DemiBold);
    return font;
}

void VerticalBarWithText::paint(QPainter& painter, QPointF bottomLeft, const QFont& font,
                                Appearance appearance) const {
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(toQColor(barColor, appearance));
    // Only the sides and the base: the top's rounding hides what is between two pixels.
    const QRectF bar(bottomLeft - QPointF(0, barHeight), QSizeF(barWidth, barHeight));
    painter.drawPath(barShape(onDevicePixels(painter, bar), topRadius));

    const QFontMetricsF metrics(font, painter.device());
    const QString text = QString::fromStdString(label);
    const double textWidth = metrics.horizontalAdvance(text);
    const QSizeF size(textWidth + 2 * 3, metrics.height());
    painter.save();
    painter.translate(bottomLeft + QPointF(barWidth / 2, -labelElevation(textWidth)));
    painter.rotate(-90);
    const QRectF frame =
        onDevicePixels(painter, {QPointF(-size.width() / 2, -size.height() / 2), size});
    painter.setBrush(withOpacity(toQColor(colours::window, appearance), hovered ? 1.0 : 0.5));
    painter.drawRoundedRect(frame, 2, 2);
    painter.setFont(font);
    painter.setPen(toQColor(colours::primary, appearance));
    drawTextLine(painter, frame, Qt::AlignHCenter, text, textWidth);
    painter.restore();
}

} // namespace tidewell
