#pragma once

#include "base/values/Interface.h"

#include <cstdint>
#include <optional>

namespace tidewell {

/// Swap space in bytes.
struct SwapUsage {
    std::uint64_t total; ///< allocated
    std::uint64_t used;
    std::uint64_t free;

    bool operator==(const SwapUsage&) const = default;
};

/// Counts of memory pages by what they hold.
struct MemoryCounters {
    std::uint64_t pageSize;        ///< bytes
    std::uint32_t internalPages;   ///< belong to programs
    std::uint32_t purgeablePages;  ///< of those, may be dropped at any time
    std::uint32_t externalPages;   ///< hold contents of files
    std::uint32_t wiredPages;      ///< cannot leave memory
    std::uint32_t compressorPages; ///< hold compressed memory

    bool operator==(const MemoryCounters&) const = default;
};

/// The four readings of the operating system. Main thread; each blocks until it has its figure.
/// A reading that cannot be had is empty; the next sampling step simply asks again.
class SystemProbes : public Interface {
public:
    /// Free memory of the whole system, percent.
    virtual std::optional<std::int64_t> getFreeMemoryPercentage() = 0;
    virtual std::optional<SwapUsage> getSwapUsage() = 0;
    /// Bytes of physical memory.
    virtual std::optional<std::uint64_t> getPhysicalMemory() = 0;
    virtual std::optional<MemoryCounters> getMemoryCounters() = 0;
};

} // namespace tidewell
