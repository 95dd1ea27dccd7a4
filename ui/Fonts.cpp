#include "ui/Fonts.h"

namespace tidewell {

QFont textFont(TextStyle style, QFont base) {
    switch (style) {
    case TextStyle::largeTitle:
        base.setPixelSize(26);
        break;
    case TextStyle::title:
        base.setPixelSize(20);
        base.setWeight(QFont::Medium);
        break;
    case TextStyle::headline:
        base.setPixelSize(12);
        base.setWeight(QFont::DemiBold);
        break;
    case TextStyle::body:
        base.setPixelSize(12);
        break;
    case TextStyle::callout:
        base.setPixelSize(11);
        break;
    case TextStyle::footnote:
        base.setPixelSize(10);
        break;
    }
    return base;
}

} // namespace tidewell
