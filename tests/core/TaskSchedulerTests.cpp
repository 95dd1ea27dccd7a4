#include "core/TaskScheduler.h"
#include "platform/runtime/SerialExecutor.h"
#include "platform/runtime/linux/TimerFdClock.h"
#include "tests/fakes/ManualClock.h"
#include "tests/fakes/ManualExecutor.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <future>
#include <thread>
#include <vector>

namespace tidewell {
namespace {

using testing::ElementsAre;

class TaskSchedulerTest : public testing::Test {
protected:
    std::shared_ptr<TaskScheduler> make() {
        return std::make_shared<TaskScheduler>(own, mainThread, clock, [this, used = used] {
            calls.push_back(std::chrono::duration<double>(clock.now().time_since_epoch()).count());
            during();
        });
    }

    void pass(double seconds) {
        clock.advance(seconds);
        while (own.drain() + mainThread.drain() > 0) {
        }
    }

    ManualExecutor own;
    ManualExecutor mainThread;
    ManualClock clock;
    std::vector<double> calls; // when
    std::function<void()> during = [] {};
    std::shared_ptr<int> used = std::make_shared<int>(); // by each callback
};

TEST_F(TaskSchedulerTest, CallsAtOnceAndSixtySecondsAfterEachCallReturned) {
    make()->start();
    EXPECT_THAT(calls, ElementsAre());
    pass(0);
    pass(59.5);
    EXPECT_THAT(calls, ElementsAre(0));
    during = [this] { clock.advance(5); };
    pass(0.5);
    pass(59.5);
    EXPECT_THAT(calls, ElementsAre(0, 60));
    pass(3600.5); // the machine slept through many
    pass(59.5);
    EXPECT_THAT(calls, ElementsAre(0, 60, 3725));
    pass(0.5);
    EXPECT_THAT(calls, ElementsAre(0, 60, 3725, 3790));
}

TEST_F(TaskSchedulerTest, CallsOnTheMainThreadOnlyAndWaitsWhileItIsBusy) {
    make()->start();
    std::make_shared<TaskScheduler>(own, mainThread, clock, nullptr)->start(); // calls nothing
    own.drain();
    clock.advance(7);
    own.drain();
    EXPECT_THAT(calls, ElementsAre());
    EXPECT_EQ(clock.pendingAlarms(), 0U) << "the pause begins only after the call";
    pass(0);
    EXPECT_THAT(calls, ElementsAre(7));
    pass(60);
    EXPECT_THAT(calls, ElementsAre(7, 67)) << "the delay does not shorten the pause";
    EXPECT_EQ(clock.pendingAlarms(), 2U);
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

TEST(TaskScheduler, HopsToARealMainThreadAndIsCancelledFromAnother) {
    TimerFdClock clock;
    SerialExecutor own;
    SerialExecutor mainThread;
    std::promise<std::thread::id> mainThreadId;
    mainThread.post([&] { mainThreadId.set_value(std::this_thread::get_id()); });
    std::promise<std::thread::id> caller;
    std::promise<void> ended; // fulfilled when the loop lets go of the callback
    const auto fulfil = [&ended](void*) { ended.set_value(); };
    auto loop =
        std::make_shared<TaskScheduler>(own, mainThread, clock,
                                        [&caller, alive = std::shared_ptr<void>(&ended, fulfil)] {
                                            caller.set_value(std::this_thread::get_id());
                                        })
            ->start();
    EXPECT_EQ(caller.get_future().get(), mainThreadId.get_future().get());
    loop.cancel();
    ended.get_future().get();
}

} // namespace
} // namespace tidewell
