#include "core/probes/darwin/FreeMemoryPercentage.h"
#include "support/Utf8.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace tidewell {
namespace {

using Case = std::pair<std::string, std::optional<std::int64_t>>;
constexpr auto none = std::nullopt;

TEST(FreeMemoryPercentage, ReadsTheFifthWordOfTheSummaryLine) {
    for (const auto& [word, number] :
         {Case{"63%", 63}, Case{"42", 42}, Case{"-7", -7}, Case{"+7", 7}, Case{"7.5%", 5},
          Case{"5%9%", 5}, Case{"12a34%", 34}, Case{"-5%", 5}, Case{"%8%", 8},
          Case{"9223372036854775807", std::numeric_limits<std::int64_t>::max()},
          Case{"9223372036854775808", none}, Case{"9223372036854775808%7%", none},
          Case{"abc", none}, Case{"%", none}, Case{"5.%", none}, Case{"+-7", none},
          Case{"63\t%", none},
          // Digits of other scripts are found, but make no number; other numerals are not found.
          Case{"٦٣%", none}, Case{"٦3%", none}, Case{"𝟞3%", none}, Case{"½3%", 3},
          Case{"六3%", 3}}) {
        EXPECT_EQ(parseFreeMemoryPercentage("System-wide memory free percentage: " + word), number)
            << word;
    }
}

TEST(FreeMemoryPercentage, TakesTheFirstLineThatYieldsANumber) {
    const std::string summary = "System-wide a b c ";
    for (const auto& [text, number] :
         {Case{"", none}, Case{"The system has 1 2 3 63%\n", none},
          Case{"Pages free: 1\n\n  " + summary + "  63% \n" + summary + "7%\n", 63},
          Case{"a b c d 5%System-wide", 5}, Case{summary + "x\n" + summary + "8% d\n", 8},
          Case{"System-wide\ta\u00a0b c d e 9%", 9}}) {
        EXPECT_EQ(parseFreeMemoryPercentage(text), number) << text;
    }
    for (const std::string end : {"\n", "\v", "\f", "\r", "\r\n", "\u0085", "\u2028", "\u2029"}) {
        const auto text = "System-wide a b" + end + " c 7%" + end + summary + "8%" + end;
        EXPECT_EQ(parseFreeMemoryPercentage(text), 8) << testing::PrintToString(end);
    }
    EXPECT_EQ(parseFreeMemoryPercentage("System-wide\x1c\u0084\u2027\u202a a b c 7%"), 7);
}

TEST(Utf8, RefusesWhatIsNotWellFormed) {
    for (const std::string text : {"", "a\n", "\x7f", "\u0080", "\u07ff", "\u0800", "\ud7ff",
                                   "\ue000", "\uffff", "\U00010000", "\U0010ffff"}) {
        EXPECT_TRUE(isUtf8(text)) << testing::PrintToString(text);
    }
    for (const std::string text :
         {"\x80", "\xc1\xbf", "\xc3", "\xc3(", "\xc3\xc3", "\xe0\x9f\xbf", "\xe2\x82",
          "\xe2\x28\xa1", "\xed\xa0\x80", "\xed\xbf\xbf", "\xf0\x9d\x9f", "\xf0\x8f\xbf\xbf",
          "\xf4\x90\x80\x80", "\xf5\x80\x80\x80", "a\xfe"}) {
        EXPECT_FALSE(isUtf8(text)) << testing::PrintToString(text);
    }
}

} // namespace
} // namespace tidewell
