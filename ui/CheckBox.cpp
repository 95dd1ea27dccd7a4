#include "ui/CheckBox.h"

#include "ui/Drawing.h"
#include "ui/Palette.h"

#include <QPainter>
#include <QStyle>

#include <algorithm>

namespace tidewell {

namespace {

constexpr int side = 14; // of the square
constexpr int edge = 2;  // around it, for the ring
constexpr int gap = 6;   // between it and the text
constexpr int textStart = edge + side + gap;
constexpr double cornerRadius = 3.5;

} // namespace

QSize CheckBox::sizeHint() const {
    const QFontMetrics metrics(font());
    return {textStart + metrics.horizontalAdvance(text()) + 2,
            std::max(side + 2 * edge, metrics.height() + 2)};
}

void CheckBox::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QPalette::ColorGroup group = isEnabled() ? QPalette::Active : QPalette::Disabled;
    const QColor text = palette().color(group, QPalette::WindowText);
    const Appearance appearance = appearanceOf(palette());
    const bool isStrong = hasHighContrast(appearance);
    const QColor accent = toQColor(colours::accent, appearance);
    const auto placed = [this](const QRect& place) {
        return QStyle::visualRect(layoutDirection(), rect(), place);
    };

    const QRectF square(placed({edge, (height() - side) / 2, side, side}));
    painter.setOpacity(isEnabled() ? 1 : 0.5);
    if (isChecked()) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(accent);
        painter.drawRoundedRect(square, cornerRadius, cornerRadius);
        const QColor tick = isStrong ? toQColor(colours::box, appearance) : QColor(Qt::white);
        painter.setPen(QPen(tick, 1.8, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.drawPolyline(
            QPolygonF({{3.5, 7.5}, {6, 10}, {10.5, 4.5}}).translated(square.topLeft()));
    } else {
        painter.setPen(QPen(isStrong ? text : withOpacity(text, 0.5), 1));
        painter.setBrush(isDown() ? withOpacity(text, 0.16) : Qt::transparent);
        painter.drawRoundedRect(square.adjusted(0.5, 0.5, -0.5, -0.5), cornerRadius, cornerRadius);
    }
    painter.setOpacity(1);
    if (showsFocus(*this)) {
        drawFocusRing(painter, square.adjusted(-2, -2, 2, 2), cornerRadius + 1, appearance);
    }
    painter.setPen(text);
    painter.setLayoutDirection(Qt::LayoutDirectionAuto);
    painter.drawText(placed({textStart, 0, width() - textStart, height()}),
                     static_cast<int>(QStyle::visualAlignment(layoutDirection(), Qt::AlignLeft) |
                                      Qt::AlignVCenter),
                     QCheckBox::text());
}

} // namespace tidewell
