#pragma once

#include "ui/Fonts.h"

class QLabel;
class QString;

namespace tidewell {

/// A label of plain text, centred. The caller owns it until a layout or parent does. Main thread.
QLabel* makeLabel(const QString& text, TextStyle style);

/// The same in the palette's PlaceholderText, the colour of secondary text.
QLabel* makeSecondaryLabel(const QString& text, TextStyle style);

} // namespace tidewell
