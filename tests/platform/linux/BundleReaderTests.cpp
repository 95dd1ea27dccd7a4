#include "platform/linux/BundleReader.h"
#include "support/BundleInformation.h"
#include "tests/fakes/RecordingLog.h"
#include "tests/fakes/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/stat.h>

namespace tidewell {
namespace {

using testing::ElementsAre;
using testing::StartsWith;

TEST(BundleReader, FindsTheDictionaryThatBelongsToTheRunningProgram) {
    RecordingLog log;
    const Bundle bundle = readBundle(installedInfoFile(), log);
    EXPECT_THAT(log.takeLines(), ElementsAre());
    EXPECT_EQ(bundle.identifier(), "net.tidewell.Tidewell");
    EXPECT_EQ(applicationName(bundle), "Tidewell");
    EXPECT_THAT(version(bundle), testing::MatchesRegex("[0-9]+\\.[0-9]+\\.[0-9]+"));
    EXPECT_THAT(buildNumber(bundle), testing::MatchesRegex("[0-9]+"));
    EXPECT_EQ(copyright(bundle), "Copyright © 2026 The Tidewell developers");
}

TEST(BundleReader, LeavesOutWhatIsNoText) {
    const TemporaryFolder folder;
    const auto file = folder.path() / "Info.json";
    writeText(file, R"({"CFBundleName": 3, "CFBundleVersion": ["1"], "CFBundleIdentifier": null,
                        "CFBundleShortVersionString": "2.0", "Other": {"CFBundleName": "x"}})");
    RecordingLog log;
    const Bundle bundle = readBundle(file, log);
    EXPECT_EQ(applicationName(bundle), "Unknown");
    EXPECT_EQ(version(bundle), "2.0");
    EXPECT_EQ(buildNumber(bundle), "No build");
    EXPECT_EQ(bundleIdentifier(bundle), "net.tidewell.Tidewell");
    EXPECT_THAT(log.takeLines(), ElementsAre());
}

TEST(BundleReader, ReadsNothingFromAFileItCannotUseAndSaysSoOnce) {
    const TemporaryFolder folder;
    writeText(folder.path() / "half", R"({"CFBundleName": "Tide)");
    writeText(folder.path() / "list", R"(["CFBundleName"])");
    writeText(folder.path() / "latin", "{\"CFBundleName\": \"Fl\xfcgel\"}");
    writeText(folder.path() / "huge", std::string(2U << 20U, ' ') + "{}");
    ASSERT_EQ(::mkfifo((folder.path() / "pipe").c_str(), 0600), 0);
    RecordingLog log;
    for (const auto* name : {"missing", "half", "list", "latin", "huge", "pipe", ""}) {
        const Bundle bundle = readBundle(folder.path() / name, log);
        EXPECT_EQ(applicationName(bundle), "Unknown") << name;
        EXPECT_EQ(version(bundle), "No version") << name;
        EXPECT_EQ(copyright(bundle), "No copyright information found.") << name;
        EXPECT_THAT(log.takeLines(),
                    ElementsAre(StartsWith("error general readBundle(infoFile:log:): ")))
            << name;
    }
}

} // namespace
} // namespace tidewell
