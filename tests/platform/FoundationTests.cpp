#include "platform/foundation/UUID.h"
#include "tests/fakes/MemoryUserDefaults.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tidewell {
namespace {

TEST(UUID, IsFreshEachTimeAndReadsBackItsCanonicalText) {
    const UUID uuid = UUID::random();
    EXPECT_NE(uuid, UUID::random());
    EXPECT_THAT(uuid.text(), testing::MatchesRegex("[0-9A-F]{8}-[0-9A-F]{4}-4[0-9A-F]{3}-"
                                                   "[89AB][0-9A-F]{3}-[0-9A-F]{12}"));
    EXPECT_EQ(UUID::parse(uuid.text()), uuid);
    EXPECT_EQ(UUID::parse("0188ad5e-0000-4000-8000-00000000abcd")->text(),
              "0188AD5E-0000-4000-8000-00000000ABCD");
}

TEST(UUID, RefusesWhatIsNotCanonical) {
    for (const auto* text :
         {"", "0188AD5E-0000-4000-8000-00000000ABC", "0188AD5E-0000-4000-8000-00000000ABCDE",
          "0188AD5E00000-4000-8000-00000000ABCD", "0188AD5G-0000-4000-8000-00000000ABCD",
          "{188AD5E-0000-4000-8000-00000000ABC}"}) {
        EXPECT_EQ(UUID::parse(text), std::nullopt) << text;
    }
}

TEST(UserDefaults, ReadsWhatIsMissingOrOfAnotherTypeAsEmptyAndTellsAfterWriting) {
    MemoryUserDefaults defaults;
    EXPECT_EQ(defaults.doubleForKey("a"), 0);
    EXPECT_FALSE(defaults.boolForKey("a"));
    EXPECT_EQ(defaults.dataForKey("a"), std::nullopt);

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
    EXPECT_EQ(defaults.dataForKey("a"), (Data{0, 255}));
    defaults.set("a", std::string("text"));
    EXPECT_FALSE(defaults.boolForKey("a"));
}

} // namespace
} // namespace tidewell
