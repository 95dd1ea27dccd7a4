#pragma once

#include "base/values/Hash.h"

#include <cstdint>

namespace tidewell {

/// The looks of the interface: two usual ones, and two for those who need contrast.
enum class Appearance { light, dark, highContrastLight, highContrastDark };

constexpr bool isDark(Appearance appearance) {
    return appearance == Appearance::dark || appearance == Appearance::highContrastDark;
}

constexpr bool hasHighContrast(Appearance appearance) {
    return appearance >= Appearance::highContrastLight;
}

constexpr Appearance withHighContrast(Appearance appearance) {
    return isDark(appearance) ? Appearance::highContrastDark : Appearance::highContrastLight;
}

/// A colour of the interface, with the values that the usual appearances give it: 0xRRGGBB, opaque.
struct Colour {
    std::uint32_t light;
    std::uint32_t dark;

    constexpr std::uint32_t in(Appearance appearance) const {
        return isDark(appearance) ? dark : light;
    }
    auto fields() const { return std::tie(light, dark); }
    bool operator==(const Colour&) const = default;
};

/// The named colours that models use. Text on the window takes darker or lighter variants of the
/// same colours, which are the interface's own concern.
namespace colours {
inline constexpr Colour primary{0x1d1d1f, 0xf5f5f7}; ///< text; "primary foreground" of the figures
inline constexpr Colour systemRed{0xff3b30, 0xff453a};
inline constexpr Colour systemOrange{0xff9500, 0xff9f0a};
inline constexpr Colour systemGreen{0x34c759, 0x30d158};
inline constexpr Colour lightGray{0xaaaaaa, 0xaaaaaa};
} // namespace colours

} // namespace tidewell
