#include "base/text/ByteText.h"
#include "base/text/IntegerText.h"

#include <gtest/gtest.h>

namespace tidewell {
namespace {

constexpr std::int64_t kilo = 1024;
constexpr std::int64_t mega = kilo * 1024;
constexpr std::int64_t giga = mega * 1024;
constexpr std::int64_t tera = giga * 1024;

TEST(ByteText, RoundsToTheDecimalsOfItsUnitAndCarriesIntoTheNextOne) {
    using Case = std::pair<std::int64_t, const char*>;
    for (const auto& [count, text] :
         {Case{0, "0 bytes"}, Case{1, "1 byte"}, Case{1023, "1,023 bytes"},
          Case{kilo * 5 / 2, "2 KB"}, // halves go to the even digit
          Case{mega - kilo / 2 - 1, "1,023 KB"}, Case{mega - kilo / 2, "1 MB"},
          Case{mega * 5 / 4, "1.2 MB"}, Case{-mega * 3 / 2, "-1.5 MB"},
          Case{giga - mega / 20 - 1, "1,023.9 MB"}, Case{tera - giga / 100, "1,023.99 GB"},
          Case{tera - 1, "1 TB"}, Case{tera * 41 / 20, "2.05 TB"}, Case{INT64_MAX, "8,388,608 TB"},
          Case{INT64_MIN, "-8,388,608 TB"}}) {
        EXPECT_EQ(byteText(count, "en_US"), text);
    }
}

TEST(ByteText, SpeaksTheLocalesNumbers) {
    const std::int64_t count = giga * 1999 / 2;
    EXPECT_EQ(byteText(count, "de_DE.UTF-8"), "999,5 GB");
    EXPECT_EQ(byteText(count, "hi_IN@numbers=deva"), "९९९.५ GB");
    EXPECT_EQ(byteText(200'000 * tera, "hi_IN"), "2,00,000 TB");
    EXPECT_EQ(byteText(count, "no such locale"), "999.5 GB");
    EXPECT_EQ(integerText(-1234, "hi_IN@numbers=deva"), "-१२३४");
}

} // namespace
} // namespace tidewell
