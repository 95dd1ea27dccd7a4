#include "support/ByteText.h"

#include <gtest/gtest.h>

#include <limits>

namespace tidewell {
namespace {

constexpr std::int64_t kilo = 1024;
constexpr std::int64_t mega = kilo * 1024;
constexpr std::int64_t giga = mega * 1024;
constexpr std::int64_t tera = giga * 1024;

std::string english(std::int64_t count) {
    return byteText(count, "en_US");
}

TEST(ByteText, RoundsToTheDecimalsOfItsUnitAndCarriesIntoTheNextOne) {
    EXPECT_EQ(english(0), "0 bytes");
    EXPECT_EQ(english(1), "1 byte");
    EXPECT_EQ(english(1023), "1,023 bytes");
    EXPECT_EQ(english(kilo * 3 / 2), "2 KB");
    EXPECT_EQ(english(kilo * 5 / 2), "2 KB") << "halves go to the even digit";
    EXPECT_EQ(english(kilo * 5 / 2 + 1), "3 KB");
    EXPECT_EQ(english(mega - kilo / 2 - 1), "1,023 KB");
    EXPECT_EQ(english(mega - kilo / 2), "1 MB");
    EXPECT_EQ(english(mega * 5 / 4), "1.2 MB");
    EXPECT_EQ(english(mega * 7 / 4), "1.8 MB");
    EXPECT_EQ(english(-mega * 3 / 2), "-1.5 MB");
    EXPECT_EQ(english(giga - mega / 20 - 1), "1,023.9 MB");
    EXPECT_EQ(english(giga - 1), "1 GB");
    EXPECT_EQ(english(giga * 123 / 100), "1.23 GB");
    EXPECT_EQ(english(tera - giga / 100), "1,023.99 GB");
    EXPECT_EQ(english(tera - 1), "1 TB");
    EXPECT_EQ(english(tera * 41 / 20), "2.05 TB");
    EXPECT_EQ(english(std::numeric_limits<std::int64_t>::max()), "8,388,608 TB");
    EXPECT_EQ(english(std::numeric_limits<std::int64_t>::min()), "-8,388,608 TB");
}

TEST(ByteText, SpeaksTheLocalesNumbers) {
    const std::int64_t count = giga * 1999 / 2;
    EXPECT_EQ(byteText(count, "de_DE.UTF-8"), "999,5 GB");
    EXPECT_EQ(byteText(1023, "fa_IR"), "۱٬۰۲۳ bytes");
    EXPECT_EQ(byteText(count, "hi_IN@numbers=deva"), "९९९.५ GB");
    EXPECT_EQ(byteText(200'000 * tera, "hi_IN"), "2,00,000 TB");
    EXPECT_EQ(byteText(count, "no such locale"), "999.5 GB");
}

} // namespace
} // namespace tidewell
