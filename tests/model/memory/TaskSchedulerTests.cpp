#include "base/runtime/OwnedTask.h"
#include "model/memory/TaskScheduler.h"
#include "tests/fakes/Surroundings.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tidewell {
namespace {

using testing::ElementsAre;

class TaskSchedulerTest : public Surroundings {
protected:
    std::shared_ptr<TaskScheduler> make() {
        return std::make_shared<TaskScheduler>(worker, mainThread, clock, [this, used = used] {
            calls.push_back(clock.seconds());
            during();
        });
    }

    std::vector<double> calls; // when
    std::function<void()> during = [] {};
    std::shared_ptr<int> used = std::make_shared<int>(); // by each callback
};

TEST_F(TaskSchedulerTest, CallsOnTheMainThreadAndSixtySecondsAfterEachCallReturned) {
    const OwnedTask loop = make()->start();
    worker.drain();
    clock.advance(7);
    worker.drain();
    EXPECT_THAT(calls, ElementsAre()) << "the main thread is busy";
    EXPECT_EQ(clock.pendingAlarms(), 0U) << "the pause begins only after the call";
    pass(0);
    during = [this] { clock.advance(5); };
    for (const double seconds : {60.0, 59.5, 3600.5, 59.5, 0.5}) { // it slept through many
        pass(seconds);
    }
    EXPECT_THAT(calls, ElementsAre(7, 67, 3732, 3797));
}

TEST_F(TaskSchedulerTest, LivesWithItsCallbackUntilCancelledBeforeDuringAPauseOrDuringACall) {
    make()->start().cancel();
    pass(0);
    EXPECT_THAT(calls, ElementsAre());

    auto loop = make()->start();
    pass(0);
    EXPECT_EQ(used.use_count(), 2);
    loop.cancel();
    pass(60);
    EXPECT_THAT(calls, ElementsAre(0));

    loop = make()->start();
    during = [&loop] { loop.cancel(); };
    pass(0);
    pass(60);
    EXPECT_THAT(calls, ElementsAre(0, 60)) << "the call was finished, and was the last";
    EXPECT_EQ(clock.pendingAlarms(), 0U);
    EXPECT_EQ(used.use_count(), 1);
}

} // namespace
} // namespace tidewell
