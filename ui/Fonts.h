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

/// What a size in device-independent pixels becomes where the application's font is large: more, up
/// to a quarter, for which the windows of fixed sizes have room.
int textSize(int usual);

/// `base` in the size and weight of a style; titles have one size for everybody. Without `base`,
/// the family is the one of the widget that the font is given to.
QFont textFont(TextStyle style, QFont base = {});

} // namespace tidewell
