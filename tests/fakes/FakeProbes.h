#pragma once

#include "model/memory/probes/SystemProbes.h"

namespace tidewell {

/// A machine whose figures the test sets.
class FakeProbes final : public SystemProbes {
public:
    std::optional<std::int64_t> getFreeMemoryPercentage() override { return freePercentage; }
    std::optional<SwapUsage> getSwapUsage() override { return swap; }
    std::optional<std::uint64_t> getPhysicalMemory() override { return physical; }
    std::optional<MemoryCounters> getMemoryCounters() override { return counters; }

    std::optional<std::int64_t> freePercentage = 60;
    std::optional<SwapUsage> swap = SwapUsage{.total = 4096, .used = 0, .free = 4096};
    std::optional<std::uint64_t> physical = std::uint64_t{17179869184};
    /// Page size; internal, purgeable, external, wired and compressor pages.
    std::optional<MemoryCounters> counters =
        MemoryCounters{4096, 1048576, 0, 262144, 1048576, 1048576};
};

} // namespace tidewell
