#include "platform/linux/SoftCorners.h"

#include "platform/linux/X11.h"
#include "platform/ui/Palette.h"

#include <QBitmap>
#include <QPainter>

namespace tidewell {

SoftCorners::SoftCorners(QWidget& window, double radius)
    : window_(window)
    , radius_(radius)
    , isComposited_(x11::isComposited()) {
    window.setAttribute(Qt::WA_TranslucentBackground, isComposited_);
}

void SoftCorners::resized() {
    if (!isComposited_) {
        QBitmap mask(window_.size());
        mask.clear();
        QPainter painter(&mask);
        painter.setBrush(Qt::color1);
        painter.setPen(Qt::NoPen);
        painter.drawRoundedRect(window_.rect(), radius_, radius_);
        painter.end();
        window_.setMask(mask);
    }
}

void SoftCorners::paint(QPainter& painter) const {
    const QRectF whole = window_.rect();
    const double line = 1 / window_.devicePixelRatioF();
    const QBrush ground = window_.palette().window();
    const QColor edge = hairline(appearanceOf(window_.palette()));
    // Only the corners are drawn as curves: the rest is faster filled, above all because the
    // toolkit takes more threads for large curved areas, and keeps them.
    painter.save();
    painter.fillRect(isComposited_ ? whole.adjusted(0, radius_, 0, -radius_) : whole, ground);
    for (const double x : {0.0, whole.width() - line}) {
        painter.fillRect(QRectF(x, radius_, line, whole.height() - 2 * radius_), edge);
    }
    painter.setRenderHint(QPainter::Antialiasing);
    for (const double y : {0.0, whole.height() - radius_}) {
        painter.setClipRect(QRectF(0, y, whole.width(), radius_));
        // A shape no higher than its two pairs of corners, of which one is in the clip.
        const QRectF corners(0, y == 0 ? 0 : whole.height() - 2 * radius_, whole.width(),
                             2 * radius_);
        if (isComposited_) {
            painter.setPen(Qt::NoPen);
            painter.setBrush(ground);
            painter.drawRoundedRect(corners, radius_, radius_);
        }
        // The line's middle lies half a pixel inside the edge.
        painter.setPen(QPen(edge, line));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(corners.adjusted(line / 2, line / 2, -line / 2, -line / 2),
                                radius_ - line / 2, radius_ - line / 2);
    }
    painter.restore();
}

} // namespace tidewell
