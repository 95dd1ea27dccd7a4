#include "base/text/ByteText.h"
#include "base/text/TimeOfDay.h"
#include "tests/fakes/ScopedEnvironment.h"

#include <gtest/gtest.h>

#include <cmath>

namespace tidewell {
namespace {

using Variables = ScopedEnvironment::Variables;

constexpr double summer = 1719835407.9; // 2024-07-01 12:03:27.9 UTC
constexpr double winter = 1704110607;   // half a year earlier to the second

TEST(TimeOfDay, IsTheLocalesMediumTimeInTheMachinesZone) {
    const ScopedEnvironment environment(Variables{{"TZ", "CET-1CEST,M3.5.0,M10.5.0/3"}});
    using Case = std::tuple<double, const char*, const char*>;
    for (const auto& [time, locale, text] :
         {Case{summer, "de_DE.UTF-8", "14:03:27"}, Case{summer - 5 * 3600, "ja_JP", "9:03:27"},
          Case{winter, "de", "13:03:27"}, Case{-0.25, "de", "00:59:59"},
          Case{8.64e12, "de", "02:00:00"}, Case{8.64e12 + 1, "de", ""},
          Case{std::nan(""), "de", ""}, Case{winter, "nolanguage", "13:03:27"}}) {
        EXPECT_EQ(timeOfDayString(time, locale), text) << time << " " << locale;
    }
    EXPECT_TRUE(timeOfDayString(winter, "en_US").ends_with("PM"));
}

TEST(UserLocale, IsThatOfTheCategoryUnlessAllAreOverridden) {
    using Variable = Variables::value_type;
    const ScopedEnvironment environment(
        {Variable("TZ", "UTC0"), Variable("LC_ALL", ""), Variable("LANG", "fa_IR.UTF-8"),
         Variable("LC_NUMERIC", "de_DE.UTF-8"), Variable("LC_TIME", "/a/crash/in/ICU")});
    EXPECT_EQ(byteText(1'572'864), "1,5 MB");
    EXPECT_EQ(timeOfDayString(summer), "۱۲:۰۳:۲۷");
    const ScopedEnvironment overridden(Variables{{"LC_ALL", "C"}});
    EXPECT_EQ(byteText(1'572'864), "1.5 MB");
}

} // namespace
} // namespace tidewell
