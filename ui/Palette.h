#pragma once

#include "base/values/Colour.h"

#include <QColor>
#include <QPalette>

namespace tidewell {

/// The interface's own colours, beside the named colours of the models. Text colours stand at least
/// 4.5 : 1 against the window and box colours of their appearance, 7 : 1 where contrast is high.
namespace colours {
inline constexpr Colour window{0xf4f4f6, 0x1e1e20};
inline constexpr Colour box{0xffffff, 0x2a2a2d};
inline constexpr Colour secondaryText{0x66666b, 0xa1a1a6};
inline constexpr Colour systemTeal{0x30b0c7, 0x40c8e0};
inline constexpr Colour systemBlue{0x007aff, 0x0a84ff};
inline constexpr Colour systemCyan{0x32ade6, 0x64d2ff};
inline constexpr Colour accent = systemBlue;
} // namespace colours

/// A named colour as it is shown. Where contrast is high, texts and grounds are black and white,
/// and other named colours stronger. Pure.
QColor toQColor(Colour colour, Appearance appearance);

/// The same for text of that colour: at least 4.5 : 1 against the window and box colours. Pure.
QColor textColour(Colour colour, Appearance appearance);

/// The same for bars: at least 3 : 1 against the box colour. Pure.
QColor barColour(Colour colour, Appearance appearance);

/// `colour` with its opacity set, 0 to 1.
QColor withOpacity(QColor colour, double opacity);

/// What a translucent colour looks like on an opaque ground. High shapes in translucent colours
/// make Qt's raster engine take pool threads.
QColor onGround(const QColor& colour, const QColor& ground);

/// Dark where the palette's text is lighter than its windows, of high contrast where these are
/// black and white. Widgets that paint in colours that no QPalette holds derive the appearance from
/// their own palette, and so follow changes of it. Pure.
Appearance appearanceOf(const QPalette& palette);

/// The colour of the line around windows and boxes: the text's, nearly transparent unless contrast
/// is high.
QColor hairline(Appearance appearance);

/// The QPalette of an appearance. Pure.
QPalette paletteFor(Appearance appearance);

} // namespace tidewell
