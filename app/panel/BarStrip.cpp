#include "app/panel/BarStrip.h"

#include <algorithm>
#include <cmath>

namespace tidewell {

double BarStrip::left(std::size_t index) const {
    const auto later = static_cast<double>(count - 1 - index);
    return width - barWidth - (barWidth + spacing) * later;
}

std::size_t BarStrip::firstVisible() const {
    // Gaps are as good as bars here: one bar too many does no harm.
    const auto fitting = static_cast<std::size_t>(std::ceil(width / (barWidth + spacing)));
    return count - std::min(count, fitting);
}

std::optional<std::size_t> BarStrip::barAt(double x) const {
    if (x < 0 || x >= width) {
        return std::nullopt;
    }
    const auto later = static_cast<std::size_t>((width - x) / (barWidth + spacing));
    // On the edge between two bars the division may fall to either side.
    for (const std::size_t candidate : {later, later - 1}) {
        if (candidate < count) { // nor is one that is below zero
            const std::size_t index = count - 1 - candidate;
            if (x >= left(index) && x < left(index) + barWidth) {
                return index;
            }
        }
    }
    return std::nullopt;
}

} // namespace tidewell
