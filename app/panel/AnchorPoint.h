#pragma once

#include "base/ports/UserDefaults.h"

#include <QPointF>
#include <QRect>

#include <optional>

namespace tidewell {

// The panel's lower left corner, as it is stored for the window that opens beside it. Its y grows
// upward from the lower left corner of the primary screen, while Qt's y grows downward from the top
// of the virtual desktop; only these functions know of both. Pure.

/// The stored form, a JSON array such as [812,640.5]; empty for a point that is not finite.
std::optional<Data> encodePoint(QPointF point);
/// Reads the stored form; empty for anything else.
std::optional<QPointF> decodePoint(const Data& data);

/// From Qt's coordinates to stored ones. `mainScreen` is the geometry of the primary screen.
QPointF upwardFromDesktop(QPointF point, const QRect& mainScreen);
/// From stored coordinates to Qt's.
QPointF desktopFromUpward(QPointF point, const QRect& mainScreen);

} // namespace tidewell
