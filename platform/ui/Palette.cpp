#include "platform/ui/Palette.h"

namespace tidewell {

QColor hairline(Appearance appearance) {
    const int level = appearance == Appearance::dark ? 255 : 0;
    return {level, level, level, 20}; // 8 %
}

QPalette paletteFor(Appearance appearance) {
    const QColor text = toQColor(colours::primary, appearance);
    const QColor secondary = toQColor(colours::secondaryText, appearance);
    const QColor box = toQColor(colours::box, appearance);

    // Bevels and frames are derived from the button colour.
    QPalette palette(box, toQColor(colours::window, appearance));
    palette.setColor(QPalette::WindowText, text);
    palette.setColor(QPalette::Text, text);
    palette.setColor(QPalette::ButtonText, text);
    palette.setColor(QPalette::ToolTipText, text);
    palette.setColor(QPalette::ToolTipBase, box);
    palette.setColor(QPalette::Base, box);
    palette.setColor(QPalette::PlaceholderText, secondary);
    palette.setColor(QPalette::Highlight, toQColor(colours::accent, appearance));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        palette.setColor(QPalette::Disabled, role, secondary);
    }
    return palette;
}

} // namespace tidewell
