#pragma once

#include <cstddef>
#include <functional>
#include <tuple>

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

/// A value that gives what tells it from others, by `fields()`, as a tuple.
template <typename Value>
concept HasFields = requires(const Value& value) { value.fields(); };

} // namespace tidewell

template <tidewell::HasFields Value>
struct std::hash<Value> {
    std::size_t operator()(const Value& value) const noexcept {
        return std::apply([](const auto&... fields) { return tidewell::hashOfFields(fields...); },
                          value.fields());
    }
};
