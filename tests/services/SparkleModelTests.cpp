#include "services/SparkleModel.h"
#include "services/StoredPreferences.h"
#include "tests/fakes/FakeUpdater.h"
#include "tests/fakes/Surroundings.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

namespace tidewell {
namespace {

using testing::ElementsAre;

class SparkleModelTest : public Surroundings {
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

    std::shared_ptr<FakeUpdater> updater;
    std::optional<SparkleModel> model;
};

TEST_F(SparkleModelTest, StartsTheUpdaterWhereTheUserWantsChecksAndDoesWithoutOneThatCannotStart) {
    makeModel();
    EXPECT_EQ(updater->starts, 0);
    defaults.set(preferences::enableAutomaticChecks.key, 1.0); // a number that means yes
    makeModel(PlatformError{"no feed"});
    updater->checks = true;
    EXPECT_EQ(model->updater(), nullptr);
    EXPECT_THAT(log.takeLines(),
                ElementsAre("error general init(): Failed to start updater: no feed"));
    model->scheduleUpdateChecks();
    EXPECT_EQ(takeChecks(), 0);

    makeModel();
    EXPECT_EQ(updater->starts, 1);
    EXPECT_EQ(model->updater(), updater.get());
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
    model->scheduleUpdateChecks();
    model->scheduleUpdateChecks();
    EXPECT_EQ(takeChecks(), 1) << "one loop only";
    EXPECT_EQ(takeChecksAfter(60), 1);

    for (const double interval : {-1.0, 1e300, std::nan("")}) {
        updater->interval = interval;
        model->startUpdateCheckLoop();
        EXPECT_EQ(takeChecks(), 1) << interval;
        EXPECT_EQ(takeChecksAfter(1e9), 0) << interval;
    }
    updater->interval = 60;
    model->startUpdateCheckLoop();
    takeChecks();
    model.reset();
    EXPECT_EQ(updater.use_count(), 1) << "not kept by the loop";
    EXPECT_EQ(takeChecksAfter(60), 0);
}

TEST_F(SparkleModelTest, PublishesAndLogsWhatTheChecksFound) {
    makeModel();
    updater->find("1.10");
    EXPECT_TRUE(model->isUpdateAvailable());
    updater->findNothing();
    EXPECT_FALSE(model->isUpdateAvailable());
    EXPECT_THAT(log.takeLines(),
                ElementsAre("info general updater(_:didFindValidUpdate:): Update available: 1.10",
                            "info general updaterDidNotFindUpdate(_:): No update found."));
}

} // namespace
} // namespace tidewell
