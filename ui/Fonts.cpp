#include "ui/Fonts.h"

#include <QGuiApplication>

#include <algorithm>
#include <array>
#include <cmath>

namespace tidewell {

int textSize(int usual) {
    constexpr double largestUsual = 11; // points, on any desktop
    constexpr double most = 1.25;
    const double points = QGuiApplication::font().pointSizeF(); // -1 where it is in pixels
    return static_cast<int>(std::lround(usual * std::clamp(points / largestUsual, 1.0, most)));
}

QFont textFont(TextStyle style, QFont base) {
    constexpr std::array sizes{26, 20, 12, 12, 11, 10}; // in the order of the styles
    const int size = sizes.at(static_cast<std::size_t>(style));
    const bool isTitle = style == TextStyle::title || style == TextStyle::largeTitle;
    base.setPixelSize(isTitle ? size : textSize(size));
    if (style == TextStyle::title) {
        base.setWeight(QFont::Medium);
    } else if (style == TextStyle::headline) {
        base.setWeight(QFont::DemiBold);
    }
    return base;
}

} // namespace tidewell
