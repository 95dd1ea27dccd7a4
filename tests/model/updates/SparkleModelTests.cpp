#include "model/preferences/StoredPreferences.h"
#include "tests/fakes/UpdaterContract.h"
#include "tests/fakes/UpdaterSurroundings.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

namespace tidewell {
namespace {

using testing::ElementsAre;

TEST(FakeUpdater, DoesWhatUpdatersDo) {
    RecordingDelegate delegate;
    FakeUpdater updater(delegate);
    expectContract(updater, delegate, [&updater](const std::string& version) {
        version.empty() ? updater.findNothing() : updater.find(version);
    });
}

class SparkleModelTest : public UpdaterSurroundings {
protected:
    /// The silent checks of the next `seconds`, those that are due included.
    int checksIn(double seconds) {
        pass(seconds);
        updater->findNothing();
        return std::exchange(updater->silentChecks, 0);
    }

    std::shared_ptr<SparkleModel> model = makeUpdates();
};

TEST_F(SparkleModelTest, StartsTheUpdaterWhereTheUserWantsChecksAndDoesWithoutOneThatCannotStart) {
    EXPECT_EQ(updater->starts, 0);
    defaults.set(preferences::updater.automaticallyChecks.key, 1.0); // a number that means yes
    model = makeUpdates();
    EXPECT_EQ(updater->starts, 1);
    EXPECT_EQ(model->updater(), updater.get());

    model = makeUpdates(failure("no feed"));
    updater->checks = true;
    EXPECT_THAT(log.takeLines(),
                ElementsAre("error general init(): Failed to start updater: no feed"));
    model->scheduleUpdateChecks();
    EXPECT_EQ(checksIn(0), 0);
}

TEST_F(SparkleModelTest, ChecksAtOnceAndAgainAfterTheIntervalThatHeldAtItsStart) {
    ASSERT_TRUE(updater->startUpdater());
    model->scheduleUpdateChecks();
    updater->find("2");
    EXPECT_TRUE(model->isUpdateAvailable());
    EXPECT_EQ(checksIn(1e6), 1) << "one, without automatic checks";
    EXPECT_FALSE(model->isUpdateAvailable());

    updater->checks = true;
    model->scheduleUpdateChecks();
    EXPECT_EQ(checksIn(0), 1);
    updater->interval = 60;
    EXPECT_EQ(checksIn(3599), 0);
    EXPECT_EQ(checksIn(1), 1);
    model->scheduleUpdateChecks();
    model->scheduleUpdateChecks();
    EXPECT_EQ(checksIn(0), 1) << "one loop only";
    EXPECT_EQ(checksIn(60), 1);
    updater->checks = false;
    model->scheduleUpdateChecks();
    EXPECT_EQ(checksIn(60), 1) << "and no loop any more";
    EXPECT_EQ(checksIn(60), 0);

    for (const double interval : {-1.0, 1e300, std::nan("")}) {
        updater->interval = interval;
        model->startUpdateCheckLoop();
        EXPECT_EQ(checksIn(0), 1) << interval;
        EXPECT_EQ(checksIn(1e9), 0) << interval;
    }
    updater->interval = 60;
    model->startUpdateCheckLoop();
    EXPECT_EQ(checksIn(0), 1);
    model.reset();
    EXPECT_EQ(updater.use_count(), 1) << "not kept by the loop";
    pass(60);
    EXPECT_EQ(updater->silentChecks, 0);
}

} // namespace
} // namespace tidewell
