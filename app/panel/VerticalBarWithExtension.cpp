#include "app/panel/VerticalBarWithExtension.h"

#include "ui/DevicePixels.h"
#include "ui/Palette.h"

#include <algorithm>

namespace tidewell {

namespace {

constexpr double separatorWidth = 0.5;

} // namespace

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
    painter.fillRect(sharpBar, toQColor(fill, appearance));
    for (const double left : {bar.left(), bar.right() - separatorWidth}) {
        const QRectF separator(left, sharpBar.top(), separatorWidth, sharpBar.height());
        // Where bars are whole pixels wide, neighbours share one that is white rather than two that
        // are pale. Elsewhere, whole pixels would make some separators twice as wide as others.
        const bool isWhole = qFuzzyCompare(sharpBar.width(), bar.width());
        painter.setRenderHint(QPainter::Antialiasing, !isWhole);
        painter.fillRect(isWhole ? onDevicePixels(painter, separator) : separator, Qt::white);
    }
    if (hovered) {
        const double above = extensionHeight(barHeight, memoryPressureItem.value);
        const QColor blue = withOpacity(toQColor(colours::systemBlue, appearance), 0.5);
        const QRectF extension(bar.topLeft() - QPointF(0, above), QSizeF(barWidth, above));
        painter.fillRect(onDevicePixels(painter, extension), blue);
    }
}

} // namespace tidewell
