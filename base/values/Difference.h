#pragma once

#include <cstdint>

namespace tidewell {

/// `one` less `other`, 0 where that would be negative.
constexpr std::uint64_t differenceOrZero(std::uint64_t one, std::uint64_t other) {
    return one > other ? one - other : 0;
}

} // namespace tidewell
