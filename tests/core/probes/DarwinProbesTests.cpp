#include "core/probes/darwin/DarwinProbes.h"
#include "tests/fakes/RecordingLog.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <map>
#include <vector>

namespace tidewell {
namespace {

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
    FakeDarwinHost host;
    RecordingLog log;
    DarwinProbes probes{host, log};
};

TEST_F(DarwinProbesTest, ReadsThePercentageOfTheToolAndLogsWhyThereIsNone) {
    const std::string summary = "System-wide memory free percentage: 63%\n";
    const auto check = [this](std::variant<ToolResult, ToolFailure> tool,
                              const std::string& reason) {
        host.tool = std::move(tool);
        EXPECT_EQ(probes.getFreeMemoryPercentage(), std::nullopt);
        EXPECT_EQ(log.takeLines(),
                  std::vector(1, "error general getFreeMemoryPercentage(): " + reason));
    };
    host.tool = ToolResult{0, "The system has memory\n" + summary, "\xff ignored"};
    EXPECT_EQ(probes.getFreeMemoryPercentage(), 63);
    check(ToolFailure{"No such file"}, "Failed to run memory_pressure: No such file");
    check(ToolResult{9, summary, "höhö\n"}, "Error running memory_pressure: höhö\n");
    check(ToolResult{0, summary + "\xc3", "x"}, "Failed to decode memory_pressure output");
}

TEST_F(DarwinProbesTest, ReadsTheSwapRecordAndLogsWhyThereIsNone) {
    const std::string failed = "Error getting swap usage (errno: ";
    const auto check = [this](std::vector<std::uint64_t> record, std::optional<std::size_t> size,
                              const std::string& reason) {
        host.variables["vm.swapusage"] = std::move(record);
        host.reportedSize = size;
        EXPECT_EQ(probes.getSwapUsage(), std::nullopt);
        EXPECT_EQ(log.takeLines(), std::vector(1, "error general getSwapUsage(): " + reason));
    };
    host.variables["vm.swapusage"] = {4, 3, 1, 16384}; // page size and flags follow
    EXPECT_EQ(probes.getSwapUsage(), (SwapUsage{.total = 4, .used = 1, .free = 3}));
    check({}, {}, "Error: Could not determine size for vm.swapusage");
    check({4, 3, 1, 16384}, 23, failed + std::to_string(EINVAL) + ")");
    check({4, 3}, 32, failed + std::to_string(EINVAL) + ")"); // fills less than it said
    host.error = EPERM;
    check({4, 3, 1, 16384}, 32, failed + std::to_string(EPERM) + ")");
}

TEST_F(DarwinProbesTest, ReadsPhysicalMemoryAndCountersInSilence) {
    host.variables["hw.memsize"] = {17179869184};
    EXPECT_EQ(probes.getPhysicalMemory(), 17179869184U);
    VmStatistics statistics;
    for (std::uint32_t word = 0; word < statistics.size(); ++word) {
        statistics[word] = 4 * word; // its own offset
    }
    host.statistics = statistics;
    EXPECT_EQ(probes.getMemoryCounters(), std::nullopt);
    host.page = 16384;
    // Page size, internal, purgeable, external, wired, compressor.
    EXPECT_EQ(probes.getMemoryCounters(), (MemoryCounters{16384, 140, 88, 136, 12, 128}));
    EXPECT_TRUE(log.takeLines().empty());
}

} // namespace
} // namespace tidewell
