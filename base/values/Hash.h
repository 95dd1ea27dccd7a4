#pragma once

#include <cstddef>
#include <functional>

namespace tidewell {

/// The hash of a value's fields, fed in the order in which they are given.
template <typename... Fields>
std::size_t hashOfFields(const Fields&... fields) noexcept {
    std::size_t result = 0;
    // The mixing constant is 2^64 divided by the golden ratio: no two bits of it are in step.
    ((result ^=
      std::hash<Fields>()(fields) + 0x9e3779b97f4a7c15U + (result << 6U) + (result >> 2U)),
     ...);
    return result;
}

} // namespace tidewell
