#pragma once

#include "base/ports/SPUUpdater.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

namespace tidewell {

/// Keeps what an updater says.
struct RecordingDelegate final : SPUUpdaterDelegate {
    void updaterDidFindValidUpdate(SPUUpdater& /*updater*/, const SUAppcastItem& item) override {
        answers.push_back(item.versionString);
    }
    void updaterDidNotFindUpdate(SPUUpdater& /*updater*/) override { answers.emplace_back("none"); }

    std::vector<std::string> answers;
};

/// What every updater has to do, the one that the tests of others stand on included. Of an updater
/// that was not started yet and could be. `endCheck(version)` waits for the check under way to find
/// that version, or nothing where it is empty.
inline void expectContract(SPUUpdater& updater, RecordingDelegate& delegate,
                           const std::function<void(const std::string& version)>& endCheck) {
    std::vector<bool> told;
    const auto subscription =
        updater.observeCanCheckForUpdates([&told](bool canCheck) { told.push_back(canCheck); });
    updater.checkForUpdateInformation(); // not started: nothing
    EXPECT_TRUE(updater.startUpdater());
    EXPECT_TRUE(updater.startUpdater());
    EXPECT_THAT(told, testing::ElementsAre(false, true));
    for (const std::string version : {"1.10", ""}) {
        updater.checkForUpdateInformation();
        EXPECT_FALSE(updater.canCheckForUpdates());
        updater.checkForUpdateInformation(); // one at a time
        endCheck(version);
        EXPECT_TRUE(updater.canCheckForUpdates());
    }
    EXPECT_THAT(delegate.answers, testing::ElementsAre("1.10", "none"));
    EXPECT_THAT(told, testing::ElementsAre(false, true, false, true, false, true));

    for (const bool choice : {true, false}) {
        updater.setAutomaticallyChecksForUpdates(choice);
        updater.setAutomaticallyDownloadsUpdates(!choice);
        EXPECT_EQ(updater.automaticallyChecksForUpdates(), choice);
        EXPECT_EQ(updater.automaticallyDownloadsUpdates(), !choice);
    }
    updater.setUpdateCheckInterval(604800);
    EXPECT_EQ(updater.updateCheckInterval(), 604800);
    updater.checkForUpdates();
    EXPECT_FALSE(updater.canCheckForUpdates());
}

} // namespace tidewell
