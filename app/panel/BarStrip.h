#pragma once

#include <cstddef>
#include <optional>

namespace tidewell {

/// Where the bars of a history stand: side by side, oldest first, the newest at the right edge of
/// the chart. What does not fit lies beyond the left edge. Lengths in points, x from the chart's
/// left edge.
///
/// Time runs to the right in right-to-left languages as well: it does in their newspapers, too.
struct BarStrip {
    double width; ///< of the chart
    double barWidth;
    double spacing;
    std::size_t count;

    /// The left edge of a bar; negative beyond the chart's edge.
    double left(std::size_t index) const;
    /// The first bar of which something is to be seen; `count` when there is none.
    std::size_t firstVisible() const;
    /// The bar whose column holds `x`, unless `x` is in a gap or beyond the chart's edges.
    std::optional<std::size_t> barAt(double x) const;
};

} // namespace tidewell
