#include "core/probes/darwin/FreeMemoryPercentage.h"
#include "support/Utf8.h"

#include <gtest/gtest.h>

#include <string>

namespace tidewell {
namespace {

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
