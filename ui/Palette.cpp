#include "ui/Palette.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace tidewell {

namespace {

/// A named colour, and what text, bars and all of it become where the named colour is too pale.
struct Shades {
    Colour named;
    Colour text;
    Colour bar;
    Colour highContrast;
};

Shades shadesOf(Colour colour) {
    using namespace colours;
    static constexpr Colour blackOnWhite{0x000000, 0xffffff};
    static constexpr Colour whiteBelowBlack{0xffffff, 0x000000};
    static constexpr std::array known{
        Shades{primary, primary, primary, blackOnWhite},
        Shades{secondaryText, secondaryText, secondaryText, blackOnWhite},
        Shades{window, window, window, whiteBelowBlack},
        Shades{box, box, box, whiteBelowBlack},
        Shades{systemRed, {0xc4271d, 0xff6961}, systemRed, {0xb00010, 0xff7b70}},
        Shades{systemOrange, {0xa34d00, 0xff9f0a}, {0xdb7a00, 0xff9f0a}, {0x8a3f00, 0xffb340}},
        Shades{systemGreen, {0x1e7d34, 0x30d158}, {0x28a745, 0x30d158}, {0x0b5c20, 0x4ade6f}},
        Shades{lightGray, {0x66666b, 0xaaaaaa}, {0x919195, 0xaaaaaa}, {0x555555, 0xc0c0c0}},
        Shades{systemBlue, {0x0062cc, 0x4aa3ff}, systemBlue, {0x0047a3, 0x7ab8ff}},
        Shades{systemTeal, systemTeal, systemTeal, {0x005b6b, 0x5fd8ec}},
        Shades{systemCyan, systemCyan, systemCyan, {0x00587d, 0x85dcff}},
    };
    const auto* const found = std::ranges::find(known, colour, &Shades::named);
    return found == known.end() ? Shades{colour, colour, colour, colour} : *found;
}

QColor shade(Colour colour, Colour Shades::* usual, Appearance appearance) {
    const Shades shades = shadesOf(colour);
    return QColor::fromRgb(
        (hasHighContrast(appearance) ? shades.highContrast : shades.*usual).in(appearance));
}

} // namespace

QColor toQColor(Colour colour, Appearance appearance) {
    return shade(colour, &Shades::named, appearance);
}

QColor textColour(Colour colour, Appearance appearance) {
    return shade(colour, &Shades::text, appearance);
}

QColor barColour(Colour colour, Appearance appearance) {
    return shade(colour, &Shades::bar, appearance);
}

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

Appearance appearanceOf(const QPalette& palette) {
    // Also of a palette whose widget is disabled.
    const float text = palette.color(QPalette::Active, QPalette::WindowText).lightnessF();
    const float window = palette.color(QPalette::Active, QPalette::Window).lightnessF();
    if (std::abs(text - window) == 1) {
        return text > window ? Appearance::highContrastDark : Appearance::highContrastLight;
    }
    return text > window ? Appearance::dark : Appearance::light;
}

QColor hairline(Appearance appearance) {
    const int level = isDark(appearance) ? 255 : 0;
    return {level, level, level, hasHighContrast(appearance) ? 255 : 20}; // opaque, or 8 %
}

QPalette paletteFor(Appearance appearance) {
    const QColor text = toQColor(colours::primary, appearance);
    const QColor secondary = toQColor(colours::secondaryText, appearance);
    const QColor box = toQColor(colours::box, appearance);
    // Paler than secondary text; where contrast is high, that is as strong as the primary.
    const QColor disabled = hasHighContrast(appearance) ? toQColor(colours::lightGray, appearance)
                                                        : onGround(withOpacity(text, 0.4), box);

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
        palette.setColor(QPalette::Disabled, role, disabled);
    }
    return palette;
}

} // namespace tidewell
