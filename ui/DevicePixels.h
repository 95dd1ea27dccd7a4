#pragma once

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

} // namespace tidewell
