#include "platform/runtime/SerialExecutor.h"
#include "platform/runtime/linux/TimerFdClock.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <future>
#include <limits>
#include <poll.h>

namespace tidewell {
namespace {

using enum SleepResult;
using Instant = ContinuousClock::Instant;
TEST(After, CutsWhatDoesNotFitTheClock) {
    const Instant start{std::chrono::seconds(100)};
    EXPECT_EQ(after(start, 0.25), Instant(std::chrono::milliseconds(100250)));
    EXPECT_EQ(after(start, std::numeric_limits<double>::quiet_NaN()), start);
    EXPECT_EQ(after(start, 9223372036.0), Instant::max());
    EXPECT_EQ(after(start, -std::numeric_limits<double>::infinity()), Instant::min());
}

Task<void> sleepAndTell(ContinuousClock* clock, double seconds, std::promise<SleepResult>* done) {
    const auto result = co_await sleepUntil(*clock, after(clock->now(), seconds));
    done->set_value(result);
}

TEST(TimerFdClock, WakesASleeperOnAnotherThreadAndSurvivesCancellingAtAnyMoment) {
    TimerFdClock clock;
    SerialExecutor executor;
    for (int round = 0; round < 200; ++round) {
        std::promise<SleepResult> done;
        auto result = done.get_future();
        // Some rounds end by themselves, some race with the alarm, some can only be cancelled.
        const double seconds = round % 2 == 0 ? 3600 : 0.0001;
        auto handle = spawn(executor, sleepAndTell(&clock, seconds, &done));
        if (round % 4 != 1) {
            handle.cancel();
        }
        while (result.wait_for(std::chrono::seconds(0)) != std::future_status::ready) {
            pollfd descriptor{clock.fileDescriptor(), POLLIN, 0};
            if (poll(&descriptor, 1, 1) > 0) {
                clock.ringDueAlarms();
            }
        }
        const auto ending = result.get();
        EXPECT_TRUE(round % 4 == 3 || ending == (round % 4 == 1 ? elapsed : cancelled)) << round;
    }
}

TEST(TimerFdClock, RingsOverdueAlarmsInOrderAndOnlyOnce) {
    TimerFdClock clock;
    std::vector<int> rung;
    clock.setAlarm(clock.now(), [&rung] { rung.push_back(2); });
    clock.setAlarm(Instant::min(), [&rung] { rung.push_back(1); });
    clock.cancelAlarm(clock.setAlarm(clock.now(), [&rung] { rung.push_back(3); }));
    pollfd descriptor{clock.fileDescriptor(), POLLIN, 0};
    ASSERT_EQ(poll(&descriptor, 1, 5000), 1);
    clock.ringDueAlarms();
    clock.ringDueAlarms();
    EXPECT_THAT(rung, testing::ElementsAre(1, 2));
}

} // namespace
} // namespace tidewell
