#include "support/ByteText.h"
#include "support/TimeOfDay.h"
#include "tests/fakes/ScopedEnvironment.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace tidewell {
namespace {

using Variables = ScopedEnvironment::Variables;

/// With the plain space that older versions of the locale data put before "AM" and "PM".
std::string plainSpaces(std::string text) {
    const std::string narrow = "\u202f";
    for (auto at = text.find(narrow); at != std::string::npos; at = text.find(narrow)) {
        text.replace(at, narrow.size(), " ");
    }
    return text;
}

// 2024-07-01 12:03:27.9 UTC, and half a year earlier to the second.
constexpr double summer = 1719835407.9;
constexpr double winter = 1704110607;

TEST(TimeOfDay, IsTheLocalesMediumTime) {
    const ScopedEnvironment zone(Variables{{"TZ", "UTC0"}});
    EXPECT_EQ(plainSpaces(timeOfDayString(summer, "en_US")), "12:03:27 PM");
    EXPECT_EQ(timeOfDayString(summer, "de_DE.UTF-8"), "12:03:27");
    EXPECT_EQ(timeOfDayString(summer - 3 * 3600, "ja_JP"), "9:03:27");
    EXPECT_EQ(plainSpaces(timeOfDayString(summer, "ar_EG")), "١٢:٠٣:٢٧ م");
}

TEST(TimeOfDay, FollowsTheMachinesClockThroughSummerTimeAndAChangeOfZone) {
    {
        const ScopedEnvironment zone(Variables{{"TZ", "CET-1CEST,M3.5.0,M10.5.0/3"}});
        EXPECT_EQ(timeOfDayString(summer, "de"), "14:03:27");
        EXPECT_EQ(timeOfDayString(winter, "de"), "13:03:27");
    }
    const ScopedEnvironment zone(Variables{{"TZ", "NPT-5:45"}});
    EXPECT_EQ(timeOfDayString(summer, "de"), "17:48:27");
}

TEST(TimeOfDay, IsDefinedForEveryTimestamp) {
    const ScopedEnvironment zone(Variables{{"TZ", "UTC0"}});
    EXPECT_EQ(timeOfDayString(-1.0, "de"), "23:59:59");
    EXPECT_EQ(timeOfDayString(-0.25, "de"), "23:59:59");
    EXPECT_EQ(timeOfDayString(8.64e12, "de"), "00:00:00");
    for (const double none :
         {std::nan(""), std::numeric_limits<double>::infinity(), -1e300, 8.64e12 + 1}) {
        EXPECT_EQ(timeOfDayString(none, "de"), "") << none;
    }
}

TEST(UserLocale, IsThatOfTheCategoryUnlessAllAreOverridden) {
    const ScopedEnvironment environment(Variables{{"TZ", "UTC0"},
                                                  {"LC_ALL", ""},
                                                  {"LANG", "en_US.UTF-8"},
                                                  {"LC_NUMERIC", "de_DE.UTF-8"},
                                                  {"LC_TIME", "fa_IR"}});
    EXPECT_EQ(byteText(1'572'864), "1,5 MB");
    EXPECT_EQ(timeOfDayString(summer), "۱۲:۰۳:۲۷");
    {
        const ScopedEnvironment without(Variables{{"LC_NUMERIC", ""}, {"LC_TIME", ""}});
        EXPECT_EQ(byteText(1'572'864), "1.5 MB");
        EXPECT_EQ(plainSpaces(timeOfDayString(summer)), "12:03:27 PM");
    }
    const ScopedEnvironment overridden(Variables{{"LC_ALL", "C"}});
    EXPECT_EQ(byteText(1'572'864), "1.5 MB");
}

} // namespace
} // namespace tidewell
