#include "app/lists/ShowItemView.h"

#include "app/lists/IconPictures.h"
#include "base/text/ByteText.h"
#include "ui/DevicePixels.h"
#include "ui/Drawing.h"
#include "ui/Fonts.h"
#include "ui/Palette.h"

#include <QFontDatabase>
#include <QFontMetricsF>
#include <QPainter>
#include <QWidget>

#include <algorithm>

namespace tidewell {

namespace {

constexpr double iconSize = 16;
constexpr double spacing = 8;
constexpr double valuePadding = 1;
constexpr double valueRadius = 4;

/// Processes may be called anything.
bool breaksLine(QChar character) {
    return character.category() == QChar::Other_Control ||
           character.category() == QChar::Separator_Line ||
           character.category() == QChar::Separator_Paragraph;
}

/// The same place in a row that is read from the right.
QRectF mirrored(const QRectF& place, const QRectF& row) {
    return {row.left() + row.right() - place.right(), place.top(), place.width(), place.height()};
}

} // namespace

RowFonts::RowFonts(const QFont& system)
    : label(system)
    , value(QFontDatabase::systemFont(QFontDatabase::FixedFont)) {
    label.setPixelSize(13);
    value.setPixelSize(12);
    value.setWeight(QFont::Medium);
}

QString ShowItemView::valueText() const {
    return QString::fromStdString(sizeText(displayContainer.showItem.value));
}

void ShowItemView::paint(QPainter& painter, const QRectF& frame, const QWidget& widget,
                         const RowFonts& fonts, IconPictures& icons) const {
    const Appearance appearance = appearanceOf(widget.palette());
    const bool isRightToLeft = widget.isRightToLeft();
    const auto placed = [&](const QRectF& place) {
        return isRightToLeft ? mirrored(place, frame) : place;
    };
    const double middle = frame.center().y();

    double labelLeft = frame.left();
    if (displayContainer.image) {
        icons.draw(painter, placed({labelLeft, middle - iconSize / 2, iconSize, iconSize}),
                   *displayContainer.image);
        labelLeft += iconSize + spacing;
    }

    const QString value = valueText();
    const QFontMetricsF valueMetrics(fonts.value, painter.device());
    const double valueWidth = valueMetrics.horizontalAdvance(value);
    const QSizeF valueSize(valueWidth + 2 * valuePadding, valueMetrics.height() + 2 * valuePadding);
    const QRectF valueFrame(
        QPointF(frame.right() - valueSize.width(), middle - valueSize.height() / 2), valueSize);
    const QRectF ground = onDevicePixels(painter, placed(valueFrame));
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(withOpacity(toQColor(colours::accent, appearance), 0.1));
    painter.drawRoundedRect(ground, valueRadius, valueRadius);
    painter.setPen(toQColor(colours::primary, appearance));
    painter.setFont(fonts.value);
    drawTextLine(painter, ground, Qt::AlignHCenter, value, valueWidth);

    const auto& [id, label, bytes, color] = displayContainer.showItem;
    const QFontMetricsF labelMetrics(fonts.label, painter.device());
    const double labelWidth = std::max(0.0, valueFrame.left() - spacing - labelLeft);
    QString text = QString::fromStdString(label);
    std::ranges::replace_if(text, breaksLine, QChar::Space);
    double textWidth = labelMetrics.horizontalAdvance(text);
    if (textWidth > labelWidth) {
        text.prepend(QChar(0x2068)); // runs as it is written, and so ends where it is cut
        text = labelMetrics.elidedText(text, Qt::ElideRight, labelWidth);
        textWidth = labelMetrics.horizontalAdvance(text);
    }
    painter.setPen(toQColor(textVariant(color), appearance));
    painter.setFont(fonts.label);
    // Where the row begins also for labels of the other direction.
    drawTextLine(painter, placed({labelLeft, frame.top(), labelWidth, frame.height()}),
                 isRightToLeft ? Qt::AlignRight : Qt::AlignLeft, text, textWidth);
}

} // namespace tidewell
