#include "model/memory/probes/MemoryBreakdown.h"
#include "model/memory/probes/linux/MemInfo.h"
#include "tests/fuzz/Require.h"

// One text is /proc/meminfo, ZFS's arcstats and a zram device's mm_stat at once.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tidewell;
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const auto info = parseMemInfo(text);
    const UnlistedMemory unlisted{.zram = zramKilobytes(text),
                                  .evictableZfs = evictableZfsKilobytes(text)};
    const auto percentage = freeMemoryPercentage(info, unlisted).value_or(0);
    require(percentage >= 0 && percentage <= 100);
    if (const auto counters = memoryCounters(info, unlisted, 4096)) {
        const auto parts = breakdownOf(*counters);
        require(parts.usedMemory + parts.cachedFiles <= (*info.total - *info.free) * 1024);
    }
    const auto swap = swapUsage(info).value_or(SwapUsage{});
    require(swap.used + swap.free == swap.total);
    return 0;
}
