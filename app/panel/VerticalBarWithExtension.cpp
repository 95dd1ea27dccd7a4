#include "app/panel/VerticalBarWithExtension.h"

#include "ui/DevicePixels.h"
#include "ui/Palette.h"

#include <algorithm>

namespace tidewell {

double pressureBarHeight(std::int64_t value) {
    return static_cast<double>(std::max<std::int64_t>(value, 0));
}

double extensionHeight(double columnHeight, std::int64_t value) {
    return std::max(0.0, columnHeight - pressureBarHeight(value));
}

MemoryPressureItem publishedItem(const MemoryPressureItem& item, bool hovered) {
    return hovered ? item : noHover;
}

void VerticalBarWithExtension::appear() const {
    *hoverValue = publishedItem(memoryPressureItem, hovered);
}

void VerticalBarWithExtension::hover(bool inside) {
    hovered = inside;
    *hoverValue = publishedItem(memoryPressureItem, hovered);
}

void VerticalBarWithExtension::paint(QPainter& painter, QPointF bottomLeft,
                                     Appearance appearance) const {
    const double height = pressureBarHeight(memoryPressureItem.value);
    const QRectF bar(bottomLeft - QPointF(0, height), QSizeF(barWidth, height));
    const QRectF sharpBar = onDevicePixels(painter, bar);
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.fillRect(sharpBar, barColour(fill, appearance));
    // Half a point at each side, in whole device pixels: where that makes one for both, the right
    // neighbour has it.
    const double scale = painter.deviceTransform().m11();
    const int pixels = std::max(1, static_cast<int>(scale));
    const int right = pixels / 2;
    const QSizeF leading((pixels - right) / scale, sharpBar.height());
    const QSizeF trailing(right / scale, sharpBar.height());
    painter.fillRect(QRectF(sharpBar.topLeft(), leading), Qt::white);
    painter.fillRect(QRectF(sharpBar.topRight() - QPointF(trailing.width(), 0), trailing),
                     Qt::white);
    if (hovered) {
        const double above = extensionHeight(barHeight, memoryPressureItem.value);
        const QColor blue = withOpacity(toQColor(colours::systemBlue, appearance), 0.5);
        const QRectF extension(bar.topLeft() - QPointF(0, above), QSizeF(barWidth, above));
        painter.fillRect(onDevicePixels(painter, extension), blue);
    }
}

} // namespace tidewell
