#pragma once

#include "model/memory/probes/SystemProbes.h"

namespace tidewell {

/// Where the memory of the machine goes, in bytes. Memory that is in no part is free.
struct MemoryBreakdown {
    std::uint64_t appMemory;        ///< belongs to programs and cannot simply be dropped
    std::uint64_t wiredMemory;      ///< cannot leave memory
    std::uint64_t compressedMemory; ///< holds compressed memory
    std::uint64_t cachedFiles;      ///< can be dropped at any time; no part of `usedMemory`
    std::uint64_t usedMemory;       ///< app, wired and compressed memory together

    bool operator==(const MemoryBreakdown&) const = default;
};

/// Counters that contradict each other or do not fit give 0 or the largest number, never a figure
/// that wrapped around.
MemoryBreakdown breakdownOf(const MemoryCounters& counters);

} // namespace tidewell
