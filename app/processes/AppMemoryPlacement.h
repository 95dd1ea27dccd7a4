#pragma once

#include <QList>
#include <QPoint>
#include <QRect>

namespace tidewell {

/// The lower left corner of the process window beside an anchor point, both upward from the lower
/// left corner of the main screen: its right edge is 24 points left of the anchor, its bottom 129
/// above.
QPointF appMemoryOrigin(QPointF anchor, double windowWidth);

/// The process window's upper left corner in Qt's coordinates. Where all of it would lie outside
/// every screen, it goes to the nearest place where it is whole, on the other side of the panel
/// unless less of the panel is covered on this one. `anchor` is the panel's lower left corner,
/// upward as above; `screens` are places on the desktop, the main one first.
QPoint appMemoryPosition(QPointF anchor, const QSize& window, double panelWidth,
                         const QList<QRect>& screens);

} // namespace tidewell
