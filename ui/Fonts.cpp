#include "ui/Fonts.h"

#include <array>

namespace tidewell {

QFont textFont(TextStyle style, QFont base) {
    constexpr std::array sizes{26, 20, 12, 12, 11, 10}; // in the order of the styles
    base.setPixelSize(sizes.at(static_cast<std::size_t>(style)));
    if (style == TextStyle::title) {
        base.setWeight(QFont::Medium);
    } else if (style == TextStyle::headline) {
        base.setWeight(QFont::DemiBold);
    }
    return base;
}

} // namespace tidewell
