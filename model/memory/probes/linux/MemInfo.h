#pragma once

#include "model/memory/probes/SystemProbes.h"

#include <string_view>

namespace tidewell {

/// The lines of /proc/meminfo that are used here, in kilobytes of 1,024 bytes. Each is below 2^54,
/// so that its bytes, its hundredfold and sums of a few fit in 64 bits, and a part of memory is at
/// most `total`. Empty where the line is missing or holds no such number.
struct MemInfo {
    using Kilobytes = std::optional<std::uint64_t>;

    Kilobytes total;
    Kilobytes free;
    Kilobytes available;
    Kilobytes buffers;
    Kilobytes cached;
    Kilobytes swapTotal;
    Kilobytes swapFree;
    Kilobytes zswap;
    Kilobytes anonymous;
    Kilobytes shared;
    Kilobytes reclaimableSlab;
    Kilobytes activeAnonymous; ///< both with the shared memory among it
    Kilobytes inactiveAnonymous;

    std::string_view tooLarge; ///< names a part that claimed to be larger than memory
};

/// Memory that has no line of its own in /proc/meminfo, in the same kilobytes.
struct UnlistedMemory {
    std::uint64_t zram = 0;         ///< that zram devices take up
    std::uint64_t evictableZfs = 0; ///< of the ZFS cache (ARC), above its minimum
};

/// Reads the text of /proc/meminfo. Any text will do; of a line that comes twice, the first counts.
/// A part larger than memory is left out; free, available and anonymous memory that are missing are
/// derived from the other lines where these suffice.
MemInfo parseMemInfo(std::string_view text);

/// Memory taken up by one zram device, from the text of its mm_stat; 0 when there is no figure.
std::uint64_t zramKilobytes(std::string_view mmStat);

/// What the ZFS cache (ARC) can shrink by, from the text of its arcstats; 0 without figures.
std::uint64_t evictableZfsKilobytes(std::string_view arcStats);

/// Percent of memory that programs could still get, 0 to 100, truncated.
std::optional<std::int64_t> freeMemoryPercentage(const MemInfo& info,
                                                 const UnlistedMemory& unlisted);

/// Empty when either total is missing. More free than there is counts as all free.
std::optional<SwapUsage> swapUsage(const MemInfo& info);

/// The pages of the machine by what they hold; MemInfo.cpp says what counts as what. `pageSize` is
/// a power of two from 1,024 up. Together with the free pages the counts are physical memory, also
/// where the kernel's figures contradict each other; a count of more than 32 bits is cut to the
/// largest. Empty when total or free memory is missing.
std::optional<MemoryCounters> memoryCounters(const MemInfo& info, const UnlistedMemory& unlisted,
                                             std::uint64_t pageSize);

} // namespace tidewell
