#pragma once

#include "base/ports/Log.h"
#include "model/memory/probes/SystemProbes.h"
#include "model/memory/probes/darwin/DarwinHost.h"

namespace tidewell {

/// The readings of a Darwin machine. Keeps nothing from one call to the next. A failure of the
/// tool or of the swap reading is one error line; the other two readings say nothing.
class DarwinProbes final : public SystemProbes {
public:
    /// Both must outlive the probes.
    DarwinProbes(DarwinHost& host, Log& log)
        : host_(host)
        , log_(log) {}

    /// Blocks for the whole run of the memory-pressure tool. A run that gives no percentage is not
    /// logged here.
    std::optional<std::int64_t> getFreeMemoryPercentage() override;
    std::optional<SwapUsage> getSwapUsage() override;
    std::optional<std::uint64_t> getPhysicalMemory() override;
    std::optional<MemoryCounters> getMemoryCounters() override;

private:
    DarwinHost& host_;
    Log& log_;
};

} // namespace tidewell
