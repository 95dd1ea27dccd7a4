#pragma once

#include <QRectF>

#include <algorithm>

namespace tidewell {

/// `rectangle`, moved the shortest way into `area`. One that is larger than the area begins where
/// the area does. Pure.
inline QRectF movedInto(const QRectF& area, QRectF rectangle) {
    rectangle.moveTo(
        std::max(area.left(), std::min(rectangle.left(), area.right() - rectangle.width())),
        std::max(area.top(), std::min(rectangle.top(), area.bottom() - rectangle.height())));
    return rectangle;
}

} // namespace tidewell
