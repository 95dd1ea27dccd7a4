#pragma once

#include "base/ports/UserDefaults.h"

#include <QPointF>
#include <QRect>

#include <optional>

namespace tidewell {

// The panel's place on the screen, as it is stored for the window that opens beside it: a point of
// which y grows upward from the lower left corner of the main screen. The toolkit's points grow
// downward; only these functions know of both. Pure.

/// The stored form, a JSON array such as [812,640.5]; empty for a point that is not finite.
std::optional<Data> encodePoint(QPointF point);
/// Reads the stored form; empty for anything else.
std::optional<QPointF> decodePoint(const Data& data);

/// A point of the toolkit's desktop as one that is stored. `mainScreen` is the main screen's place
/// on the desktop.
QPointF upwardFromDesktop(QPointF point, const QRect& mainScreen);
/// The other way round.
QPointF desktopFromUpward(QPointF point, const QRect& mainScreen);

} // namespace tidewell
