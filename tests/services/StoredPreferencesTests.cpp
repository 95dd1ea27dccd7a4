#include "services/StoredPreferences.h"
#include "tests/fakes/MemoryUserDefaults.h"

#include <gtest/gtest.h>

#include <limits>

namespace tidewell {
namespace {

Data dataOf(std::string_view text) {
    return {text.begin(), text.end()};
}

TEST(StoredPreferences, ShowTheirDefaultsWithoutWritingThem) {
    MemoryUserDefaults defaults;
    EXPECT_EQ(readForView(defaults, preferences::pollingInterval), 5.0);
    EXPECT_EQ(readPlainly(defaults, preferences::pollingInterval), 0.0);
    EXPECT_TRUE(readForView(defaults, preferences::confimQuitOnExit));
    EXPECT_FALSE(readPlainly(defaults, preferences::confimQuitOnExit));
    EXPECT_FALSE(readForView(defaults, preferences::startAtLogin));
    EXPECT_EQ(readForView(defaults, preferences::auxiliaryWindowPos), dataOf("[0,0]"));
    EXPECT_EQ(readPlainly(defaults, preferences::auxiliaryWindowPos), std::nullopt);
    for (const auto key : {preferences::pollingInterval.key, preferences::confimQuitOnExit.key,
                           preferences::startAtLogin.key, preferences::auxiliaryWindowPos.key}) {
        EXPECT_EQ(defaults.value(key), std::nullopt) << key;
    }
}

TEST(StoredPreferences, GiveWhatWasWrittenToBothWaysOfReading) {
    MemoryUserDefaults defaults;
    write(defaults, preferences::confimQuitOnExit, false);
    EXPECT_FALSE(readForView(defaults, preferences::confimQuitOnExit));
    write(defaults, preferences::pollingInterval, 3);
    EXPECT_EQ(readForView(defaults, preferences::pollingInterval), 3.0);
    EXPECT_EQ(readPlainly(defaults, preferences::pollingInterval), 3.0);
    write(defaults, preferences::auxiliaryWindowPos, dataOf("[1,2]"));
    EXPECT_EQ(readForView(defaults, preferences::auxiliaryWindowPos), dataOf("[1,2]"));
    defaults.set(preferences::pollingInterval.key, std::string("often"));
    EXPECT_EQ(readForView(defaults, preferences::pollingInterval), 5.0) << "of another type";
}

TEST(StoredPreferences, NeverPauseTheLoopsForLessThanASecond) {
    MemoryUserDefaults defaults;
    EXPECT_EQ(pollingIntervalForLoops(defaults), 1.0);
    constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
    for (const auto& [stored, interval] : {std::pair{0.2, 1.0},
                                           {-3.0, 1.0},
                                           {1.0, 1.0},
                                           {1.5, 1.5},
                                           {10.0, 10.0},
                                           {notANumber, 1.0}}) {
        write(defaults, preferences::pollingInterval, stored);
        EXPECT_EQ(pollingIntervalForLoops(defaults), interval) << stored;
    }
    defaults.set(preferences::pollingInterval.key, std::string("9"));
    EXPECT_EQ(pollingIntervalForLoops(defaults), 1.0);
}

} // namespace
} // namespace tidewell
