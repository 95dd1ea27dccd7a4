#pragma once

#include <QImage>
#include <QPainter>

#include <cmath>

namespace tidewell {

/// `rect` with each edge moved to the nearest edge of a pixel of what is painted on, so that it is
/// sharp at every scale. For painters that are scaled, moved and turned by right angles only.
inline QRectF onDevicePixels(const QPainter& painter, const QRectF& rect) {
    const QTransform transform = painter.deviceTransform();
    const QRectF device = transform.mapRect(rect);
    const QPointF topLeft(std::round(device.left()), std::round(device.top()));
    const QPointF bottomRight(std::round(device.right()), std::round(device.bottom()));
    return transform.inverted().mapRect(QRectF(topLeft, bottomRight));
}

/// Draws `image` with its corner on the pixel nearest to `topLeft`: widgets need not lie on whole
/// pixels where the scale factor is a fraction, and a resampled image is blurred.
inline void drawOnDevicePixels(QPainter& painter, QPointF topLeft, const QImage& image) {
    const QTransform transform = painter.deviceTransform();
    const QPointF corner = transform.map(topLeft).toPoint();
    painter.drawImage(transform.inverted().map(corner), image);
}

} // namespace tidewell
