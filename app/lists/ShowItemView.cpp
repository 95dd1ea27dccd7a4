#include "app/lists/ShowItemView.h"

#include "app/lists/IconPictures.h"
#include "app/lists/UsageText.h"
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
constexpr double highestBadge = 20; // leaves a gap to the next one, however high the font

/// The same place in a row that is read from the right.
QRectF mirrored(const QRectF& place, const QRectF& row) {
    return {row.left() + row.right() - place.right(), place.top(), place.width(), place.height()};
}

/// A text on a rounded ground at the right end of what is left of a row.
struct Badge {
    QString text;
    QColor colour;
    QColor ground;
};

/// Paints a badge and returns where it begins.
double drawBadge(QPainter& painter, const QRectF& row, double right, bool isRightToLeft,
                 const Badge& badge) {
    const QFontMetricsF metrics(painter.font(), painter.device());
    const double width = metrics.horizontalAdvance(badge.text);
    const QSizeF size(width + 2 * valuePadding,
                      std::min(metrics.height() + 2 * valuePadding, highestBadge));
    const QRectF place(QPointF(right - size.width(), row.center().y() - size.height() / 2), size);
    const QRectF ground = onDevicePixels(painter, isRightToLeft ? mirrored(place, row) : place);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(badge.ground);
    painter.drawRoundedRect(ground, valueRadius, valueRadius);
    painter.setPen(badge.colour);
    drawTextLine(painter, ground, Qt::AlignHCenter, badge.text, width);
    return place.left();
}

} // namespace

RowFonts::RowFonts(const QFont& system)
    : label(system)
    , value(QFontDatabase::systemFont(QFontDatabase::FixedFont))
    , remark(system) {
    label.setPixelSize(textSize(13));
    remark.setPixelSize(textSize(11));
    value.setPixelSize(textSize(12));
    value.setWeight(QFont::Medium);
}

QString ShowItemView::valueText() const {
    return QString::fromStdString(sizeText(displayContainer.showItem.value));
}

QString ShowItemView::remark() const {
    const auto& usage = displayContainer.usage;
    return usage && usage->swapped > swapMark.above ? UsageText::inSwap(usage->swapped) : QString();
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

    painter.setFont(fonts.value);
    double right = drawBadge(painter, frame, frame.right(), isRightToLeft,
                             {.text = valueText(),
                              .colour = toQColor(colours::primary, appearance),
                              .ground = withOpacity(toQColor(colours::accent, appearance), 0.1)});
    if (const QString text = remark(); !text.isEmpty()) {
        const Colour colour = swapMark.colour;
        painter.setFont(fonts.remark);
        right = drawBadge(painter, frame, right - spacing, isRightToLeft,
                          {.text = u' ' + text + u' ',
                           .colour = textColour(colour, appearance),
                           .ground = withOpacity(toQColor(colour, appearance),
                                                 hasHighContrast(appearance) ? 0 : 0.15)});
    }

    const auto& [id, label, bytes, color] = displayContainer.showItem;
    const QFontMetricsF labelMetrics(fonts.label, painter.device());
    const double labelWidth = std::max(0.0, right - spacing - labelLeft);
    QString text = QString::fromStdString(label);
    double textWidth = labelMetrics.horizontalAdvance(text);
    if (textWidth > labelWidth) {
        text.prepend(QChar(0x2068)); // runs as it is written, and so ends where it is cut
        text = labelMetrics.elidedText(text, Qt::ElideRight, labelWidth);
        textWidth = labelMetrics.horizontalAdvance(text);
    }
    painter.setPen(textColour(color, appearance));
    painter.setFont(fonts.label);
    // Where the row begins also for labels of the other direction.
    drawTextLine(painter, placed({labelLeft, frame.top(), labelWidth, frame.height()}),
                 isRightToLeft ? Qt::AlignRight : Qt::AlignLeft, text, textWidth);
}

} // namespace tidewell
