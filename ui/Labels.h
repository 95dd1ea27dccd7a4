#pragma once

#include "ui/Fonts.h"

class QLabel;
class QString;

namespace tidewell {

/// A label that shows `text` as it is, in the size of a style, in the middle of its place. Its
/// owner is whoever puts it into a widget or layout. Main thread.
QLabel* makeLabel(const QString& text, TextStyle style);

/// The same for text that is less than the rest. The palette's own role for it follows light and
/// dark.
QLabel* makeSecondaryLabel(const QString& text, TextStyle style);

} // namespace tidewell
