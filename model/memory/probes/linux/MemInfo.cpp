#include "model/memory/probes/linux/MemInfo.h"

#include "base/text/Words.h"
#include "base/values/Difference.h"

#include <algorithm>
#include <array>
#include <limits>

// Which lines of /proc/meminfo count as what. Every page is in exactly one of these:
//
// free        Holds nothing (MemFree).
// cached      Contents of files that can be read again, and kernel objects that can be made again:
//             Buffers + Cached - Shmem + SReclaimable, and what the ZFS cache holds above its
//             minimum. External pages. `free` calls this buff/cache, but counts Shmem in and
//             knows nothing of ZFS.
// app         What programs wrote: AnonPages + Shmem. Internal pages. Shmem is shared memory and
//             the files of tmpfs; the kernel lists it within Cached, yet without swap it can go
//             nowhere. None of it is purgeable: pages that a program allowed to be freed lazily
//             have no line of their own.
// compressed  The memory that compressed pages take up, not their uncompressed size: Zswap, and of
//             every zram device its mem_used_total. Compressor pages.
// wired       The rest: the kernel itself, page tables, huge pages, drivers, the ZFS minimum.
// used        App, wired and compressed, which is everything neither free nor cached.
//
// "Available" is the kernel's own estimate of what new programs could get before it has to swap:
// free memory and most of what is cached, less the reserves. What of the ZFS cache counts as cached
// is added here too, since the kernel leaves it out.
//
// Where /proc/meminfo is made up for a container, differences can wrap around and figures of the
// machine stand beside those of the container. So a part larger than memory is no figure. What is
// missing then is derived from the other lines where they tell it.

namespace tidewell {

namespace {

struct Line {
    std::string_view name;
    MemInfo::Kilobytes MemInfo::* figure;
    bool isPartOfMemory = true;
};

constexpr std::array lines{
    Line{"MemTotal", &MemInfo::total, false},
    Line{"MemFree", &MemInfo::free},
    Line{"MemAvailable", &MemInfo::available},
    Line{"Buffers", &MemInfo::buffers},
    Line{"Cached", &MemInfo::cached},
    Line{"SwapTotal", &MemInfo::swapTotal, false},
    Line{"SwapFree", &MemInfo::swapFree, false},
    Line{"Zswap", &MemInfo::zswap},
    Line{"AnonPages", &MemInfo::anonymous},
    Line{"Shmem", &MemInfo::shared},
    Line{"SReclaimable", &MemInfo::reclaimableSlab},
    Line{"Active(anon)", &MemInfo::activeAnonymous},
    Line{"Inactive(anon)", &MemInfo::inactiveAnonymous},
};

/// Buffers and caches without shared memory.
std::uint64_t cachedKilobytes(const MemInfo& info) {
    return differenceOrZero(info.buffers.value_or(0) + info.cached.value_or(0),
                            info.shared.value_or(0)) +
           info.reclaimableSlab.value_or(0);
}

/// What programs wrote.
std::uint64_t appKilobytes(const MemInfo& info) {
    return info.anonymous.value_or(0) + info.shared.value_or(0);
}

/// A figure of the whole machine, or 0 where that is not the one whose memory is `total`: a
/// container sees the cache and the devices of its host.
std::uint64_t ownKilobytes(std::uint64_t kilobytes, std::uint64_t total) {
    return kilobytes > total ? 0 : kilobytes;
}

/// What of the ZFS cache counts as cached: as much as the other lines leave.
std::uint64_t zfsKilobytes(const MemInfo& info, const UnlistedMemory& unlisted) {
    const auto total = info.total.value_or(0);
    const auto others = info.free.value_or(0) + appKilobytes(info) + cachedKilobytes(info);
    return std::min(ownKilobytes(unlisted.evictableZfs, total), differenceOrZero(total, others));
}

void leaveOutTooLargeParts(MemInfo& info) {
    for (const Line& line : lines) {
        auto& figure = info.*line.figure;
        if (line.isPartOfMemory && info.total && figure > info.total) {
            figure.reset();
            info.tooLarge = line.name;
        }
    }
}

void deriveMissingParts(MemInfo& info) {
    if (!info.anonymous && info.activeAnonymous && info.inactiveAnonymous) {
        info.anonymous = differenceOrZero(*info.activeAnonymous + *info.inactiveAnonymous,
                                          info.shared.value_or(0));
    }
    const auto cached = cachedKilobytes(info);
    if (!info.free && info.available) {
        info.free = differenceOrZero(*info.available, cached);
    } else if (!info.free && info.total && info.anonymous && info.cached) {
        info.free =
            differenceOrZero(*info.total, appKilobytes(info) + cached + info.zswap.value_or(0));
    }
    // Kernels before 3.14, and some that only look like Linux, make no estimate of their own.
    if (!info.available && info.free) {
        info.available = *info.free + cached;
    }
}

} // namespace

MemInfo parseMemInfo(std::string_view text) {
    MemInfo info;
    while (!text.empty()) {
        const auto line = takeLine(text);
        const auto colon = line.find(':');
        if (colon == std::string_view::npos) {
            continue;
        }
        const auto* const known = std::ranges::find(lines, line.substr(0, colon), &Line::name);
        if (known == lines.end() || info.*known->figure) {
            continue;
        }
        auto rest = line.substr(colon + 1);
        const auto figure = number<std::uint64_t>(takeWord(rest));
        if (figure && *figure < std::uint64_t{1} << 54U) {
            info.*known->figure = figure;
        }
    }
    leaveOutTooLargeParts(info);
    deriveMissingParts(info);
    return info;
}

std::uint64_t zramKilobytes(std::string_view mmStat) {
    takeWord(mmStat); // orig_data_size
    takeWord(mmStat); // compr_data_size, without the fragmentation that mem_used_total counts
    return number<std::uint64_t>(takeWord(mmStat)).value_or(0) / 1024;
}

std::uint64_t evictableZfsKilobytes(std::string_view arcStats) {
    std::uint64_t size = 0;
    std::uint64_t minimum = std::numeric_limits<std::uint64_t>::max();
    while (!arcStats.empty()) {
        auto line = takeLine(arcStats);
        const auto name = takeWord(line);
        if (name != "size" && name != "c_min") {
            continue;
        }
        takeWord(line); // the type of the figure
        if (const auto figure = number<std::uint64_t>(takeWord(line))) {
            (name == "size" ? size : minimum) = *figure;
        }
    }
    return differenceOrZero(size, minimum) / 1024;
}

std::optional<std::int64_t> freeMemoryPercentage(const MemInfo& info,
                                                 const UnlistedMemory& unlisted) {
    if (!info.available || info.total.value_or(0) == 0) {
        return std::nullopt;
    }
    const auto obtainable = std::min(*info.available + zfsKilobytes(info, unlisted), *info.total);
    return static_cast<std::int64_t>(obtainable * 100 / *info.total);
}

std::optional<SwapUsage> swapUsage(const MemInfo& info) {
    if (!info.swapTotal || !info.swapFree) {
        return std::nullopt;
    }
    const auto total = *info.swapTotal * 1024;
    const auto free = std::min(*info.swapFree * 1024, total);
    return SwapUsage{.total = total, .used = total - free, .free = free};
}

std::optional<MemoryCounters> memoryCounters(const MemInfo& info, const UnlistedMemory& unlisted,
                                             std::uint64_t pageSize) {
    if (!info.total || !info.free) {
        return std::nullopt;
    }
    // Each part takes at most what the earlier ones left, so that used memory never exceeds what
    // there is.
    std::uint64_t remaining = differenceOrZero(*info.total, *info.free) * 1024 / pageSize;
    const auto takePages = [&](std::uint64_t pages) {
        pages = std::min(pages, remaining);
        remaining -= pages;
        return static_cast<std::uint32_t>(
            std::min<std::uint64_t>(pages, std::numeric_limits<std::uint32_t>::max()));
    };
    const auto takeKilobytes = [&](std::uint64_t kilobytes) {
        return takePages(kilobytes / (pageSize / 1024));
    };
    MemoryCounters counters{};
    counters.pageSize = pageSize;
    counters.internalPages = takeKilobytes(appKilobytes(info));
    counters.externalPages = takeKilobytes(cachedKilobytes(info) + zfsKilobytes(info, unlisted));
    counters.compressorPages =
        takeKilobytes(info.zswap.value_or(0) + ownKilobytes(unlisted.zram, *info.total));
    counters.wiredPages = takePages(remaining);
    return counters;
}

} // namespace tidewell
