#pragma once

#include <QList>
#include <QPoint>
#include <QRect>

namespace tidewell {

/// The lower left corner of the process window beside an anchor point, both upward from the lower
/// left corner of the primary screen: its right edge is 24 points left of the anchor, its bottom
/// 129 above.
QPointF appMemoryOrigin(QPointF anchor, double windowWidth);

/// Where the process window's upper left corner goes, in Qt's coordinates: to the origin above if
/// the window is wholly on a screen there. Else it stays on the panel's screen, left of the panel
/// if it fits there, right of it if it fits there, and as far left as the screen allows otherwise.
/// `anchor` is the panel's lower left corner, upward as above; `screens` has the geometries of the
/// screens, the primary one first.
QPoint appMemoryPosition(QPointF anchor, const QSize& window, double panelWidth,
                         const QList<QRect>& screens);

} // namespace tidewell
