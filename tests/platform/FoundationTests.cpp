#include "tests/fakes/MemoryUserDefaults.h"

#include <gtest/gtest.h>

namespace tidewell {
namespace {

TEST(UserDefaults, ReadsNumbersAndBooleansAsEachOtherAndTellsAfterWriting) {
    MemoryUserDefaults defaults;
    double seen = 0;
    const auto subscription =
        defaults.didChange([&](std::string_view key) { seen = defaults.doubleForKey(key); });
    defaults.set("a", 2.5);
    EXPECT_EQ(seen, 2.5);
    EXPECT_TRUE(defaults.boolForKey("a"));
    defaults.set("a", true);
    EXPECT_EQ(defaults.doubleForKey("a"), 1);
    EXPECT_EQ(defaults.dataForKey("a"), std::nullopt);
    defaults.set("a", Data{0, 255});
    EXPECT_EQ(defaults.doubleForKey("a"), 0);
}

} // namespace
} // namespace tidewell
