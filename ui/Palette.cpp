#include "ui/Palette.h"

#include <algorithm>
#include <array>
#include <utility>

namespace tidewell {

namespace {

template <typename Variants>
Colour variantOf(Colour colour, const Variants& variants) {
    const auto* const found =
        std::ranges::find(variants, colour, [](const auto& variant) { return variant.first; });
    return found == variants.end() ? colour : found->second;
}

} // namespace

QColor withOpacity(QColor colour, double opacity) {
    colour.setAlphaF(static_cast<float>(opacity));
    return colour;
}

QColor onGround(const QColor& colour, const QColor& ground) {
    const auto mixed = [part = colour.alphaF()](float above, float below) {
        return part * above + (1 - part) * below;
    };
    return QColor::fromRgbF(mixed(colour.redF(), ground.redF()),
                            mixed(colour.greenF(), ground.greenF()),
                            mixed(colour.blueF(), ground.blueF()));
}

Colour textVariant(Colour colour) {
    static constexpr std::array variants{
        std::pair{colours::systemRed, Colour{0xc4271d, 0xff6961}},
        std::pair{colours::systemOrange, Colour{0xa34d00, 0xff9f0a}},
        std::pair{colours::systemGreen, Colour{0x1e7d34, 0x30d158}},
        std::pair{colours::lightGray, Colour{0x66666b, 0xaaaaaa}},
        std::pair{colours::systemBlue, Colour{0x0062cc, 0x4aa3ff}},
    };
    return variantOf(colour, variants);
}

Colour barVariant(Colour colour) {
    static constexpr std::array variants{
        std::pair{colours::systemOrange, Colour{0xdb7a00, 0xff9f0a}},
        std::pair{colours::systemGreen, Colour{0x28a745, 0x30d158}},
        std::pair{colours::lightGray, Colour{0x919195, 0xaaaaaa}},
    };
    return variantOf(colour, variants);
}

Appearance appearanceOf(const QPalette& palette) {
    const bool isDark = palette.color(QPalette::WindowText).lightnessF() >
                        palette.color(QPalette::Window).lightnessF();
    return isDark ? Appearance::dark : Appearance::light;
}

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
    palette.setColor(QPalette::Highlight, QColor::fromRgb(0x0062cc)); // white on it is legible
    palette.setColor(QPalette::HighlightedText, Qt::white);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        palette.setColor(QPalette::Disabled, role, secondary);
    }
    return palette;
}

} // namespace tidewell
