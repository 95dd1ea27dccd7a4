#include "core/probes/darwin/DarwinProbes.h"
#include "tests/fakes/RecordingLog.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <map>
#include <vector>

namespace tidewell {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::uint64_t total = 2147483648;
constexpr std::uint64_t available = 1610612736;
constexpr std::uint64_t used = 536870912;

/// A Mac whose answers the test sets.
class FakeDarwinHost final : public DarwinHost {
public:
    std::variant<ToolResult, ToolFailure> runMemoryPressure() override { return tool; }
    std::size_t sizeOfVariable(const char* name) override {
        return reportedSize.value_or(variables[name].size() * sizeof(std::uint64_t));
    }
    VariableRead readVariable(const char* name, std::span<std::byte> buffer) override {
        if (error != 0) {
            return {.error = error, .size = buffer.size()};
        }
        const auto value = std::as_bytes(std::span(variables[name]));
        const auto size = std::min(buffer.size(), value.size());
        std::copy_n(value.begin(), size, buffer.begin());
        return {.error = 0, .size = size};
    }
    std::optional<std::uint64_t> pageSize() override { return page; }
    std::optional<VmStatistics> vmStatistics() override { return statistics; }

    std::variant<ToolResult, ToolFailure> tool;
    std::map<std::string, std::vector<std::uint64_t>> variables;
    std::optional<std::size_t> reportedSize;
    int error = 0;
    std::optional<std::uint64_t> page;
    std::optional<VmStatistics> statistics;
};

class DarwinProbesTest : public testing::Test {
protected:
    std::optional<std::int64_t> percentageOf(int status, std::string output, std::string error) {
        host.tool = ToolResult{status, std::move(output), std::move(error)};
        return probes.getFreeMemoryPercentage();
    }

    FakeDarwinHost host;
    RecordingLog log;
    DarwinProbes probes{host, log};
};

TEST_F(DarwinProbesTest, ReadsThePercentageOfTheToolAndLogsWhyThereIsNone) {
    const std::string prefix = "error general getFreeMemoryPercentage(): ";
    const std::string summary = "System-wide memory free percentage: 63%\n";
    EXPECT_EQ(percentageOf(0, "The system has memory\n" + summary, "\xff ignored"), 63);
    EXPECT_EQ(percentageOf(0, "", ""), std::nullopt);
    EXPECT_EQ(percentageOf(1, summary, "\xff"), std::nullopt);
    EXPECT_THAT(log.takeLines(), IsEmpty());

    host.tool = ToolFailure{"No such file or directory"};
    EXPECT_EQ(probes.getFreeMemoryPercentage(), std::nullopt);
    EXPECT_EQ(percentageOf(9, summary, "höhö\n"), std::nullopt);
    EXPECT_EQ(percentageOf(-1, "\xff", ""), std::nullopt);
    EXPECT_EQ(percentageOf(0, summary + "\xc3", "x"), std::nullopt);
    EXPECT_THAT(log.takeLines(),
                ElementsAre(prefix + "Failed to run memory_pressure: No such file or directory",
                            prefix + "Error running memory_pressure: höhö\n",
                            prefix + "Error running memory_pressure: ",
                            prefix + "Failed to decode memory_pressure output"));
}

TEST_F(DarwinProbesTest, ReadsTheSwapRecordAndLogsWhyThereIsNone) {
    const std::string prefix = "error general getSwapUsage(): ";
    EXPECT_EQ(probes.getSwapUsage(), std::nullopt);
    EXPECT_THAT(log.takeLines(),
                ElementsAre(prefix + "Error: Could not determine size for vm.swapusage"));

    host.variables["vm.swapusage"] = {total, available, used, 16384}; // page size and flags follow
    const SwapUsage usage{.total = total, .used = used, .free = available};
    EXPECT_EQ(probes.getSwapUsage(), usage);
    host.reportedSize = 24;
    EXPECT_EQ(probes.getSwapUsage(), usage);
    EXPECT_THAT(log.takeLines(), IsEmpty());

    const auto failed = [&](int error) {
        EXPECT_EQ(probes.getSwapUsage(), std::nullopt);
        return log.takeLines() == std::vector{prefix + "Error getting swap usage (errno: " +
                                              std::to_string(error) + ")"};
    };
    host.reportedSize = 23;
    EXPECT_TRUE(failed(EINVAL));
    host.reportedSize = 32;
    host.variables["vm.swapusage"] = {total, available}; // fills less than it said
    EXPECT_TRUE(failed(EINVAL));
    host.error = EPERM;
    EXPECT_TRUE(failed(EPERM));
}

TEST_F(DarwinProbesTest, ReadsPhysicalMemoryAndCountersInSilence) {
    host.variables["hw.memsize"] = {17179869184};
    EXPECT_EQ(probes.getPhysicalMemory(), 17179869184U);
    host.error = ENOENT;
    EXPECT_EQ(probes.getPhysicalMemory(), std::nullopt);

    VmStatistics statistics;
    for (std::uint32_t word = 0; word < statistics.size(); ++word) {
        statistics[word] = 4 * word; // its own offset
    }
    host.statistics = statistics;
    EXPECT_EQ(probes.getMemoryCounters(), std::nullopt);
    host.page = 16384;
    EXPECT_EQ(probes.getMemoryCounters(), (MemoryCounters{.pageSize = 16384,
                                                          .internalPages = 140,
                                                          .purgeablePages = 88,
                                                          .externalPages = 136,
                                                          .wiredPages = 12,
                                                          .compressorPages = 128}));
    host.statistics.reset();
    EXPECT_EQ(probes.getMemoryCounters(), std::nullopt);
    EXPECT_THAT(log.takeLines(), IsEmpty());
}

} // namespace
} // namespace tidewell
