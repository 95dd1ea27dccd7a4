#pragma once

#include "base/values/Colour.h"
#include "model/memory/MemoryPressureItem.h"

#include <QPainter>

#include <cstdint>

namespace tidewell {

/// "No bar is under the pointer": hides the pressure chart's read-out.
inline constexpr MemoryPressureItem noHover{-1, -1.0};

/// One bar of the pressure chart, a point high for each percent. While the pointer is on it, a
/// translucent extension fills its column, and the chart is told the sample. A value that its chart
/// keeps and paints. Lengths in points. Main thread.
struct VerticalBarWithExtension {
    double barWidth = 0;
    double barHeight = 0; ///< of the whole column
    MemoryPressureItem memoryPressureItem = noHover;
    Colour fill = colours::lightGray;
    bool hovered = false;
    /// The chart's; all its bars write it, and the last one that does is right. Outlives the bar.
    MemoryPressureItem* hoverValue = nullptr;

    /// When the bar is first shown: publishes.
    void appear() const;
    /// The pointer came onto the bar itself, the extension apart, or left it: publishes.
    void hover(bool inside);

    /// Paints the column with its lower left corner at `bottomLeft`.
    void paint(QPainter& painter, QPointF bottomLeft, Appearance appearance) const;
};

/// The height of the bar of a sample: none for negative values.
double pressureBarHeight(std::int64_t value);

/// What is left of a column above a bar; nothing above one that is higher.
double extensionHeight(double columnHeight, std::int64_t value);

/// What a bar publishes: its sample while the pointer is on it, else that it is not.
MemoryPressureItem publishedItem(const MemoryPressureItem& item, bool hovered);

} // namespace tidewell
