#pragma once

#include <cstddef>
#include <functional>

namespace tidewell {

/// Combines the hashes of a value's fields, in the order in which they are given.
template <typename... Fields>
std::size_t hashOfFields(const Fields&... fields) noexcept {
    std::size_t result = 0;
    // The usual hash_combine; its constant is 2^64 divided by the golden ratio.
    ((result ^=
      std::hash<Fields>()(fields) + 0x9e3779b97f4a7c15U + (result << 6U) + (result >> 2U)),
     ...);
    return result;
}

} // namespace tidewell
