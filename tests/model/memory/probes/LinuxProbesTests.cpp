#include "model/memory/probes/MemoryBreakdown.h"
#include "model/memory/probes/linux/LinuxProbes.h"
#include "model/memory/probes/linux/MemInfo.h"
#include "tests/fakes/RecordingLog.h"
#include "tests/fakes/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <sstream>

namespace tidewell {
namespace {

/// A machine whose files were kept, with what `free -b` said about them.
struct Recording {
    std::string folder;
    std::int64_t freePercentage;
    std::uint64_t compressed; ///< bytes
    std::uint64_t zfs; ///< cached bytes in whole pages that are in none of the kernel's own lines
    std::size_t complaints = 0; ///< about figures that cannot be
};

TEST(RecordedMachine, HasTheFiguresThatFreeGives) {
    for (const auto& machine :
         {Recording{"small-server", 97, 0, 0}, Recording{"small-server-under-load", 89, 0, 0},
          Recording{"laptop-zram", 32, 738725888 + 25165824, 0},
          Recording{"desktop-zswap", 30, 1310720ULL * 1024, 0},
          Recording{"workstation-zfs", 54, 0, (25614036992 - 2102252928) / 4096 * 4096},
          Recording{"office-before-available", 60, 0, 0},
          Recording{"container-limited", 78, 0, 0, 1}, Recording{"server-hugepages", 38, 0, 0},
          Recording{"zram-before-reset", 29, 1030750208 + 6291456, 0},
          Recording{"zram-after-reset", 8, 6291456, 0},
          Recording{"laptop-three-swaps", 24, 2118123520, 0},
          Recording{"server-1.5-terabytes", 56, 0, 0}}) {
        SCOPED_TRACE(machine.folder);
        const auto folder = TIDEWELL_FIXTURES "/" + machine.folder;
        const auto text = readText(folder + "/free.txt");
        std::uint64_t total = 0, free = 0, shared = 0, cached = 0, other = 0;
        SwapUsage swap{};
        std::string word;
        std::istringstream(text.substr(text.find("Mem:") + 4)) >> total >> other >> free >>
            shared >> cached >> other >> word >> swap.total >> swap.used >> swap.free;

        RecordingLog log;
        LinuxProbes probes(folder + "/proc", folder + "/sys", log);
        EXPECT_EQ(probes.getPhysicalMemory(), total);
        EXPECT_EQ(probes.getSwapUsage(), swap);
        EXPECT_EQ(probes.getFreeMemoryPercentage(), machine.freePercentage);
        const auto parts = breakdownOf(probes.getMemoryCounters().value());
        EXPECT_EQ(parts.cachedFiles + shared, cached + machine.zfs);
        EXPECT_EQ(parts.compressedMemory, machine.compressed);
        EXPECT_EQ(parts.usedMemory + parts.cachedFiles + free, total);
        EXPECT_GT(parts.wiredMemory, 0U);
        const auto inUse = static_cast<std::int64_t>(parts.usedMemory * 100 / total);
        const auto pressure = 100 - machine.freePercentage;
        EXPECT_GE(pressure, inUse) << "what is in use is not available";
        EXPECT_LE(pressure - inUse, 7) << "the reserves that the kernel keeps";
        EXPECT_THAT(log.takeLines(), testing::SizeIs(machine.complaints));
    }
}

class LinuxProbesTest : public testing::Test {
protected:
    TemporaryFolder folder;
    RecordingLog log;
    LinuxProbes probes{folder.path(), folder.path(), log};
};

TEST_F(LinuxProbesTest, HasNoReadingsWithoutAUsableFileAndSaysWhyOnceAndForSwapEachTime) {
    const std::string meminfo = (folder.path() / "meminfo").string();
    const std::string error = "error general getSwapUsage(): Error";
    const auto expectLines = [this](const std::vector<std::string>& lines) {
        EXPECT_EQ(probes.getFreeMemoryPercentage(), std::nullopt);
        EXPECT_EQ(probes.getPhysicalMemory(), std::nullopt);
        EXPECT_EQ(probes.getMemoryCounters(), std::nullopt);
        EXPECT_EQ(probes.getSwapUsage(), std::nullopt);
        EXPECT_EQ(log.takeLines(), lines);
    };
    const auto reason = [&](const char* text) {
        return "error general readMemInfo(): Cannot read " + meminfo + ": " + text;
    };
    expectLines({reason("No such file or directory"), error + " getting swap usage (errno: 2)"});
    expectLines({error + " getting swap usage (errno: 2)"});
    folder.write("meminfo", "MemTotal: lots\nSwapTotal: 5 kB\n");
    expectLines({error + ": Could not find the swap totals in " + meminfo});
    std::filesystem::remove(meminfo);
    std::filesystem::create_directory(meminfo);
    expectLines({reason("Is a directory"), error + " getting swap usage (errno: 21)"});
}

TEST_F(LinuxProbesTest, ReadsItsFileOnceForASamplingStepAndAddsUpTheZramDevicesThatAreThere) {
    folder.write("meminfo", "MemTotal: 4096 kB\nMemFree: 1024 kB\n");
    std::filesystem::create_directories(folder.path() / "class/zram-control");
    std::filesystem::create_directories(folder.path() / "block/zram11"); // vanishes meanwhile
    folder.write("block/zram3/mm_stat", "9 9 131072 9");
    folder.write("block/zram10/mm_stat", "9 9 65536 9");
    folder.write("block/zram10/size", "2048\n");
    folder.write("block/zram4/mm_stat", "9 9 4096 9");
    folder.write("block/zram4/size", "0\n"); // being reset
    folder.write("block/sda/mm_stat", "9 9 65536 9");
    EXPECT_EQ(probes.getFreeMemoryPercentage(), 25);
    std::filesystem::remove(folder.path() / "meminfo");
    EXPECT_EQ(probes.getPhysicalMemory(), 4096U * 1024);
    const auto parts = breakdownOf(probes.getMemoryCounters().value());
    EXPECT_EQ(parts.compressedMemory, 131072U + 65536U);
    EXPECT_EQ(probes.getFreeMemoryPercentage(), std::nullopt) << "the next step reads it again";
    EXPECT_EQ(probes.getMemoryCounters(), std::nullopt);
}

TEST(MemInfo, ReadsTheLinesItKnowsAndTakesWhatIsNoNumberOfKilobytesAsMissing) {
    const auto info = parseMemInfo("none\nSwapCached: 9 kB\nCached: 3\nCached: 4 kB\nShmem: 2 kB");
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
          Case{estimated + "Shmem: 999", 16}, Case{estimated + "MemAvailable: 639", 63},
          Case{estimated + "MemAvailable: 1001", 51}, Case{"MemAvailable: 1000", 100},
          Case{"MemAvailable: 1001", {}}}) {
        const auto info = parseMemInfo(lines + "\nMemTotal: 1000");
        EXPECT_EQ(freeMemoryPercentage(info, {}), percentage) << lines;
    }
}

TEST_F(LinuxProbesTest, DerivesWhatIsLargerThanMemoryFromTheOtherLinesAndSaysSoOnce) {
    const std::string wrapped = " 18014398509481000 kB\n"; // a difference below 0
    const std::string above = " 8000001 kB\n";             // the host's
    const std::string total = "MemTotal: 8000000 kB\n", free = "MemFree: 1000000 kB\n",
                      available = "MemAvailable: 5200000 kB\n",
                      anonymous = "AnonPages: 1150000 kB\n",
                      lists = "Active(anon): 700000 kB\nInactive(anon): 1000000 kB\n",
                      others = total + "Shmem: 500000 kB\nBuffers: 100000 kB\nCached: 4500000 kB\n"
                                       "SReclaimable: 300000 kB\nZswap: 60000 kB\n";
    struct Case {
        std::string lines;
        std::int64_t percentage;
        std::array<std::uint64_t, 3> parts; ///< app, wired and cached, in thousands of kilobytes
    };
    for (const auto& [lines, percentage, parts] :
         {Case{free + available + anonymous + lists, 65, {1650, 890, 4400}},
          Case{free + available + lists + "AnonPages:" + wrapped, 65, {1700, 840, 4400}},
          Case{free + available + "AnonPages:" + above, 65, {500, 2040, 4400}},
          Case{"MemFree:" + wrapped + available + anonymous, 65, {1650, 1090, 4400}},
          Case{free + anonymous + "MemAvailable:" + wrapped, 67, {1650, 890, 4400}},
          Case{"MemFree:" + wrapped + "MemAvailable:" + above + anonymous, 78, {1650, 0, 4400}}}) {
        SCOPED_TRACE(lines);
        folder.write("meminfo", others + lines);
        EXPECT_EQ(probes.getFreeMemoryPercentage(), percentage);
        const auto is = breakdownOf(probes.getMemoryCounters().value());
        EXPECT_EQ((std::array{is.appMemory, is.wiredMemory, is.cachedFiles}),
                  (std::array{parts[0] * 1024000, parts[1] * 1024000, parts[2] * 1024000}));
    }
    EXPECT_THAT(log.takeLines(), testing::ElementsAre("error general readMemInfo(): AnonPages in " +
                                                      (folder.path() / "meminfo").string() +
                                                      " is larger than MemTotal and left out"));
}

TEST(MemInfo, CountsTheSamePartOfTheZfsCacheAsAvailableAndAsCached) {
    const auto info = parseMemInfo("MemTotal: 1000\nMemFree: 100\nMemAvailable: 150\n"
                                   "Cached: 200\nShmem: 100\nAnonPages: 300\n");
    using Case = std::tuple<std::uint64_t, std::int64_t, std::uint32_t>;
    for (const auto& [zfs, percentage, cached] :
         {Case{0, 15, 100}, Case{250, 40, 350}, Case{400, 55, 500}, Case{401, 55, 500},
          Case{1000, 55, 500}, Case{1001, 15, 100}}) {
        const UnlistedMemory unlisted{.evictableZfs = zfs};
        EXPECT_EQ(freeMemoryPercentage(info, unlisted), percentage) << zfs;
        EXPECT_EQ(memoryCounters(info, unlisted, 1024)->externalPages, cached) << zfs;
    }
    const auto roomy = parseMemInfo("MemTotal: 1000\nMemFree: 100\nMemAvailable: 950\n");
    EXPECT_EQ(freeMemoryPercentage(roomy, {.evictableZfs = 900}), 100);
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
    check(small + "Cached: 40\nShmem: 400\nAnonPages: 200\n", {4096, 75, 0, 0, 0, 0});
    check(small + "Cached: 200\nBuffers: 200\nSReclaimable: 1\n", {4096, 0, 0, 75, 0, 0});
    check("MemTotal: 240\nMemFree: 100\n", {4096, 0, 0, 0, 35, 0});
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
