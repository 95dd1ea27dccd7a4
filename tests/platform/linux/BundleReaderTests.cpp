#include "platform/linux/BundleReader.h"
#include "support/BundleInformation.h"
#include "tests/fakes/RecordingLog.h"
#include "tests/fakes/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tidewell {
namespace {

TEST(BundleReader, FindsTheDictionaryThatBelongsToTheRunningProgram) {
    RecordingLog log;
    const Bundle bundle = readBundle(installedInfoFile(), log);
    EXPECT_EQ(bundle.identifier(), "net.tidewell.Tidewell");
    EXPECT_EQ(applicationName(bundle), "Tidewell");
    EXPECT_THAT(version(bundle), testing::MatchesRegex("[0-9]+\\.[0-9]+\\.[0-9]+"));
    EXPECT_THAT(log.takeLines(), testing::ElementsAre());
}

TEST(BundleReader, LeavesOutWhatItCannotUseAndSaysOnceWhenThatIsAll) {
    const TemporaryFolder folder;
    const auto file = folder.path() / "Info.json";
    RecordingLog log;
    const std::string some = R"({"CFBundleName": 3, "CFBundleShortVersionString": "2.0"})";
    for (const auto& content :
         {some, some.substr(1), "[" + some + "]", std::string("{\"\": \"\xfc\"}"),
          some + std::string(2U << 20U, ' ')}) {
        writeText(file, content);
        const Bundle bundle = readBundle(file, log);
        EXPECT_EQ(applicationName(bundle), "Unknown");
        EXPECT_EQ(version(bundle), content == some ? "2.0" : "No version");
        EXPECT_EQ(log.takeLines().size(), content == some ? 0U : 1U) << content.substr(0, 99);
    }
}

} // namespace
} // namespace tidewell
