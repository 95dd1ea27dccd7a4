#include "model/processes/MemoryManager.h"
#include "tests/fakes/FakeApplicationSource.h"
#include "tests/fakes/Surroundings.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

namespace tidewell {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr auto started = "info general startPeriodicTask(): MemoryManager started";

class MemoryManagerTest : public Surroundings {
protected:
    std::vector<std::string> labels() const {
        std::vector<std::string> result;
        for (const auto& row : manager->allProcesses()) {
            result.push_back(row.showItem.label);
        }
        return result;
    }

    ThemeIcon icon{"editor"};
    FakeApplicationSource source{worker};
    std::shared_ptr<MemoryManager> manager =
        std::make_shared<MemoryManager>(MemoryManager::Environment{.applications = source,
                                                                   .defaults = defaults,
                                                                   .mainThread = mainThread,
                                                                   .clock = clock,
                                                                   .log = log});
};

TEST_F(MemoryManagerTest, PublishesOnceWhatCanBeReadLargestFirstAndEqualOnesAsListed) {
    constexpr std::uint64_t most = std::numeric_limits<std::uint64_t>::max();
    const auto usage = std::make_shared<const ApplicationUsage>();
    source.applications = {{"small", icon, 1},           {"first", icon, 4096},
                           {"gone", icon, std::nullopt}, {"bare", std::nullopt, 4096},
                           {"most", icon, most, usage},  {std::nullopt, std::nullopt, 4096}};
    int told = 0;
    const auto subscription = manager->objectWillChange([&told] { ++told; });
    spawn(mainThread, manager->getAllProcessesMemoryUsage());
    pass(0);
    EXPECT_EQ(told, 1);
    EXPECT_THAT(labels(),
                ElementsAre("most", "first", "bare", "No localize name available", "small"));
    EXPECT_EQ(manager->allProcesses()[0].showItem.value, most);
    EXPECT_EQ(manager->allProcesses()[0].usage, usage);
    EXPECT_EQ(manager->allProcesses()[1].image, icon);
    EXPECT_EQ(manager->allProcesses()[2].image, std::nullopt);
    const std::string noIcon = "info general getAllProcessesMemoryUsage(): No icon available for ";
    EXPECT_THAT(log.takeLines(), ElementsAre(noIcon + "bare", noIcon));
}

TEST_F(MemoryManagerTest, SurveysAtOnceAndAgainAfterThePollingIntervalAsItIsThen) {
    manager->startPeriodicTask();
    pass(0);
    EXPECT_EQ(source.surveys, 1);
    defaults.set("_pollingInterval", 10.0);
    for (const double pause : {1.0, 10.0}) { // the first was begun before
        const int surveys = source.surveys;
        pass(pause - 0.01);
        EXPECT_EQ(source.surveys, surveys);
        pass(0.01);
        EXPECT_EQ(source.surveys, surveys + 1);
    }
}

TEST_F(MemoryManagerTest, StartingAnewAndStoppingResetWhatIsShown) {
    source.applications = {{"one", icon, 10}, {"two", icon, 20}};
    manager->startPeriodicTask();
    pass(0);
    EXPECT_THAT(log.takeLines(), ElementsAre(started));
    EXPECT_THAT(labels(), ElementsAre("two", "one"));

    manager->startPeriodicTask();
    EXPECT_THAT(labels(), IsEmpty());
    EXPECT_THAT(log.takeLines(),
                ElementsAre("info general stopPeriodicTask(): MemoryManager reset [2]", started));
    pass(0);
    EXPECT_TRUE(manager->isRunning()) << "although the old loop has ended";
    EXPECT_EQ(source.surveys, 2);
    EXPECT_EQ(source.rests, 2) << "each survey anew";
    EXPECT_EQ(clock.pendingAlarms(), 1U);

    const std::weak_ptr<MemoryManager> watched = manager;
    manager.reset();
    ASSERT_FALSE(watched.expired()) << "the loop holds it";
    watched.lock()->stopPeriodicTask();
    EXPECT_FALSE(watched.lock()->isRunning());
    pass(0);
    EXPECT_TRUE(watched.expired());
    EXPECT_EQ(clock.pendingAlarms(), 0U) << "no work at all";
}

TEST_F(MemoryManagerTest, ALoopStoppedBeforeOrDuringItsSurveyPublishesNothing) {
    source.applications = {{"one", icon, 10}};
    manager->startPeriodicTask();
    manager->stopPeriodicTask();
    pass(0);
    EXPECT_EQ(source.surveys, 0);

    manager->startPeriodicTask();
    mainThread.drain();
    EXPECT_EQ(source.surveys, 1);
    EXPECT_THAT(labels(), IsEmpty()) << "the main thread is free meanwhile";
    manager->stopPeriodicTask();
    pass(0);
    EXPECT_THAT(labels(), IsEmpty());
}

} // namespace
} // namespace tidewell
