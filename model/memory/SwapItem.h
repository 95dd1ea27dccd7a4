#pragma once

#include "base/values/Hash.h"

#include <cstdint>

namespace tidewell {

/// One sample of the swap in use. Lists of samples are ordered oldest first.
struct SwapItem {
    std::int64_t value; ///< bytes
    double timestamp;   ///< seconds since 1970-01-01 00:00:00 UTC

    auto fields() const { return std::tie(value, timestamp); }
    bool operator==(const SwapItem&) const = default;
};

} // namespace tidewell
