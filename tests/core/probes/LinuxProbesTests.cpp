#include "core/probes/MemoryBreakdown.h"
#include "core/probes/linux/LinuxProbes.h"
#include "tests/fakes/RecordingLog.h"
#include "tests/fakes/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

namespace tidewell {
namespace {

/// A machine whose files were kept, with what `free -b` said about them.
struct Recording {
    std::string folder;
    std::int64_t freePercentage;
    std::uint64_t compressed; ///< bytes
    std::uint64_t zfs; ///< cached bytes in whole pages that are in none of the kernel's own lines
};

TEST(RecordedMachine, HasTheFiguresThatFreeGives) {
    for (const auto& machine :
         {Recording{"small-server", 97, 0, 0}, Recording{"small-server-under-load", 89, 0, 0},
          Recording{"laptop-zram", 32, 738725888 + 25165824, 0},
          Recording{"desktop-zswap", 30, 1310720ULL * 1024, 0},
          Recording{"workstation-zfs", 19, 0, (25614036992 - 2102252928) / 4096 * 4096},
          Recording{"office-before-available", 60, 0, 0}}) {
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
        EXPECT_THAT(log.takeLines(), testing::IsEmpty());
    }
}

class LinuxProbesTest : public testing::Test {
protected:
    TemporaryFolder folder;
    RecordingLog log;
    LinuxProbes probes{folder.path(), folder.path(), log};
};

TEST_F(LinuxProbesTest, HasNoReadingsWithoutAUsableFileAndSaysSoForSwap) {
    std::string reason = "Error getting swap usage (errno: 2)";
    for (const std::string text : {"", "MemTotal: lots\nSwapTotal: 5 kB\n"}) {
        EXPECT_EQ(probes.getFreeMemoryPercentage(), std::nullopt);
        EXPECT_EQ(probes.getPhysicalMemory(), std::nullopt);
        EXPECT_EQ(probes.getMemoryCounters(), std::nullopt);
        EXPECT_EQ(probes.getSwapUsage(), std::nullopt);
        EXPECT_THAT(log.takeLines(),
                    testing::ElementsAre("error general getSwapUsage(): " + reason));
        folder.write("meminfo", text); // for the next round
        reason = "Error: Could not find the swap totals in " + (folder.path() / "meminfo").string();
    }
}

TEST_F(LinuxProbesTest, ReadsItsFileOnceForASamplingStepAndAddsUpTheZramDevicesThatAreThere) {
    folder.write("meminfo", "MemTotal: 4096 kB\nMemFree: 1024 kB\n");
    EXPECT_EQ(probes.getFreeMemoryPercentage(), 25);
    std::filesystem::remove(folder.path() / "meminfo");
    std::filesystem::create_directories(folder.path() / "class/zram-control");
    std::filesystem::create_directories(folder.path() / "block/zram11"); // vanishes meanwhile
    folder.write("block/zram3/mm_stat", "9 9 131072 9");
    folder.write("block/zram10/mm_stat", "9 9 65536 9");
    folder.write("block/sda/mm_stat", "9 9 65536 9");
    const auto parts = breakdownOf(probes.getMemoryCounters().value());
    EXPECT_EQ(parts.compressedMemory, 131072U + 65536U);
    EXPECT_EQ(probes.getMemoryCounters(), std::nullopt) << "the next step reads it again";
}

} // namespace
} // namespace tidewell
