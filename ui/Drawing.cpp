#include "ui/Drawing.h"

#include "ui/Palette.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QWidget>

namespace tidewell {

void drawSoftBox(QPainter& painter, const QRectF& box, double radius, const QBrush& ground,
                 const QColor& edge, double lineWidth) {
    painter.save();
    const QColor side = onGround(edge, ground.color());
    painter.fillRect(box.adjusted(0, radius, 0, -radius), ground);
    for (const double x : {box.left(), box.right() - lineWidth}) {
        painter.fillRect(QRectF(x, box.top() + radius, lineWidth, box.height() - 2 * radius), side);
    }
    painter.setRenderHint(QPainter::Antialiasing);
    // The middle of the line lies half its width inside the edge.
    const QPen line(edge, lineWidth, Qt::SolidLine, Qt::FlatCap);
    const double curve = radius - lineWidth / 2;
    constexpr int quarter = 90 * 16;
    for (const double y : {box.top() + radius, box.bottom() - radius}) {
        const bool isTop = y < box.center().y();
        painter.setClipRect(QRectF(box.left(), isTop ? y - radius : y, box.width(), radius));
        painter.setPen(Qt::NoPen);
        painter.setBrush(ground);
        // A shape no higher than its two pairs of corners, of which one is in the clip.
        painter.drawRoundedRect(QRectF(box.left(), y - radius, box.width(), 2 * radius), radius,
                                radius);
        painter.fillRect(QRectF(box.left() + radius, isTop ? box.top() : box.bottom() - lineWidth,
                                box.width() - 2 * radius, lineWidth),
                         edge);
        painter.setPen(line);
        for (const double x : {box.left() + radius, box.right() - radius}) {
            const bool isLeft = x < box.center().x();
            const int start = isTop ? (isLeft ? quarter : 0) : (isLeft ? 2 : 3) * quarter;
            painter.drawArc(QRectF(x - curve, y - curve, 2 * curve, 2 * curve), start, quarter);
        }
    }
    painter.restore();
}

void drawTextLine(QPainter& painter, const QRectF& area, Qt::Alignment side, const QString& text,
                  double textWidth) {
    const QFontMetricsF metrics(painter.font(), painter.device());
    const double left = side.testFlag(Qt::AlignHCenter) ? area.center().x() - textWidth / 2
                        : side.testFlag(Qt::AlignRight) ? area.right() - textWidth
                                                        : area.left();
    const double baseline = area.center().y() + (metrics.ascent() - metrics.descent()) / 2;
    painter.setLayoutDirection(Qt::LayoutDirectionAuto);
    painter.drawText(QPointF(left, baseline), text);
}

bool showsFocus(const QWidget& widget) {
    return widget.hasFocus() && widget.window()->testAttribute(Qt::WA_KeyboardFocusChange);
}

void drawFocusRing(QPainter& painter, const QRectF& outline, double radius, Appearance appearance) {
    constexpr double width = 2;
    constexpr double inset = width / 2;
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(toQColor(colours::accent, appearance), width));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(outline.adjusted(inset, inset, -inset, -inset), radius, radius);
}

} // namespace tidewell
