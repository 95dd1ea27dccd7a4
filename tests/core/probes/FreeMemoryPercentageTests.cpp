#include "core/probes/darwin/FreeMemoryPercentage.h"
#include "core/probes/darwin/Utf8.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace tidewell {
namespace {

TEST(FreeMemoryPercentage, ReadsTheFifthWordOfTheSummaryLine) {
    const std::pair<std::string, std::optional<std::int64_t>> words[] = {
        {"63%", 63},
        {"42", 42},
        {"7.5%", 5},
        {"63%%", 63},
        {"5%9%", 5},
        {"12a34%", 34},
        {"-5%", 5},
        {"%8%", 8},
        {"-7", -7},
        {"+7", 7},
        {"0000000000000000000000063%", 63},
        {"9223372036854775807", std::numeric_limits<std::int64_t>::max()},
        {"-9223372036854775808", std::numeric_limits<std::int64_t>::min()},
        {"9223372036854775808", std::nullopt},
        {"9223372036854775808%7%", std::nullopt}, // only the first match is tried
        {"abc", std::nullopt},
        {"%", std::nullopt},
        {"5.", std::nullopt},
        {"5.%", std::nullopt},
        {"+-7", std::nullopt},
        {"--7", std::nullopt},
        {"+", std::nullopt},
        {"0x1f", std::nullopt},
        {"63\t", std::nullopt},
        {"63\t%", std::nullopt},
        {"63％", std::nullopt}, // a full-width percent sign
        // Digits of other scripts are found, but make no number; other numerals are not found.
        {"٦٣%", std::nullopt},
        {"٦3%", std::nullopt},
        {"𝟞3%", std::nullopt},
        {"９3%", std::nullopt},
        {"½3%", 3},
        {"Ⅵ3%", 3},
        {"六3%", 3},
    };
    for (const auto& [word, number] : words) {
        EXPECT_EQ(parseFreeMemoryPercentage("System-wide memory free percentage: " + word), number)
            << word;
    }
}

TEST(FreeMemoryPercentage, TakesTheFirstLineThatYieldsANumber) {
    const std::pair<std::string, std::optional<std::int64_t>> texts[] = {
        {"", std::nullopt},
        {"\n\n", std::nullopt},
        {"The system has 1 2 3 63%\n", std::nullopt},
        {"system-wide memory free percentage: 63%\n", std::nullopt},
        {"Pages free: 1\n\nSystem-wide memory free percentage: 63%\nSystem-wide a b c 7%\n", 63},
        {"  System-wide   memory  free    percentage:     63%   \n", 63},
        {"a b c d 5% System-wide", 5},
        {"a b c d 5%System-wide", 5},
        {"System-wide a b c\nSystem-wide a b c abc\nSystem-wide a b c 8% d\n", 8},
        {"System-wide\ta b c d 9%", 9},               // a tab does not part words
        {"System-wide\u00a0x a b c 9%", 9},           // nor does a space without a break
        {"System-wide a b c \r\nd 7%", std::nullopt}, // a line end does
    };
    for (const auto& [text, number] : texts) {
        EXPECT_EQ(parseFreeMemoryPercentage(text), number) << text;
    }
    for (const std::string separator :
         {"\n", "\v", "\f", "\r", "\r\n", "\u0085", "\u2028", "\u2029"}) {
        EXPECT_EQ(parseFreeMemoryPercentage("System-wide a b" + separator + " c 7%" + separator +
                                            "System-wide a b c 8%" + separator + "d"),
                  8)
            << testing::PrintToString(separator);
    }
    for (const std::string other : {"\x1c", "\u0084", "\u2027", "\u202a"}) {
        EXPECT_EQ(parseFreeMemoryPercentage("System-wide a b" + other + " c 7%"), 7)
            << testing::PrintToString(other);
    }
}

TEST(Utf8, RefusesWhatIsNotWellFormed) {
    for (const std::string text : {"", "a\n", "ä", "€", "𝟞", "\x7f", "\u0080", "\u07ff", "\u0800",
                                   "\ud7ff", "\ue000", "\uffff", "\U00010000", "\U0010ffff"}) {
        EXPECT_TRUE(isUtf8(text)) << testing::PrintToString(text);
    }
    EXPECT_TRUE(isUtf8(std::string_view("\0", 1)));
    for (const std::string text :
         {"\x80", "\xbf", "\xc0\xaf", "\xc1\xbf", "\xc3", "\xc3(", "\xc3\xc3", "\xe0\x80\xaf",
          "\xe0\x9f\xbf", "\xe2\x82", "\xe2\x28\xa1", "\xed\xa0\x80", "\xed\xbf\xbf",
          "\xf0\x9d\x9f", "\xf0\x8f\xbf\xbf", "\xf4\x90\x80\x80", "\xf5\x80\x80\x80", "\xff",
          "a\xfe"}) {
        EXPECT_FALSE(isUtf8(text)) << testing::PrintToString(text);
    }
}

} // namespace
} // namespace tidewell
