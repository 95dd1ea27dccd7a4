#include "model/memory/probes/MemoryBreakdown.h"

#include "base/values/Difference.h"

#include <limits>

namespace tidewell {

namespace {

std::uint64_t saturatingProduct(std::uint64_t a, std::uint64_t b) {
    std::uint64_t product = 0;
    return __builtin_mul_overflow(a, b, &product) ? std::numeric_limits<std::uint64_t>::max()
                                                  : product;
}

std::uint64_t saturatingSum(std::uint64_t a, std::uint64_t b) {
    std::uint64_t sum = 0;
    return __builtin_add_overflow(a, b, &sum) ? std::numeric_limits<std::uint64_t>::max() : sum;
}

} // namespace

MemoryBreakdown breakdownOf(const MemoryCounters& counters) {
    // Wide enough for every sum and difference of page counts.
    const std::uint64_t internal = counters.internalPages;
    const std::uint64_t purgeable = counters.purgeablePages;
    const std::uint64_t external = counters.externalPages;

    MemoryBreakdown result{};
    result.appMemory = saturatingProduct(differenceOrZero(internal, purgeable), counters.pageSize);
    result.wiredMemory = saturatingProduct(counters.wiredPages, counters.pageSize);
    result.compressedMemory = saturatingProduct(counters.compressorPages, counters.pageSize);
    result.cachedFiles = saturatingProduct(external + purgeable, counters.pageSize);
    result.usedMemory =
        saturatingSum(saturatingSum(result.appMemory, result.wiredMemory), result.compressedMemory);
    return result;
}

} // namespace tidewell
