#include "services/SparkleModel.h"
#include "services/StoredPreferences.h"
#include "tests/fakes/FakeUpdater.h"
#include "tests/fakes/ManualClock.h"
#include "tests/fakes/ManualExecutor.h"
#include "tests/fakes/MemoryUserDefaults.h"
#include "tests/fakes/RecordingLog.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

namespace tidewell {
namespace {

using testing::ElementsAre;

class SparkleModelTest : public testing::Test {
protected:
    void makeModel(std::optional<PlatformError> startError = std::nullopt) {
        model.emplace(SparkleModel::Environment{
            defaults, mainThread, clock, log, [&](SPUUpdaterDelegate& delegate) {
                updater = std::make_shared<FakeUpdater>(delegate);
                updater->startError = startError;
                return updater;
            }});
    }
    /// The silent checks that were made since the last call, all jobs done.
    int takeChecks() {
        mainThread.drain();
        return std::exchange(updater->silentChecks, 0);
    }
    int takeChecksAfter(double seconds) {
        clock.advance(seconds);
        return takeChecks();
    }

    MemoryUserDefaults defaults;
    ManualExecutor mainThread;
    ManualClock clock;
    RecordingLog log;
    std::shared_ptr<FakeUpdater> updater;
    std::optional<SparkleModel> model;
};

TEST_F(SparkleModelTest, StartsTheUpdaterWhereTheUserWantsChecksAndDoesWithoutOneThatCannotStart) {
    makeModel(PlatformError{"no feed"});
    EXPECT_EQ(model->updater(), updater.get());
    EXPECT_EQ(updater->starts, 0);
    EXPECT_FALSE(model->canCheckForUpdates());
    updater->setCanCheck(true);
    EXPECT_TRUE(model->canCheckForUpdates());
    model->setCanCheckForUpdates(false);
    EXPECT_FALSE(model->canCheckForUpdates());

    write(defaults, preferences::enableAutomaticChecks, true);
    makeModel(PlatformError{"no feed"});
    updater->checks = true;
    EXPECT_EQ(model->updater(), nullptr);
    EXPECT_THAT(log.takeLines(),
                ElementsAre("error general init(): Failed to start updater: no feed"));
    model->scheduleUpdateChecks();
    model->startUpdateCheckLoop();
    EXPECT_EQ(takeChecks(), 0);

    makeModel();
    EXPECT_EQ(updater->starts, 1);
    EXPECT_EQ(model->updater(), updater.get());
    EXPECT_TRUE(model->canCheckForUpdates());
}

TEST_F(SparkleModelTest, ChecksAtOnceAndAgainAfterTheIntervalThatHeldAtItsStart) {
    makeModel();
    model->scheduleUpdateChecks();
    EXPECT_EQ(takeChecks(), 1) << "one, without automatic checks";
    EXPECT_EQ(takeChecksAfter(1e6), 0);

    updater->checks = true;
    model->scheduleUpdateChecks();
    EXPECT_EQ(takeChecks(), 1);
    updater->interval = 60;
    EXPECT_EQ(takeChecksAfter(3599), 0);
    EXPECT_EQ(takeChecksAfter(1), 1);
    EXPECT_EQ(takeChecksAfter(3600), 1);
    model->scheduleUpdateChecks();
    model->scheduleUpdateChecks();
    EXPECT_EQ(takeChecks(), 1) << "one loop only";
    EXPECT_EQ(takeChecksAfter(60), 1);

    updater->checks = false;
    model->scheduleUpdateChecks();
    EXPECT_EQ(takeChecks(), 1);
    EXPECT_EQ(takeChecksAfter(60), 0) << "the loop is gone";

    constexpr double infinity = std::numeric_limits<double>::infinity();
    for (const double interval : {-1.0, -infinity, infinity, 1e300, std::nan("")}) {
        updater->interval = interval;
        model->startUpdateCheckLoop();
        EXPECT_EQ(takeChecks(), 1) << interval;
        EXPECT_EQ(takeChecksAfter(1e9), 0) << interval;
    }
    updater->interval = 60;
    model->startUpdateCheckLoop();
    EXPECT_EQ(takeChecks(), 1);
    model.reset();
    EXPECT_EQ(updater.use_count(), 1) << "not kept by the loop";
    EXPECT_EQ(takeChecksAfter(60), 0);
}

TEST_F(SparkleModelTest, PublishesAndLogsWhatTheChecksFound) {
    makeModel();
    std::vector<bool> before;
    const auto changes =
        model->objectWillChange([&] { before.push_back(model->isUpdateAvailable()); });
    updater->find("1.10");
    EXPECT_TRUE(model->isUpdateAvailable());
    updater->findNothing();
    EXPECT_FALSE(model->isUpdateAvailable());
    EXPECT_THAT(before, ElementsAre(false, true));
    EXPECT_THAT(log.takeLines(),
                ElementsAre("info general updater(_:didFindValidUpdate:): Update available: 1.10",
                            "info general updaterDidNotFindUpdate(_:): No update found."));
}

} // namespace
} // namespace tidewell
