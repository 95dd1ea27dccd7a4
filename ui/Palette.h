#pragma once

#include "base/values/Colour.h"

#include <QColor>
#include <QPalette>

namespace tidewell {

/// The interface's own colours, beside the named colours of the models. Text colours stand at least
/// 4.5 : 1 against the window and box colours of their appearance.
namespace colours {
inline constexpr Colour window{0xf4f4f6, 0x1e1e20};
inline constexpr Colour box{0xffffff, 0x2a2a2d};
inline constexpr Colour secondaryText{0x66666b, 0xa1a1a6};
inline constexpr Colour systemTeal{0x30b0c7, 0x40c8e0};
inline constexpr Colour systemBlue{0x007aff, 0x0a84ff};
inline constexpr Colour systemCyan{0x32ade6, 0x64d2ff};
inline constexpr Colour accent = systemBlue;
} // namespace colours

inline QColor toQColor(Colour colour, Appearance appearance) {
    return QColor::fromRgb(colour.in(appearance));
}

/// `colour` with its opacity set, 0 to 1.
QColor withOpacity(QColor colour, double opacity);

/// What a translucent colour looks like on an opaque ground. High shapes in translucent colours
/// make Qt's raster engine take pool threads.
QColor onGround(const QColor& colour, const QColor& ground);

/// The variant of a named colour that text takes: at least 4.5 : 1 against the window and box
/// colours. Other colours are their own variant. Pure.
Colour textVariant(Colour colour);

/// The variant of a named colour that bars take: at least 3 : 1 against the box colour. Other
/// colours are their own variant. Pure.
Colour barVariant(Colour colour);

/// Dark where the palette's text is lighter than its windows. Widgets that paint in colours that no
/// QPalette holds derive the appearance from their own palette, and so follow changes of it. Pure.
Appearance appearanceOf(const QPalette& palette);

/// The colour of the line around windows and boxes: the text's, nearly transparent.
QColor hairline(Appearance appearance);

/// The QPalette of an appearance. Pure.
QPalette paletteFor(Appearance appearance);

} // namespace tidewell
