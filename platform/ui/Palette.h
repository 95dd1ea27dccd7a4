#pragma once

#include "platform/foundation/Colour.h"

#include <QColor>
#include <QPalette>

namespace tidewell {

/// The interface's own colours, beside the named colours of the models. Text colours stand at least
/// 4.5 : 1 against the window and box colours of their appearance.
namespace colours {
inline constexpr Colour window{0xf4f4f6, 0x1e1e20};
inline constexpr Colour box{0xffffff, 0x2a2a2d};
inline constexpr Colour secondaryText{0x66666b, 0xa1a1a6};
inline constexpr Colour accent{0x007aff, 0x0a84ff};
} // namespace colours

inline QColor toQColor(Colour colour, Appearance appearance) {
    return QColor::fromRgb(colour.in(appearance));
}

/// The thin line around windows and boxes: barely there, in the direction of the text's contrast.
QColor hairline(Appearance appearance);

/// The toolkit's palette for an appearance. Pure.
QPalette paletteFor(Appearance appearance);

} // namespace tidewell
