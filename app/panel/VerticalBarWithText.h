#pragma once

#include "base/values/Colour.h"

#include <QFont>
#include <QPainter>

#include <string>
#include <string_view>

namespace tidewell {

/// One bar of the swap chart: rounded at the top, with a label that reads from bottom to top over
/// its lower part. The label is the sample's value, and its time while the pointer is on the bar.
/// A value that its chart keeps and paints. Lengths in points. Main thread.
struct VerticalBarWithText {
    Colour barColor;
    std::string textValue; ///< of the sample, for example "1.2 GB"
    double barHeight;
    double barWidth;
    double timeStamp; ///< seconds since 1970-01-01 00:00:00 UTC
    double topRadius = 5;
    std::string label = textValue; ///< what is shown
    bool hovered = false;

    /// When the bar is first shown, and when it has been given another sample: puts the label that
    /// fits.
    void appear();
    /// The pointer came onto the bar or left it.
    void hover(bool inside);

    /// Paints the bar with its lower left corner at `bottomLeft`. The label may reach above it.
    void paint(QPainter& painter, QPointF bottomLeft, const QFont& font,
               Appearance appearance) const;
    /// What `paint` wants: 11 points, fixed pitch, semibold.
    static QFont labelFont();
};

/// The text after as many blanks as make it eight characters, as a reader counts them, so that
/// short values end where long ones do; as it is when it has eight or more. UTF-8.
std::string paddedLabel(std::string_view text);

} // namespace tidewell
