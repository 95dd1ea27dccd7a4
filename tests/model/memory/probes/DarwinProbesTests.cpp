#include "base/text/Utf8.h"
#include "model/memory/probes/darwin/DarwinProbes.h"
#include "model/memory/probes/darwin/FreeMemoryPercentage.h"
#include "tests/fakes/RecordingLog.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace tidewell {
namespace {

/// A Mac whose answers the test sets.
class FakeDarwinHost final : public DarwinHost {
public:
    Result<ToolResult> runMemoryPressure() override { return tool; }
    std::size_t sizeOfVariable(const char*) override { return size; }
    VariableRead readVariable(const char*, std::span<std::byte> buffer) override {
        const auto value = std::as_bytes(std::span(variable));
        const auto filled = std::min(buffer.size(), value.size());
        std::copy_n(value.begin(), filled, buffer.begin());
        return {.error = error, .size = filled};
    }
    std::optional<std::uint64_t> pageSize() override { return std::nullopt; }
    std::optional<VmStatistics> vmStatistics() override { return VmStatistics{}; }

    Result<ToolResult> tool;
    std::vector<std::uint64_t> variable{4, 3, 1, 16384}; ///< figures, page size and flags
    std::size_t size = 32;                               ///< in bytes, as reported
    int error = 0;
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
    using Answer = std::pair<Result<ToolResult>, std::string>;
    for (const auto& [answer, reason] :
         {Answer{failure("No such file"), "Failed to run memory_pressure: No such file"},
          Answer{ToolResult{9, summary, "höhö\n"}, "Error running memory_pressure: höhö\n"},
          Answer{ToolResult{0, summary + "\xc3", "x"},
                 "Failed to decode memory_pressure output"}}) {
        host.tool = answer;
        EXPECT_EQ(probes.getFreeMemoryPercentage(), std::nullopt);
        EXPECT_EQ(takeReason(), reason);
    }
}

TEST_F(DarwinProbesTest, ReadsTheSwapRecordAndLogsWhyThereIsNone) {
    EXPECT_EQ(probes.getSwapUsage(), (SwapUsage{.total = 4, .used = 1, .free = 3}));
    for (const auto& [size, error, reason] :
         {std::tuple{0U, 0, "Error: Could not determine size for vm.swapusage"},
          {23U, 0, "Error getting swap usage (errno: 22)"},
          {32U, 1, "Error getting swap usage (errno: 1)"}}) {
        host.size = size;
        host.error = error;
        EXPECT_EQ(probes.getSwapUsage(), std::nullopt);
        EXPECT_EQ(takeReason(), reason);
    }
    host.error = 0;
    host.variable.resize(2);
    EXPECT_EQ(probes.getSwapUsage(), std::nullopt) << "fills less than it said";
}

TEST_F(DarwinProbesTest, ReadsPhysicalMemoryAndCountersInSilence) {
    EXPECT_EQ(probes.getPhysicalMemory(), 4U);
    EXPECT_EQ(probes.getMemoryCounters(), std::nullopt) << "without a page size";
    EXPECT_EQ(takeReason(), "");
    VmStatistics statistics;
    for (std::uint32_t offset = 0; auto& word : statistics) {
        word = std::exchange(offset, offset + 4);
    }
    // Page size, internal, purgeable, external, wired, compressor.
    EXPECT_EQ(decodeMemoryCounters(16384, statistics),
              (MemoryCounters{16384, 140, 88, 136, 12, 128}));
}

TEST(FreeMemoryPercentage, IsTheFifthWordOfTheFirstSummaryLineThatYieldsANumber) {
    using Case = std::pair<std::string, std::optional<std::int64_t>>;
    constexpr auto none = std::nullopt;
    const std::string summary = "System-wide a b c ";
    for (const auto& [text, number] :
         {Case{"", none}, Case{"The system has 1 2 3 63%\n", none},
          Case{"Pages free: 1\n\n  " + summary + "  63% \n" + summary + "7%\n", 63},
          Case{summary + "x\n" + summary + "8% d\n", 8},
          Case{"System-wide a b\r\n c 7%\r\n" + summary + "8%\r\n", 8},
          Case{"System-wide\ta\u00a0b c d e 9%", 9}, Case{summary + "42", 42},
          Case{summary + "-7", -7}, Case{summary + "+7", 7}, Case{summary + "7.5%", 5},
          Case{summary + "12a34%", 34}, Case{summary + "9223372036854775808%7%", none},
          Case{summary + "%", none}, Case{summary + "٦3%", none}}) { // a digit, but no number
        EXPECT_EQ(parseFreeMemoryPercentage(text), number) << text;
    }
}

TEST(Utf8, RefusesWhatIsNotWellFormed) {
    EXPECT_TRUE(isUtf8("a\n\u0080\u0800\ud7ff\U0010ffff"));
    for (const std::string text :
         {"\x80", "\xc1\xbf", "\xe0\x9f\xbf", "\xed\xa0\x80", "\xf4\x90\x80\x80", "a\xc3"}) {
        EXPECT_FALSE(isUtf8(text)) << testing::PrintToString(text);
    }
}

} // namespace
} // namespace tidewell
