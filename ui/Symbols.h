#pragma once

#include <QImage>
#include <QPointF>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

class QColor;
class QPainter;

namespace tidewell {

/// Symbols: small pictures in one colour, known by name.
///
///   "circle.dotted"             a ring of dots
///   "circle.fill"               a disc
///   "exclamationmark.triangle"  the warning sign
///   "gear"                      settings
///   "hare", "tortoise"          fast and slow
///   "info.circle"               an i in a ring
///   "power"                     the sign on switches
///   "water.waves"               three waves

/// The symbol `name` in the colour 0xRRGGBB on a transparent ground, in a square of `size` points
/// at `devicePixelRatio`. Edges lie on whole pixels at every size; only alpha varies, never the
/// colour. Format ARGB32. Empty for an unknown name. Main thread.
std::optional<QImage> symbolImage(std::string_view name, std::uint32_t colour, int size,
                                  double devicePixelRatio);

/// A symbol with a cache: rendered again only for another colour or device pixel ratio. An unknown
/// name draws nothing. Main thread.
class SymbolPicture final {
public:
    /// In a square of `size` points.
    SymbolPicture(std::string_view name, int size);

    /// Draws it around `middle`, on whole pixels of the painter's device.
    void draw(QPainter& painter, const QColor& colour, QPointF middle);

private:
    std::string name_;
    int size_;
    QRgb colour_ = 0;
    std::optional<QImage> image_;
};

} // namespace tidewell
