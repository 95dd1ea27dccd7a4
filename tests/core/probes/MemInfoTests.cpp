#include "core/probes/MemoryBreakdown.h"
#include "core/probes/linux/MemInfo.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace tidewell {
namespace {

constexpr std::uint64_t gigabyte = 1024 * 1024; // in kilobytes

TEST(MemInfo, ReadsTheLinesItKnowsAndNoOthers) {
    const auto info = parseMemInfo("MemTotal:       24684084 kB\nMemFree:\t7 kB\r\nActive: 5 kB\n"
                                   "SwapCached: 9 kB\nCached: 3\nCached: 4 kB\nHugePages_Free: 8\n"
                                   "Zswap: 0 kB\nShmem: 2 kB");
    EXPECT_EQ(info.total, 24684084U);
    EXPECT_EQ(info.free, 7U);
    EXPECT_EQ(info.cached, 3U) << "the first of two, and without a unit";
    EXPECT_EQ(info.zswap, 0U);
    EXPECT_EQ(info.shared, 2U) << "without a line end";
    EXPECT_EQ(info.available, std::nullopt);
}

TEST(MemInfo, TakesWhatIsNoNumberOfKilobytesAsMissing) {
    for (const std::string value :
         {"", " ", " kB", " -5 kB", " +5 kB", " 5kB", " 0x5 kB", " 5.5 kB",
          " 18446744073709551616 kB", " 99999999999999999999999999999999999999 kB",
          " 18014398509481984 kB", "\n5 kB"}) {
        EXPECT_EQ(parseMemInfo("MemTotal:" + value + "\nMemFree: 1 kB\n").total, std::nullopt)
            << value;
    }
    EXPECT_EQ(parseMemInfo("MemTotal: 18014398509481983 kB").total, (1ULL << 54U) - 1);
    for (const auto& text :
         {std::string(), std::string(3, '\0'), std::string(100000, '\n'), std::string(100000, ':'),
          std::string("MemTotal"), std::string("\r\n\r\n: 5 kB"), std::string("\xff\xfe:\xff")}) {
        EXPECT_EQ(parseMemInfo(text).total, std::nullopt);
    }
}

TEST(MemInfo, FindsTheFiguresOfZramAndZfs) {
    EXPECT_EQ(zramKilobytes("67108864 25165824 25169920        0 25165824 10240 0 6144 6144\n"),
              24580U);
    EXPECT_EQ(zramKilobytes("4096 74 2048 0"), 2U);
    for (const auto* text : {"", "1 2", "1 2 x 0", "a\nb\n\n", "1 2 99999999999999999999999 0"}) {
        EXPECT_EQ(zramKilobytes(text), 0U) << text;
    }

    EXPECT_EQ(evictableZfsKilobytes("9 1 0x01 147\nname type data\nc 4 9999999\nc_min 4 2048\n"
                                    "c_max 4 1\nsize 4 10240\nhdr_size 4 1\n"),
              8U);
    for (const auto* text : {"", "size 4 4096\n", "c_min 4 4096\n", "size 4 1024\nc_min 4 4096\n",
                             "size\nc_min\n", "size 4 x\nc_min 4 0\n"}) {
        EXPECT_EQ(evictableZfsKilobytes(text), 0U) << text;
    }
}

TEST(MemInfo, GivesThePercentageThatIsAvailable) {
    MemInfo info;
    info.total = 1000;
    EXPECT_EQ(freeMemoryPercentage(info), std::nullopt);
    info.free = 100;
    EXPECT_EQ(freeMemoryPercentage(info), 10);
    // Without the kernel's own estimate: 100 + 50 + 300 - 200 + 60.
    info.buffers = 50;
    info.cached = 300;
    info.shared = 200;
    info.reclaimableSlab = 60;
    EXPECT_EQ(freeMemoryPercentage(info), 31);
    info.shared = 99999;
    EXPECT_EQ(freeMemoryPercentage(info), 16);

    info.available = 639;
    EXPECT_EQ(freeMemoryPercentage(info), 63) << "truncated";
    info.available = 1001;
    EXPECT_EQ(freeMemoryPercentage(info), 100);
    info.total = info.available = (1ULL << 54U) - 1;
    EXPECT_EQ(freeMemoryPercentage(info), 100);
    info.total = 0;
    EXPECT_EQ(freeMemoryPercentage(info), std::nullopt);
}

TEST(MemInfo, NeedsBothSwapFiguresAndKeepsUsedSwapFromWrapping) {
    MemInfo info;
    info.swapTotal = 8;
    EXPECT_EQ(swapUsage(info), std::nullopt);
    info.swapFree = 5;
    EXPECT_EQ(swapUsage(info), (SwapUsage{.total = 8192, .used = 3072, .free = 5120}));
    info.swapFree = 9;
    EXPECT_EQ(swapUsage(info), (SwapUsage{.total = 8192, .used = 0, .free = 8192}));
    info.swapTotal = 0;
    EXPECT_EQ(swapUsage(info), (SwapUsage{.total = 0, .used = 0, .free = 0}));
}

TEST(MemInfo, CountsEveryPageOnceAndWhatIsLeftAsWired) {
    MemInfo info;
    info.total = 16 * gigabyte;
    EXPECT_EQ(memoryCounters(info, {}, 4096), std::nullopt);
    info.free = 2 * gigabyte;
    info.anonymous = 5 * gigabyte;
    info.shared = 1 * gigabyte;
    info.buffers = gigabyte / 2;
    info.cached = 4 * gigabyte;
    info.reclaimableSlab = gigabyte / 2;
    info.zswap = gigabyte / 4;
    const UnlistedMemory unlisted{.zram = gigabyte / 4, .evictableZfs = 1 * gigabyte};
    for (const std::uint64_t pageSize : {4096U, 16384U, 65536U}) {
        const auto pages = [&](std::uint64_t kilobytes) {
            return static_cast<std::uint32_t>(kilobytes * 1024 / pageSize);
        };
        EXPECT_EQ(memoryCounters(info, unlisted, pageSize),
                  (MemoryCounters{.pageSize = pageSize,
                                  .internalPages = pages(6 * gigabyte),
                                  .purgeablePages = 0,
                                  .externalPages = pages(5 * gigabyte),
                                  .wiredPages = pages(2 * gigabyte + gigabyte / 2),
                                  .compressorPages = pages(gigabyte / 2)}));
    }
}

TEST(MemInfo, NeverGivesMorePagesThanThereAreWhenFiguresContradictEachOther) {
    constexpr std::uint64_t huge = (1ULL << 54U) - 1;
    MemInfo info;
    info.total = 400;
    info.free = 100;
    info.shared = huge;
    info.anonymous = huge;
    info.cached = 40; // less than what is shared of it
    EXPECT_EQ(memoryCounters(info, {}, 4096), (MemoryCounters{.pageSize = 4096,
                                                              .internalPages = 75,
                                                              .purgeablePages = 0,
                                                              .externalPages = 0,
                                                              .wiredPages = 0,
                                                              .compressorPages = 0}));

    info.shared = info.anonymous = 0;
    info.cached = info.buffers = info.reclaimableSlab = info.zswap = huge;
    EXPECT_EQ(memoryCounters(info, {.zram = huge, .evictableZfs = huge}, 4096)->externalPages, 75U);

    info.free = 500;
    EXPECT_EQ(memoryCounters(info, {}, 4096), (MemoryCounters{.pageSize = 4096,
                                                              .internalPages = 0,
                                                              .purgeablePages = 0,
                                                              .externalPages = 0,
                                                              .wiredPages = 0,
                                                              .compressorPages = 0}));

    info.total = huge;
    EXPECT_EQ(memoryCounters(info, {}, 4096)->externalPages,
              std::numeric_limits<std::uint32_t>::max());
}

TEST(MemoryBreakdown, FollowsFromTheCountersAndStopsAtTheEndOfItsRange) {
    EXPECT_EQ(breakdownOf({.pageSize = 16384,
                           .internalPages = 100000,
                           .purgeablePages = 10000,
                           .externalPages = 50000,
                           .wiredPages = 20000,
                           .compressorPages = 5000}),
              (MemoryBreakdown{.appMemory = 1474560000,
                               .wiredMemory = 327680000,
                               .compressedMemory = 81920000,
                               .cachedFiles = 983040000,
                               .usedMemory = 1884160000}));

    constexpr auto manyPages = std::numeric_limits<std::uint32_t>::max();
    EXPECT_EQ(breakdownOf({.pageSize = 2,
                           .internalPages = 1,
                           .purgeablePages = manyPages,
                           .externalPages = manyPages,
                           .wiredPages = 0,
                           .compressorPages = 0}),
              (MemoryBreakdown{.appMemory = 0,
                               .wiredMemory = 0,
                               .compressedMemory = 0,
                               .cachedFiles = 4ULL * manyPages,
                               .usedMemory = 0}));
    constexpr auto most = std::numeric_limits<std::uint64_t>::max();
    EXPECT_EQ(breakdownOf({.pageSize = 1ULL << 63U,
                           .internalPages = 3,
                           .purgeablePages = 0,
                           .externalPages = 2,
                           .wiredPages = 1,
                           .compressorPages = 1}),
              (MemoryBreakdown{.appMemory = most,
                               .wiredMemory = 1ULL << 63U,
                               .compressedMemory = 1ULL << 63U,
                               .cachedFiles = most,
                               .usedMemory = most}));
}

} // namespace
} // namespace tidewell
