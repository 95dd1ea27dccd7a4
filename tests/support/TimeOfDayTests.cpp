#include "support/ByteText.h"
#include "support/TimeOfDay.h"
#include "tests/fakes/ScopedEnvironment.h"

#include <gtest/gtest.h>

#include <cmath>

namespace tidewell {
namespace {

using Variables = ScopedEnvironment::Variables;

// 2024-07-01 12:03:27.9 UTC, and half a year earlier to the second.
constexpr double summer = 1719835407.9;
constexpr double winter = 1704110607;

TEST(TimeOfDay, IsTheLocalesMediumTimeInTheMachinesZone) {
    const auto check = [](const char* zone, double time, const char* locale, const char* text) {
        const ScopedEnvironment environment(Variables{{"TZ", zone}});
        EXPECT_EQ(timeOfDayString(time, locale), text) << zone << " " << time << " " << locale;
    };
    check("UTC0", summer, "de_DE.UTF-8", "12:03:27");
    check("UTC0", summer - 3 * 3600, "ja_JP", "9:03:27");
    check("CET-1CEST,M3.5.0,M10.5.0/3", summer, "de", "14:03:27");
    check("CET-1CEST,M3.5.0,M10.5.0/3", winter, "de", "13:03:27");
    check("UTC0", -0.25, "de", "23:59:59");
    check("UTC0", 8.64e12, "de", "00:00:00");
    check("UTC0", 8.64e12 + 1, "de", "");
    check("UTC0", std::nan(""), "de", "");
    // Older versions of the locale data have a plain space before "AM" and "PM".
    const auto english = timeOfDayString(winter, "en_US");
    EXPECT_TRUE(english.ends_with(" PM") || english.ends_with("\u202fPM")) << english;
}

TEST(UserLocale, IsThatOfTheCategoryUnlessAllAreOverridden) {
    const ScopedEnvironment environment(Variables{{"TZ", "UTC0"},
                                                  {"LC_ALL", ""},
                                                  {"LANG", "fa_IR.UTF-8"},
                                                  {"LC_NUMERIC", "de_DE.UTF-8"},
                                                  {"LC_TIME", ""}});
    EXPECT_EQ(byteText(1'572'864), "1,5 MB");
    EXPECT_EQ(timeOfDayString(summer), "۱۲:۰۳:۲۷");
    const ScopedEnvironment overridden(Variables{{"LC_ALL", "C"}});
    EXPECT_EQ(byteText(1'572'864), "1.5 MB");
}

} // namespace
} // namespace tidewell
