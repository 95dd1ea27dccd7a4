#include "model/memory/probes/darwin/KernelRecords.h"

#include <cstring>

namespace tidewell {

static_assert(sizeof(VmStatistics) == 152);

std::optional<SwapUsage> decodeSwapUsage(std::span<const std::byte> record) {
    struct {
        std::uint64_t total;
        std::uint64_t available;
        std::uint64_t used;
    } figures{};
    static_assert(sizeof figures == 24);
    if (record.size() < sizeof figures) {
        return std::nullopt;
    }
    std::memcpy(&figures, record.data(), sizeof figures);
    return SwapUsage{.total = figures.total, .used = figures.used, .free = figures.available};
}

MemoryCounters decodeMemoryCounters(std::uint64_t pageSize, const VmStatistics& statistics) {
    const auto counter = [&](std::size_t offset) {
        return statistics[offset / sizeof(VmStatistics::value_type)];
    };
    return {.pageSize = pageSize,
            .internalPages = counter(vm_statistics_offset::internalPageCount),
            .purgeablePages = counter(vm_statistics_offset::purgeableCount),
            .externalPages = counter(vm_statistics_offset::externalPageCount),
            .wiredPages = counter(vm_statistics_offset::wireCount),
            .compressorPages = counter(vm_statistics_offset::compressorPageCount)};
}

} // namespace tidewell
