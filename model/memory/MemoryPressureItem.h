#pragma once

#include "base/values/Hash.h"

#include <cstdint>

namespace tidewell {

/// One sample of the memory pressure. Lists of samples are ordered oldest first.
struct MemoryPressureItem {
    std::int64_t value; ///< percent, 0 to 100; −1 marks "no sample" in the views
    double timestamp;   ///< seconds since 1970-01-01 00:00:00 UTC

    auto fields() const { return std::tie(value, timestamp); }
    bool operator==(const MemoryPressureItem&) const = default;
};

} // namespace tidewell
