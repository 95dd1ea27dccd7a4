#include "services/StoredPreferences.h"
#include "tests/fakes/MemoryUserDefaults.h"

#include <gtest/gtest.h>

namespace tidewell {
namespace {

TEST(StoredPreferences, HaveDefaultsForViewsAloneUntilTheyAreWritten) {
    MemoryUserDefaults defaults;
    EXPECT_EQ(readForView(defaults, preferences::pollingInterval), 5.0);
    EXPECT_EQ(readPlainly(defaults, preferences::pollingInterval), 0.0);
    EXPECT_TRUE(readForView(defaults, preferences::confimQuitOnExit));
    EXPECT_EQ(readForView(defaults, preferences::auxiliaryWindowPos),
              (Data{'[', '0', ',', '0', ']'}));
    EXPECT_EQ(defaults.value(preferences::pollingInterval.key), std::nullopt) << "not by reading";
    write(defaults, preferences::confimQuitOnExit, false);
    EXPECT_FALSE(readForView(defaults, preferences::confimQuitOnExit));
    defaults.set(preferences::pollingInterval.key, std::string("often"));
    EXPECT_EQ(readForView(defaults, preferences::pollingInterval), 5.0) << "of another type";
}

} // namespace
} // namespace tidewell
