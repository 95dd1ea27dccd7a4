#pragma once

#include <QFont>

namespace tidewell {

/// The sizes of text in the windows.
enum class TextStyle {
    largeTitle, ///< 26: the name in the about window
    title,      ///< 20 points, medium: the program's name
    headline,   ///< 12, semibold: titles of boxes
    body,       ///< 12
    callout,    ///< 11: rows of figures, values of gauges
    footnote,   ///< 10
};

/// `base` in the size and weight of a style. Sizes are device-independent pixels, whatever size the
/// desktop's font has, so that windows of fixed sizes keep their proportions. Without `base`, the
/// family is the one of the widget that the font is given to.
QFont textFont(TextStyle style, QFont base = {});

} // namespace tidewell
