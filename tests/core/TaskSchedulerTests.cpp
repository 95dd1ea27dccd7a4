#include "core/TaskScheduler.h"
#include "platform/runtime/SerialExecutor.h"
#include "platform/runtime/linux/TimerFdClock.h"
#include "tests/fakes/ManualClock.h"
#include "tests/fakes/ManualExecutor.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <future>
#include <poll.h>
#include <thread>
#include <vector>

namespace tidewell {
namespace {

using testing::ElementsAre;

class TaskSchedulerTest : public testing::Test {
protected:
    std::shared_ptr<TaskScheduler> schedulerOf(TaskScheduler::Callback callback) {
        return std::make_shared<TaskScheduler>(own, mainThread, clock, std::move(callback));
    }

    void settle() {
        while (own.drain() + mainThread.drain() > 0) {
        }
    }

    void pass(double seconds) {
        clock.advance(seconds);
        settle();
    }

    double now() const {
        return std::chrono::duration<double>(clock.now().time_since_epoch()).count();
    }

    ManualExecutor own;
    ManualExecutor mainThread;
    ManualClock clock;
    std::vector<double> calls; // when
};

TEST_F(TaskSchedulerTest, CallsAtOnceAndSixtySecondsAfterEachCallReturned) {
    double duration = 0;
    schedulerOf([&] {
        calls.push_back(now());
        clock.advance(duration);
    })->start();
    EXPECT_THAT(calls, ElementsAre());
    settle();
    EXPECT_THAT(calls, ElementsAre(0));
    pass(59.5);
    EXPECT_THAT(calls, ElementsAre(0));
    duration = 5;
    pass(0.5);
    pass(59.5);
    EXPECT_THAT(calls, ElementsAre(0, 60));
    pass(0.5);
    EXPECT_THAT(calls, ElementsAre(0, 60, 125));
}

TEST_F(TaskSchedulerTest, CallsOnTheMainThreadOnlyAndWaitsWhileItIsBusy) {
    schedulerOf([this] { calls.push_back(now()); })->start();
    own.drain();
    clock.advance(7);
    own.drain();
    EXPECT_THAT(calls, ElementsAre());
    EXPECT_EQ(clock.pendingAlarms(), 0U) << "the pause begins only after the call";
    settle();
    EXPECT_THAT(calls, ElementsAre(7));
    pass(60);
    EXPECT_THAT(calls, ElementsAre(7, 67)) << "the delay does not shorten the pause";
}

TEST_F(TaskSchedulerTest, MakesOneCallAfterTheMachineSleptThroughMany) {
    schedulerOf([this] { calls.push_back(now()); })->start();
    settle();
    pass(3600);
    EXPECT_THAT(calls, ElementsAre(0, 3600));
    pass(60);
    EXPECT_THAT(calls, ElementsAre(0, 3600, 3660));
}

TEST_F(TaskSchedulerTest, EndsWhenCancelledBeforeDuringAPauseOrDuringACall) {
    spawn(own, schedulerOf([this] { calls.push_back(now()); })->runLoop()).cancel();
    settle();
    EXPECT_THAT(calls, ElementsAre());

    auto pausing = schedulerOf([this] { calls.push_back(now()); })->start();
    settle();
    pausing.cancel();
    pass(60);
    EXPECT_THAT(calls, ElementsAre(0));

    std::optional<TaskHandle> calling;
    calling = schedulerOf([&] {
                  calling->cancel();
                  calls.push_back(now());
              })->start();
    settle();
    pass(60);
    EXPECT_THAT(calls, ElementsAre(0, 60)) << "the call was finished, and was the last";
    EXPECT_EQ(clock.pendingAlarms(), 0U);
}

TEST_F(TaskSchedulerTest, LoopsWithoutACallback) {
    schedulerOf(nullptr)->start();
    settle();
    pass(60);
    EXPECT_EQ(clock.pendingAlarms(), 1U);
}

TEST_F(TaskSchedulerTest, LivesWithItsCallbackAsLongAsItsLoop) {
    const auto used = std::make_shared<int>();
    auto scheduler = schedulerOf([used] { ++*used; });
    auto loop = scheduler->start();
    scheduler.reset();
    settle();
    pass(60);
    EXPECT_EQ(*used, 2);
    loop.cancel();
    settle();
    EXPECT_EQ(used.use_count(), 1);
}

/// The real clock, ten thousand times as fast: a minute takes six milliseconds.
class HurriedClock final : public ContinuousClock {
public:
    Instant now() const override { return Instant((real.now() - start_) * factor); }
    AlarmId setAlarm(Instant deadline, std::function<void()> ring) override {
        return real.setAlarm(start_ + deadline.time_since_epoch() / factor, std::move(ring));
    }
    void cancelAlarm(AlarmId alarm) override { real.cancelAlarm(alarm); }

    TimerFdClock real;

private:
    static constexpr int factor = 10000;
    const Instant start_ = real.now();
};

TEST(TaskScheduler, HopsBetweenRealThreadsOnTheRealClockUntilCancelled) {
    HurriedClock clock;
    SerialExecutor own;
    SerialExecutor mainThread;
    std::promise<std::thread::id> mainThreadId;
    mainThread.post([&] { mainThreadId.set_value(std::this_thread::get_id()); });

    std::vector<std::thread::id> callers; // the main thread's alone until the loop has ended
    std::promise<void> enough;
    std::promise<void> ended;
    // Fulfils its promise when the loop lets go of the callback.
    const auto fulfil = [&ended](void*) { ended.set_value(); };
    auto scheduler = std::make_shared<TaskScheduler>(
        own, mainThread, clock, [&callers, &enough, alive = std::shared_ptr<void>(&ended, fulfil)] {
            callers.push_back(std::this_thread::get_id());
            if (callers.size() == 3) {
                enough.set_value();
            }
        });
    auto loop = scheduler->start();
    scheduler.reset();

    const auto serveUntil = [&clock](const std::future<void>& done) {
        while (done.wait_for(std::chrono::seconds(0)) != std::future_status::ready) {
            pollfd descriptor{clock.real.fileDescriptor(), POLLIN, 0};
            if (poll(&descriptor, 1, 1) > 0) {
                clock.real.ringDueAlarms();
            }
        }
    };
    serveUntil(enough.get_future());
    loop.cancel();
    serveUntil(ended.get_future());
    EXPECT_GE(callers.size(), 3U);
    EXPECT_THAT(callers, testing::Each(mainThreadId.get_future().get()));
}

} // namespace
} // namespace tidewell
