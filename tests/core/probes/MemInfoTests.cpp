#include "core/probes/MemoryBreakdown.h"
#include "core/probes/linux/MemInfo.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace tidewell {
namespace {

TEST(MemInfo, ReadsTheLinesItKnowsAndTakesWhatIsNoNumberOfKilobytesAsMissing) {
    const auto info = parseMemInfo("SwapCached: 9 kB\nCached: 3\nCached: 4 kB\nShmem: 2 kB");
    EXPECT_EQ(info.cached, 3U) << "the first of two, and without a unit";
    EXPECT_EQ(info.shared, 2U) << "without a line end";
    for (const std::string value :
         {"", " -5 kB", " 5kB", " 0x5 kB", " 18014398509481984 kB", " 18446744073709551616 kB"}) {
        EXPECT_EQ(parseMemInfo("MemTotal:" + value + "\nMemFree: 1 kB\n").total, std::nullopt)
            << value;
    }
}

TEST(MemInfo, GivesThePercentageThatIsAvailableAndAnEstimateWhereTheKernelMakesNone) {
    const std::string estimated = "MemFree: 100\nBuffers: 50\nCached: 300\nSReclaimable: 60\n";
    using Case = std::pair<std::string, std::optional<std::int64_t>>;
    for (const auto& [lines, percentage] :
         {Case{"", {}}, Case{"MemTotal: 0\nMemFree: 1", {}}, Case{estimated + "Shmem: 200", 31},
          Case{estimated + "Shmem: 99999", 16}, Case{estimated + "MemAvailable: 639", 63},
          Case{"MemAvailable: 1001", 100}}) {
        const auto info = parseMemInfo(lines + "\nMemTotal: 1000");
        EXPECT_EQ(freeMemoryPercentage(info), percentage) << lines;
    }
}

TEST(MemInfo, CountsEveryPageOnceEvenWhenFiguresContradictEachOther) {
    const std::string busy = "MemTotal: 16000\nMemFree: 2000\nAnonPages: 5000\nShmem: 1000\n"
                             "Buffers: 500\nCached: 4000\nSReclaimable: 512\nZswap: 188\n";
    const std::string small = "MemTotal: 400\nMemFree: 100\n";
    const std::string huge = " 18014398509481983\n";
    constexpr auto most = std::numeric_limits<std::uint32_t>::max();
    const auto check = [](const std::string& lines, const MemoryCounters& counters) {
        const UnlistedMemory unlisted{.zram = 250, .evictableZfs = 1000};
        EXPECT_EQ(memoryCounters(parseMemInfo(lines), unlisted, counters.pageSize), counters)
            << lines;
    };
    // Page size, internal, purgeable, external, wired, compressor.
    check(busy, {4096, 1500, 0, 1253, 638, 109});
    check(small + "Cached: 40\nShmem:" + huge + "AnonPages:" + huge, {4096, 75, 0, 0, 0, 0});
    check(small + "Cached:" + huge + "Buffers:" + huge + "SReclaimable:" + huge,
          {4096, 0, 0, 75, 0, 0});
    check("MemTotal:" + huge + "MemFree: 0\nCached:" + huge, {4096, 0, 0, most, 0, 0});
    EXPECT_EQ(evictableZfsKilobytes("size 4 1024\nc_min 4 4096\n"), 0U);
    EXPECT_EQ(memoryCounters(parseMemInfo("MemTotal: 400"), {}, 4096), std::nullopt);
    EXPECT_EQ(swapUsage(parseMemInfo("SwapTotal: 8\nSwapFree: 9")), (SwapUsage{8192, 0, 8192}));
}

TEST(MemoryBreakdown, FollowsFromTheCountersAndStopsAtTheEndOfItsRange) {
    constexpr auto most = std::numeric_limits<std::uint64_t>::max();
    constexpr auto half = 1ULL << 63U;
    // Of app, wired, compressed memory, cached files, used memory.
    EXPECT_EQ(breakdownOf({16384, 100000, 10000, 50000, 20000, 5000}),
              (MemoryBreakdown{1474560000, 327680000, 81920000, 983040000, 1884160000}));
    EXPECT_EQ(breakdownOf({half, 3, 0, 2, 1, 1}), (MemoryBreakdown{most, half, half, most, most}));
}

} // namespace
} // namespace tidewell
