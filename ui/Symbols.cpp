#include "ui/Symbols.h"

#include "ui/DevicePixels.h"

#include <QPainter>

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace tidewell {

namespace {

// Each symbol is a signed distance function: how far outside its shape a point lies, negative
// inside, in pixels from the middle of the picture, y downwards. That keeps edges on whole pixels
// at 16 and at 64, which a scaled drawing cannot, and it costs nothing while nothing is drawn:
// QPainter starts pool threads for shapes of this size, and an SVG renderer stays in memory.

double length(QPointF vector) {
    return std::hypot(vector.x(), vector.y());
}

/// `fraction` of the picture, rounded to a length that lies on whole pixels when it is centred.
int centredLength(double fraction, int pixels) {
    const int odd = pixels % 2;
    return 2 * static_cast<int>(std::lround((fraction * pixels - odd) / 2)) + odd;
}

double outerRadius(int pixels) {
    return centredLength(0.75, pixels) / 2.0;
}

double fromDisc(QPointF point, int pixels) {
    return length(point) - outerRadius(pixels);
}

double fromCircle(QPointF point, int pixels, double stroke) {
    return std::abs(length(point) - outerRadius(pixels) + stroke / 2) - stroke / 2;
}

double fromDottedRing(QPointF point, int pixels) {
    // Twelve dots run into each other in small pictures.
    const bool isSmall = pixels < 28;
    const double step = 2 * std::numbers::pi / (isSmall ? 8 : 12);
    const double dotRadius = pixels / (isSmall ? 14.0 : 20.0);
    const double angle = step * std::round(std::atan2(point.y(), point.x()) / step);
    const double radius = outerRadius(pixels) - dotRadius;
    return length(point - radius * QPointF(std::cos(angle), std::sin(angle))) - dotRadius;
}

double fromSegment(QPointF point, QPointF start, QPointF end) {
    const QPointF along = end - start;
    const double part =
        QPointF::dotProduct(point - start, along) / QPointF::dotProduct(along, along);
    return length(point - start - std::clamp(part, 0.0, 1.0) * along);
}

/// From an upright triangle, centred sideways, with corners rounded to `radius`.
double fromTriangle(QPointF point, double top, double bottom, double halfWidth, double radius) {
    // The corners' centres form a smaller triangle: each side moved inwards by the radius.
    const double apex = top + radius * std::hypot(bottom - top, halfWidth) / halfWidth;
    const double base = bottom - radius;
    const QPointF peak(0, apex);
    const QPointF corner((base - apex) * halfWidth / (bottom - top), base);
    const QPointF mirrored(std::abs(point.x()), point.y()); // one half is the other
    const double distance =
        std::min(fromSegment(mirrored, peak, corner), fromSegment(mirrored, {0, base}, corner));
    const double side = (mirrored.x() - peak.x()) * (corner.y() - peak.y()) -
                        (mirrored.y() - peak.y()) * (corner.x() - peak.x());
    return (side < 0 && point.y() < base ? -distance : distance) - radius;
}

/// From a bar of the given width, centred sideways, with softened corners.
double fromBar(QPointF point, double top, double bottom, double width) {
    const double radius = width / 3;
    const QPointF beyond(std::abs(point.x()) - width / 2 + radius,
                         std::abs(point.y() - (top + bottom) / 2) - (bottom - top) / 2 + radius);
    return length({std::max(beyond.x(), 0.0), std::max(beyond.y(), 0.0)}) +
           std::min(std::max(beyond.x(), beyond.y()), 0.0) - radius;
}

double fromWarningSign(QPointF point, int pixels) {
    const double middle = pixels / 2.0;
    const double stroke = std::max(1.25, std::round(pixels / 14.0));
    const double top = std::round(pixels * 0.03) - middle; // of the sharp apex, far above the round
    const double bottom = std::round(pixels * 0.88) - middle;
    const double halfWidth = centredLength(0.97, pixels) / 2.0;
    const double corner = pixels / 10.0;
    const double innerTop = top + stroke * std::hypot(bottom - top, halfWidth) / halfWidth;
    const double innerBottom = bottom - std::floor(stroke); // the base stays on whole pixels
    const double innerHalfWidth = halfWidth * (innerBottom - innerTop) / (bottom - top);
    const double outline = std::max(fromTriangle(point, top, bottom, halfWidth, corner),
                                    -fromTriangle(point, innerTop, innerBottom, innerHalfWidth,
                                                  std::max(0.1, corner - stroke)));

    const double width = std::max(2 - pixels % 2, centredLength(1 / 14.0, pixels));
    const double gap = std::max(1.0, std::round(pixels / 20.0));
    const double dotTop = innerBottom - gap - width;
    const double barTop = std::round(pixels * 0.36) - middle;
    return std::min({outline, fromBar(point, barTop, dotTop - gap, width),
                     fromBar(point, dotTop, dotTop + width, width)});
}

/// The width of the lines in pictures made of lines.
double lineWidth(int pixels) {
    return std::max(1.0, std::round(pixels / 13.0 * 2) / 2);
}

double fromInformationSign(QPointF point, int pixels) {
    const double radius = outerRadius(pixels);
    const double width = std::max(2 - pixels % 2, centredLength(1 / 11.0, pixels));
    const double dotTop = std::round(-radius * 0.56 + pixels / 2.0) - pixels / 2.0;
    const double barTop = dotTop + width + std::max(1.0, std::round(pixels / 20.0));
    return std::min({fromCircle(point, pixels, lineWidth(pixels)),
                     fromBar(point, dotTop, dotTop + width, width),
                     fromBar(point, barTop, std::max(radius * 0.54, barTop + 2), width)});
}

double fromGear(QPointF point, int pixels) {
    const double tip = centredLength(0.8, pixels) / 2.0;
    const double distance = length(point);
    const double step = std::numbers::pi / 4;
    const double angle = std::atan2(point.y(), point.x());
    const double turned = angle - step * std::round(angle / step);
    const QPointF alongTooth(distance * std::sin(turned), distance * std::cos(turned));
    const double tooth = fromBar(alongTooth, 0, tip, std::max(2.0, tip * 0.36));
    const double wheel = std::max(std::min(tooth, distance - tip * 0.78), tip * 0.5 - distance);
    return std::min(wheel, distance - tip * 0.2);
}

double fromPowerSign(QPointF point, int pixels) {
    const double stroke = lineWidth(pixels);
    const double radius = outerRadius(pixels) - stroke / 2;
    constexpr double gap = 0.6; // half of it, in radians from the top
    const QPointF mirrored(std::abs(point.x()), point.y());
    const QPointF end = radius * QPointF(std::sin(gap), -std::cos(gap));
    const bool isInGap = std::atan2(mirrored.x(), -mirrored.y()) < gap;
    const double arc =
        (isInGap ? length(mirrored - end) : std::abs(length(point) - radius)) - stroke / 2;
    const double width = std::max<double>(2 - pixels % 2, centredLength(1 / 13.0, pixels));
    return std::min(arc, fromBar(point, -radius - stroke, -radius * 0.1, width));
}

double fromWaves(QPointF point, int pixels) {
    const double stroke = lineWidth(pixels) * 1.2;
    const double halfWidth = outerRadius(pixels);
    const double height = pixels / 16.0;
    const double perPixel = 3 * std::numbers::pi / (2 * halfWidth);
    const double x = std::clamp(point.x(), -halfWidth, halfWidth);
    const double wave = height * std::cos(x * perPixel);
    const double slope = height * perPixel * std::sin(x * perPixel);
    double nearest = pixels;
    for (const double line : {-0.25, 0.0, 0.25}) {
        // Across the line, not down to it.
        const double across = (point.y() - line * pixels - wave) / std::hypot(1.0, slope);
        nearest = std::min(nearest, length({point.x() - x, across}) - stroke / 2);
    }
    return nearest;
}

/// A limb: two discs and everything between their outlines. In fractions of the picture, from its
/// middle.
struct Limb {
    QPointF start;
    double startRadius = 0;
    QPointF end;
    double endRadius = 0;
};

double fromLimb(QPointF point, const Limb& limb) {
    const QPointF along = limb.end - limb.start;
    const double squared = QPointF::dotProduct(along, along);
    const double narrowing = (limb.startRadius - limb.endRadius) / std::sqrt(squared);
    const QPointF from = point - limb.start;
    const double across =
        std::abs(from.x() * along.y() - from.y() * along.x()) / std::sqrt(squared);
    const double part =
        (QPointF::dotProduct(from, along) +
         across * narrowing * std::sqrt(squared) / std::sqrt(1 - narrowing * narrowing)) /
        squared;
    const double inside = std::clamp(part, 0.0, 1.0);
    return length(from - inside * along) -
           (limb.startRadius + inside * (limb.endRadius - limb.startRadius));
}

/// From limbs that grow together softly where they meet.
template <std::size_t count>
double fromLimbs(QPointF point, const std::array<Limb, count>& limbs) {
    constexpr double softness = 0.05;
    double nearest = fromLimb(point, limbs[0]);
    for (const Limb& limb : limbs) {
        const double distance = fromLimb(point, limb);
        const double blend = std::max(softness - std::abs(nearest - distance), 0.0);
        nearest = std::min(nearest, distance) -
                  (&limb == limbs.data() ? 0 : blend * blend / (4 * softness));
    }
    return nearest;
}

double fromHare(QPointF point, int pixels) {
    static constexpr std::array limbs{
        Limb{{-0.20, 0.09}, 0.18, {0.10, 0.06}, 0.12},   // body, with the haunch at its end
        Limb{{-0.13, 0.03}, 0.18, {-0.09, 0.03}, 0.17},  // arched back
        Limb{{0.10, 0.05}, 0.12, {0.26, -0.10}, 0.09},   // neck
        Limb{{0.26, -0.10}, 0.10, {0.38, -0.04}, 0.06},  // head
        Limb{{0.22, -0.16}, 0.035, {0.01, -0.36}, 0.05}, // ears
        Limb{{0.26, -0.18}, 0.035, {0.16, -0.42}, 0.05},
        Limb{{-0.26, 0.26}, 0.06, {-0.02, 0.31}, 0.045}, // feet
        Limb{{0.15, 0.12}, 0.07, {0.20, 0.30}, 0.045},
        Limb{{0.20, 0.31}, 0.045, {0.27, 0.315}, 0.04},
        Limb{{-0.41, 0.05}, 0.055, {-0.40, 0.05}, 0.055}, // tail
    };
    const QPointF scaled = point / pixels;
    const double eye = pixels < 24 ? 0 : 0.025;
    return std::max(fromLimbs(scaled, limbs), eye - length(scaled - QPointF(0.30, -0.11))) * pixels;
}

double fromTortoise(QPointF point, int pixels) {
    static constexpr std::array limbs{
        Limb{{0.10, 0.17}, 0.06, {0.30, 0.12}, 0.07}, // neck
        Limb{{0.30, 0.12}, 0.07, {0.37, -0.05}, 0.065},
        Limb{{0.37, -0.06}, 0.085, {0.42, -0.03}, 0.065}, // head
        Limb{{-0.27, 0.16}, 0.08, {-0.30, 0.24}, 0.07},   // feet
        Limb{{0.10, 0.16}, 0.08, {0.13, 0.24}, 0.07},
    };
    const QPointF scaled = point / pixels;
    constexpr QPointF shellMiddle(-0.09, 0.10);
    const QPointF fromShell = scaled - shellMiddle;
    const double dome = (length({fromShell.x() / 0.36, fromShell.y() / 0.30}) - 1) * 0.33;
    const double shell = std::max(dome, fromShell.y());
    // A line of the ground's colour sets the shell off from what sticks out of it.
    const double line = std::max(0.04, 1.0 / pixels);
    const double eye = pixels < 24 ? 0 : 0.022;
    const double body = std::max(
        {fromLimbs(scaled, limbs), line - shell, eye - length(scaled - QPointF(0.39, -0.07))});
    return std::min(shell, body) * pixels;
}

struct Symbol {
    std::string_view name;
    double (*distance)(QPointF point, int pixels);
};

constexpr std::array symbols{
    Symbol{"circle.dotted", fromDottedRing},
    Symbol{"circle.fill", fromDisc},
    Symbol{"exclamationmark.triangle", fromWarningSign},
    Symbol{"gear", fromGear},
    Symbol{"hare", fromHare},
    Symbol{"info.circle", fromInformationSign},
    Symbol{"power", fromPowerSign},
    Symbol{"tortoise", fromTortoise},
    Symbol{"water.waves", fromWaves},
};

/// How much of the pixel the shape covers, 0 to 255: the mean of its four quarters.
QRgb coverage(const Symbol& symbol, int x, int y, int pixels) {
    double sum = 0;
    for (const double right : {0.25, 0.75}) {
        for (const double down : {0.25, 0.75}) {
            const QPointF point(x + right - pixels / 2.0, y + down - pixels / 2.0);
            sum += std::clamp(0.5 - 2 * symbol.distance(point, pixels), 0.0, 1.0);
        }
    }
    return static_cast<QRgb>(std::lround(sum / 4 * 255));
}

} // namespace

std::optional<QImage> symbolImage(std::string_view name, std::uint32_t colour, int size,
                                  double devicePixelRatio) {
    const auto* const symbol = std::ranges::find(symbols, name, &Symbol::name);
    if (symbol == symbols.end()) {
        return std::nullopt;
    }
    const int pixels = static_cast<int>(std::lround(size * devicePixelRatio));
    QImage image(pixels, pixels, QImage::Format_ARGB32);
    for (int y = 0; y < pixels; ++y) {
        auto* const line = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < pixels; ++x) {
            line[x] = (colour & 0xffffffU) | coverage(*symbol, x, y, pixels) << 24U;
        }
    }
    image.setDevicePixelRatio(devicePixelRatio);
    return image;
}

SymbolPicture::SymbolPicture(std::string_view name, int size)
    : name_(name)
    , size_(size) {}

void SymbolPicture::draw(QPainter& painter, const QColor& colour, QPointF middle) {
    const double ratio = painter.device()->devicePixelRatioF();
    if (!image_ || colour_ != colour.rgb() || image_->devicePixelRatio() != ratio) {
        colour_ = colour.rgb();
        image_ = symbolImage(name_, colour_, size_, ratio);
    }
    if (image_) {
        drawOnDevicePixels(painter, middle - QPointF(size_, size_) / 2, *image_);
    }
}

} // namespace tidewell
