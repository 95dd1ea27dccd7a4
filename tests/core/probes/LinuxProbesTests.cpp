#include "core/probes/MemoryBreakdown.h"
#include "core/probes/linux/LinuxProbes.h"
#include "tests/fakes/RecordingLog.h"
#include "tests/fakes/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

namespace tidewell {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// A machine whose files were kept, with what `free -b` said about them.
struct Recording {
    const char* folder;
    std::int64_t freePercentage;
    std::uint64_t compressed; ///< bytes
    std::uint64_t zfs; ///< cached bytes in whole pages that are in none of the kernel's own lines
};

class RecordedMachine : public testing::TestWithParam<Recording> {
protected:
    static std::string folder() { return std::string(TIDEWELL_FIXTURES "/") + GetParam().folder; }
};

TEST_P(RecordedMachine, HasTheFiguresThatFreeGives) {
    struct {
        std::uint64_t total, used, free, shared, cached, available;
    } memory{};
    SwapUsage swap{};
    std::string word;
    std::istringstream text(readText(folder() + "/free.txt"));
    while (text >> word && word != "Mem:") {
    }
    text >> memory.total >> memory.used >> memory.free >> memory.shared >> memory.cached >>
        memory.available >> word >> swap.total >> swap.used >> swap.free;
    ASSERT_TRUE(text) << "the recording of free's figures";

    RecordingLog log;
    LinuxProbes probes(folder() + "/proc", folder() + "/sys", log);
    EXPECT_EQ(probes.getPhysicalMemory(), memory.total);
    EXPECT_EQ(probes.getSwapUsage(), swap);
    EXPECT_EQ(probes.getFreeMemoryPercentage(), GetParam().freePercentage);

    const auto parts = breakdownOf(probes.getMemoryCounters().value());
    EXPECT_EQ(parts.cachedFiles + memory.shared, memory.cached + GetParam().zfs);
    EXPECT_EQ(parts.compressedMemory, GetParam().compressed);
    EXPECT_EQ(parts.usedMemory + parts.cachedFiles + memory.free, memory.total);
    EXPECT_GT(parts.wiredMemory, 0U);
    EXPECT_THAT(log.takeLines(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(LinuxProbes, RecordedMachine,
                         testing::Values(Recording{"small-server", 97, 0, 0},
                                         Recording{"small-server-under-load", 89, 0, 0},
                                         Recording{"laptop-zram", 32, 738725888 + 25165824, 0},
                                         Recording{"desktop-zswap", 30, 1310720ULL * 1024, 0},
                                         Recording{"workstation-zfs", 19, 0,
                                                   (25614036992 - 2102252928) / 4096 * 4096},
                                         Recording{"office-before-available", 60, 0, 0}),
                         [](const auto& machine) {
                             std::string name = machine.param.folder;
                             std::erase(name, '-');
                             return name;
                         });

class LinuxProbesTest : public testing::Test {
protected:
    void writeMemInfo(const std::string& text) { writeText(folder.path() / "meminfo", text); }
    void writeDevice(const std::string& name, const std::string& mmStat) {
        std::filesystem::create_directories(folder.path() / "block" / name);
        writeText(folder.path() / "block" / name / "mm_stat", mmStat);
    }
    std::uint64_t compressed() {
        return breakdownOf(probes.getMemoryCounters().value()).compressedMemory;
    }

    TemporaryFolder folder;
    RecordingLog log;
    LinuxProbes probes{folder.path(), folder.path(), log};
};

TEST_F(LinuxProbesTest, HasNoReadingsWithoutTheFileAndSaysSoForSwap) {
    EXPECT_EQ(probes.getFreeMemoryPercentage(), std::nullopt);
    EXPECT_EQ(probes.getPhysicalMemory(), std::nullopt);
    EXPECT_EQ(probes.getMemoryCounters(), std::nullopt);
    EXPECT_THAT(log.takeLines(), IsEmpty());
    EXPECT_EQ(probes.getSwapUsage(), std::nullopt);
    EXPECT_THAT(log.takeLines(),
                ElementsAre("error general getSwapUsage(): Error getting swap usage (errno: 2)"));

    for (const std::string text : {"", "MemTotal: lots\nSwapTotal: 5 kB\n"}) {
        writeMemInfo(text);
        EXPECT_EQ(probes.getFreeMemoryPercentage(), std::nullopt);
        EXPECT_EQ(probes.getPhysicalMemory(), std::nullopt);
        EXPECT_EQ(probes.getMemoryCounters(), std::nullopt);
        EXPECT_EQ(probes.getSwapUsage(), std::nullopt);
        EXPECT_THAT(log.takeLines(),
                    ElementsAre("error general getSwapUsage(): Error: Could not find the swap "
                                "totals in " +
                                folder.path().string() + "/meminfo"));
    }
}

TEST_F(LinuxProbesTest, ReadsTheWholeLinesThatFitOfAnEndlessFile) {
    std::string text = "MemTotal: 4096 kB\n";
    text.append(16 * 1024 - text.size() - 13, '\n');
    writeMemInfo(text + "MemFree: 2048 kB\n" + std::string(1 << 20, 'x'));
    EXPECT_EQ(probes.getPhysicalMemory(), 4096U * 1024);
    EXPECT_EQ(probes.getFreeMemoryPercentage(), std::nullopt) << "read a number cut short";
}

TEST_F(LinuxProbesTest, FindsZramDevicesAsTheyComeAndGo) {
    writeMemInfo("MemTotal: 4096 kB\nMemFree: 0 kB\n");
    writeDevice("zram3", "9 9 131072 9");
    EXPECT_EQ(compressed(), 0U) << "without the driver";
    std::filesystem::create_directories(folder.path() / "class/zram-control");
    EXPECT_EQ(compressed(), 131072U);
    writeDevice("zram10", "9 9 65536 9");
    writeDevice("sda", "9 9 65536 9");
    std::filesystem::create_directories(folder.path() / "block/zram11"); // vanishes meanwhile
    EXPECT_EQ(compressed(), 196608U);
    std::filesystem::remove_all(folder.path() / "block/zram3");
    EXPECT_EQ(compressed(), 65536U);
}

TEST_F(LinuxProbesTest, UsesOneReadingForOneSamplingStepAndNoMore) {
    writeMemInfo("MemTotal: 4096 kB\nMemFree: 1024 kB\n");
    EXPECT_EQ(probes.getFreeMemoryPercentage(), 25);
    std::filesystem::remove(folder.path() / "meminfo");
    EXPECT_NE(probes.getMemoryCounters(), std::nullopt);
    EXPECT_EQ(probes.getMemoryCounters(), std::nullopt);
}

} // namespace
} // namespace tidewell
