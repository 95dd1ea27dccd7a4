#include "platform/runtime/ContinuousClock.h"
#include "platform/runtime/SerialExecutor.h"
#include "platform/runtime/linux/TimerFdClock.h"
#include "tests/fakes/ManualClock.h"
#include "tests/fakes/ManualExecutor.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <future>
#include <limits>
#include <poll.h>

namespace tidewell {
namespace {

using Results = std::shared_ptr<std::vector<SleepResult>>;

Task<void> sleepFor(ContinuousClock* clock, double seconds, Results results) {
    const auto result = co_await sleepUntil(*clock, after(clock->now(), seconds));
    results->push_back(result);
}

class Sleep : public testing::Test {
protected:
    ManualExecutor executor;
    ManualClock clock;
    Results results = std::make_shared<std::vector<SleepResult>>();
};

TEST_F(Sleep, EndsWithItsDeadlineAndNotBefore) {
    spawn(executor, sleepFor(&clock, 2, results));
    executor.drain();
    clock.advance(1.999);
    executor.drain();
    EXPECT_TRUE(results->empty());
    clock.advance(3600); // asleep for an hour
    executor.drain();
    EXPECT_THAT(*results, testing::ElementsAre(SleepResult::elapsed));
}

TEST_F(Sleep, EndsAtOnceWhenCancelledBeforeOrMeanwhileAndLeavesNoAlarm) {
    auto early = spawn(executor, sleepFor(&clock, 60, results));
    early.cancel();
    executor.drain();
    EXPECT_THAT(*results, testing::ElementsAre(SleepResult::cancelled));

    auto meanwhile = spawn(executor, sleepFor(&clock, 60, results));
    executor.drain();
    EXPECT_EQ(clock.pendingAlarms(), 1U);
    meanwhile.cancel();
    executor.drain();
    EXPECT_THAT(*results, testing::ElementsAre(SleepResult::cancelled, SleepResult::cancelled));
    EXPECT_EQ(clock.pendingAlarms(), 0U);

    auto late = spawn(executor, sleepFor(&clock, 60, results));
    executor.drain();
    clock.advance(60);
    late.cancel(); // the alarm has rung already, the task has not gone on yet
    executor.drain();
    EXPECT_EQ(results->back(), SleepResult::elapsed);
}

TEST_F(Sleep, IsDestroyedWithTheClockItWaitsFor) {
    {
        ManualClock shortLived;
        spawn(executor, sleepFor(&shortLived, 60, results));
        executor.drain();
        EXPECT_EQ(results.use_count(), 2);
    }
    EXPECT_EQ(results.use_count(), 1);
    EXPECT_TRUE(results->empty());
}

TEST(After, CutsWhatDoesNotFitTheClock) {
    using Instant = ContinuousClock::Instant;
    const Instant start{std::chrono::seconds(100)};
    EXPECT_EQ(after(start, 0.25), Instant(std::chrono::milliseconds(100250)));
    EXPECT_EQ(after(start, std::numeric_limits<double>::quiet_NaN()), start);
    EXPECT_EQ(after(start, 1e300), Instant::max());
    EXPECT_EQ(after(start, 9223372036.0), Instant::max());
    EXPECT_EQ(after(start, -std::numeric_limits<double>::infinity()), Instant::min());
}

/// Serves the real clock's alarms until `done` is ready, as an event loop would.
void serve(TimerFdClock& clock, const std::future<void>& done) {
    while (done.wait_for(std::chrono::seconds(0)) != std::future_status::ready) {
        pollfd descriptor{clock.fileDescriptor(), POLLIN, 0};
        if (poll(&descriptor, 1, 1) > 0) {
            clock.ringDueAlarms();
        }
    }
}

Task<void> sleepAndTell(ContinuousClock* clock, double seconds, std::promise<void>* done,
                        std::atomic<SleepResult>* result) {
    *result = co_await sleepUntil(*clock, after(clock->now(), seconds));
    done->set_value();
}

TEST(TimerFdClock, WakesASleeperOnAnotherThreadAndCountsForwards) {
    TimerFdClock clock;
    SerialExecutor executor;
    std::promise<void> done;
    std::atomic<SleepResult> result = SleepResult::cancelled;
    const auto start = clock.now();
    spawn(executor, sleepAndTell(&clock, 0.02, &done, &result));
    serve(clock, done.get_future());
    EXPECT_EQ(result, SleepResult::elapsed);
    EXPECT_GE(clock.now() - start, std::chrono::milliseconds(20));
}

TEST(TimerFdClock, SurvivesCancellingFromAnotherThreadAtAnyMoment) {
    TimerFdClock clock;
    SerialExecutor executor;
    for (int round = 0; round < 200; ++round) {
        std::promise<void> done;
        std::atomic<SleepResult> result = SleepResult::elapsed;
        // Some rounds race with the alarm, the others can only end by being cancelled.
        const double seconds = round % 2 == 0 ? 3600 : 0.0001;
        auto handle = spawn(executor, sleepAndTell(&clock, seconds, &done, &result));
        if (round % 3 == 0) {
            std::this_thread::yield();
        }
        handle.cancel();
        serve(clock, done.get_future());
        if (seconds > 1) {
            EXPECT_EQ(result, SleepResult::cancelled);
        }
    }
}

TEST(TimerFdClock, RingsOverdueAlarmsInOrderAndOnlyOnce) {
    TimerFdClock clock;
    std::vector<int> rung;
    clock.setAlarm(clock.now(), [&rung] { rung.push_back(2); });
    clock.setAlarm(ContinuousClock::Instant::min(), [&rung] { rung.push_back(1); });
    const auto forgotten = clock.setAlarm(clock.now(), [&rung] { rung.push_back(3); });
    clock.cancelAlarm(forgotten);
    pollfd descriptor{clock.fileDescriptor(), POLLIN, 0};
    ASSERT_EQ(poll(&descriptor, 1, 5000), 1);
    clock.ringDueAlarms();
    clock.ringDueAlarms();
    EXPECT_THAT(rung, testing::ElementsAre(1, 2));
}

} // namespace
} // namespace tidewell
