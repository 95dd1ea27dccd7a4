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
    std::size_t sizeOfVariable(const char*) override { return size; }
    VariableRead readVariable(const char* name, std::span<std::byte> buffer) override {
        const auto value = std::as_bytes(std::span(variables[name]));
        const auto filled = std::min(buffer.size(), value.size());
        std::copy_n(value.begin(), filled, buffer.begin());
        return {.error = error, .size = filled};
    }
    std::optional<std::uint64_t> pageSize() override { return page; }
    std::optional<VmStatistics> vmStatistics() override { return statistics; }

    std::variant<ToolResult, ToolFailure> tool;
    std::map<std::string, std::vector<std::uint64_t>> variables;
    std::size_t size = 32; ///< in bytes, as reported
    int error = 0;
    std::optional<std::uint64_t> page;
    std::optional<VmStatistics> statistics;
};

class DarwinProbesTest : public testing::Test {
protected:
    /// The reason that was logged since the last call; empty without one.
    std::string takeReason() {
        const auto lines = log.takeLines();
        return lines.empty() ? "" : lines[0].substr(lines[0].find(": ") + 2);
    }

    FakeDarwinHost host;
    RecordingLog log;
    DarwinProbes probes{host, log};
};

TEST_F(DarwinProbesTest, ReadsThePercentageOfTheToolAndLogsWhyThereIsNone) {
    const std::string summary = "System-wide memory free percentage: 63%\n";
    host.tool = ToolResult{0, "The system has memory\n" + summary, "\xff ignored"};
    EXPECT_EQ(probes.getFreeMemoryPercentage(), 63);
    using Answer = std::pair<std::variant<ToolResult, ToolFailure>, std::string>;
    for (const auto& [answer, reason] :
         {Answer{ToolFailure{"No such file"}, "Failed to run memory_pressure: No such file"},
          Answer{ToolResult{9, summary, "höhö\n"}, "Error running memory_pressure: höhö\n"},
          Answer{ToolResult{0, summary + "\xc3", "x"},
                 "Failed to decode memory_pressure output"}}) {
        host.tool = answer;
        EXPECT_EQ(probes.getFreeMemoryPercentage(), std::nullopt);
        EXPECT_EQ(takeReason(), reason);
    }
}

TEST_F(DarwinProbesTest, ReadsTheSwapRecordAndLogsWhyThereIsNone) {
    host.variables["vm.swapusage"] = {4, 3, 1, 16384}; // page size and flags follow
    EXPECT_EQ(probes.getSwapUsage(), (SwapUsage{.total = 4, .used = 1, .free = 3}));
    const auto reasonAt = [this](std::size_t size) {
        host.size = size;
        EXPECT_EQ(probes.getSwapUsage(), std::nullopt);
        return takeReason();
    };
    const auto failed = [](int error) {
        return "Error getting swap usage (errno: " + std::to_string(error) + ")";
    };
    EXPECT_EQ(reasonAt(0), "Error: Could not determine size for vm.swapusage");
    EXPECT_EQ(reasonAt(23), failed(EINVAL));
    host.variables["vm.swapusage"].resize(2);
    EXPECT_EQ(reasonAt(32), failed(EINVAL)) << "fills less than it said";
    host.error = EPERM;
    EXPECT_EQ(reasonAt(32), failed(EPERM));
}

TEST_F(DarwinProbesTest, ReadsPhysicalMemoryAndCountersInSilence) {
    host.variables["hw.memsize"] = {17179869184};
    EXPECT_EQ(probes.getPhysicalMemory(), 17179869184U);
    host.statistics.emplace();
    for (std::uint32_t offset = 0; auto& word : *host.statistics) {
        word = std::exchange(offset, offset + 4);
    }
    EXPECT_EQ(probes.getMemoryCounters(), std::nullopt);
    host.page = 16384;
    // Page size, internal, purgeable, external, wired, compressor.
    EXPECT_EQ(probes.getMemoryCounters(), (MemoryCounters{16384, 140, 88, 136, 12, 128}));
    EXPECT_EQ(takeReason(), "");
}

} // namespace
} // namespace tidewell
