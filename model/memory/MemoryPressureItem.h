#pragma once

#include "base/values/Hash.h"

#include <cstdint>

namespace tidewell {

/// One sample of the memory pressure. Lists of samples are ordered oldest first.
struct MemoryPressureItem {
    std::int64_t value; ///< percent, 0 to 100; −1 marks "no sample" in the views
    double timestamp;   ///< seconds since 1970-01-01 00:00:00 UTC

    bool operator==(const MemoryPressureItem&) const = default;
};

} // namespace tidewell

template <>
struct std::hash<tidewell::MemoryPressureItem> {
    std::size_t operator()(const tidewell::MemoryPressureItem& item) const noexcept {
        return tidewell::hashOfFields(item.value, item.timestamp);
    }
};
