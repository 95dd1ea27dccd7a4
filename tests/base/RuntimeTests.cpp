#include "base/runtime/OwnedTask.h"
#include "base/runtime/SerialExecutor.h"
#include "base/runtime/Waiting.h"
#include "base/runtime/linux/TimerFdClock.h"
#include "tests/fakes/ManualExecutor.h"
#include "tests/fakes/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ctime>
#include <future>
#include <limits>
#include <string>

#include <poll.h>

namespace tidewell {
namespace {

using testing::ElementsAre;
using Notes = std::shared_ptr<std::vector<std::string>>;

class TaskTest : public testing::Test {
protected:
    Notes notes = std::make_shared<std::vector<std::string>>();
    ManualExecutor executor;
};

Task<int> half(int number) {
    co_return number / 2;
}

Task<void> noteHalf(int number, Notes notes) {
    notes->push_back("started");
    const int result = co_await half(number);
    notes->push_back(std::to_string(result));
}

TEST_F(TaskTest, StartsWhenItIsTheExecutorsTurnAndPassesResultsOn) {
    spawn(executor, noteHalf(12, notes));
    EXPECT_THAT(*notes, ElementsAre());
    executor.drain();
    EXPECT_THAT(*notes, ElementsAre("started", "6"));
    EXPECT_EQ(notes.use_count(), 1);
}

using Completion = std::shared_ptr<std::function<void(int)>>;

Task<void> askFor(Completion complete, Notes notes) {
    auto answer =
        answerOf<int>([complete](std::function<void(int)> take) { *complete = std::move(take); });
    const int value = co_await answer;
    notes->push_back(std::to_string(value));
}

TEST_F(TaskTest, GoesOnAtTheFirstAnswerAndIsDestroyedWhenNothingCanResumeItAnyMore) {
    const auto complete = std::make_shared<std::function<void(int)>>();
    spawn(executor, askFor(complete, notes));
    executor.drain();
    (*complete)(7);
    (*complete)(8);
    EXPECT_THAT(*notes, ElementsAre()) << "must not go on inside the caller of the answer";
    executor.drain();
    EXPECT_THAT(*notes, ElementsAre("7"));

    spawn(executor, askFor(complete, notes));
    executor.drain();
    EXPECT_EQ(notes.use_count(), 2);
    *complete = nullptr;
    EXPECT_EQ(notes.use_count(), 1) << "unanswered";

    spawn(*std::make_unique<ManualExecutor>(), noteHalf(2, notes));
    EXPECT_EQ(notes.use_count(), 1) << "queued, but never run";
}

Task<void> askTwice(Completion complete, Executor* other, Notes notes) {
    co_await askFor(complete, notes);
    auto work = runOn(*other, [&notes](const std::stop_token& stop) {
        notes->push_back(stop.stop_requested() ? "called off" : "worked");
    });
    co_await work;
    co_await askFor(complete, notes);
}

TEST_F(TaskTest, OfAnOwnerRunsNoFurtherOnceThatIsGoneWhateverItWaitsFor) {
    const auto complete = std::make_shared<std::function<void(int)>>();
    ManualExecutor other;
    enum class When { queued, asking, answered, working, worked };
    using enum When;
    using Case = std::pair<When, std::vector<std::string>>;
    for (const auto& [when, wanted] :
         {Case{queued, {}}, Case{asking, {}}, Case{answered, {}},
          Case{working, {"7", "called off"}}, Case{worked, {"7", "worked"}}}) {
        *complete = nullptr;
        notes->clear();
        OwnedTask task(executor, askTwice(complete, &other, notes));
        if (when >= asking) {
            executor.drain();
        }
        if (when >= answered) {
            (*complete)(7);
        }
        if (when >= working) {
            executor.drain();
        }
        if (when >= worked) {
            other.drain();
        }
        task = {};
        other.drain();
        executor.drain();
        EXPECT_EQ(*notes, wanted) << int(when);
        if (*complete) {
            (*complete)(8); // too late
        }
        EXPECT_EQ(executor.drain(), 0U);
        EXPECT_EQ(notes.use_count(), 1) << int(when);
    }
}

Task<void> hop(Executor* other, std::promise<bool>* isBack) {
    const auto own = std::this_thread::get_id();
    std::thread::id elsewhere;
    auto work = runOn(*other, [&elsewhere] { elsewhere = std::this_thread::get_id(); });
    co_await work;
    isBack->set_value(std::this_thread::get_id() == own && elsewhere != own);
}

TEST(SerialExecutor, TasksComeBackToItAfterWorkElsewhere) {
    SerialExecutor own;
    SerialExecutor other;
    std::promise<bool> isBack;
    spawn(own, hop(&other, &isBack));
    EXPECT_TRUE(isBack.get_future().get());
}

using Instant = ContinuousClock::Instant;
TEST(After, CutsWhatDoesNotFitTheClock) {
    const Instant start{std::chrono::seconds(100)};
    EXPECT_EQ(after(start, 0.25), Instant(std::chrono::milliseconds(100250)));
    EXPECT_EQ(after(start, std::numeric_limits<double>::quiet_NaN()), start);
    EXPECT_EQ(after(start, 9223372036.0), Instant::max());
    EXPECT_EQ(after(start, -std::numeric_limits<double>::infinity()), Instant::min());
}

Task<void> sleepAndTell(ContinuousClock* clock, double seconds, std::promise<bool> done) {
    co_await sleepFor(*clock, seconds);
    done.set_value(true);
}

TEST(TimerFdClock, WakesASleeperOnAnotherThreadAndSurvivesCancellingAtAnyMoment) {
    TimerFdClock clock;
    SerialExecutor executor;
    for (int round = 0; round < 200; ++round) {
        std::promise<bool> done; // destroyed with the task
        auto result = done.get_future();
        // Some rounds end by themselves, some race with the alarm, some can only be cancelled.
        const double seconds = round % 2 == 0 ? 3600 : 0.0001;
        OwnedTask task(executor, sleepAndTell(&clock, seconds, std::move(done)));
        if (round % 4 != 1) {
            task.cancel();
        }
        while (result.wait_for(std::chrono::seconds(0)) != std::future_status::ready) {
            pollfd descriptor{clock.fileDescriptor(), POLLIN, 0};
            if (poll(&descriptor, 1, 1) > 0) {
                clock.ringDueAlarms();
            }
        }
        if (round % 4 == 1) {
            EXPECT_TRUE(result.get()) << round;
        } else if (round % 2 == 0) {
            EXPECT_THROW(result.get(), std::future_error) << round << ": woken, not destroyed";
        }
    }
}

TEST(TimerFdClock, CountsTheTimeThatTheMachineSleeps) {
    const TimerFdClock clock;
    const auto descriptor = "/proc/self/fdinfo/" + std::to_string(clock.fileDescriptor());
    EXPECT_THAT(readText(descriptor),
                testing::HasSubstr("clockid: " + std::to_string(CLOCK_BOOTTIME) + "\n"));
}

TEST(TimerFdClock, RingsOverdueAlarmsInOrderOnceAndNotWhenOneBeforeCancelsThem) {
    TimerFdClock clock;
    std::vector<int> rung;
    clock.setAlarm(clock.now(), [&rung] { rung.push_back(2); });
    const auto third = clock.setAlarm(clock.now(), [&rung] { rung.push_back(3); });
    clock.setAlarm(Instant::min(), [&rung, &clock, third] {
        rung.push_back(1);
        clock.cancelAlarm(third);
    });
    pollfd descriptor{clock.fileDescriptor(), POLLIN, 0};
    ASSERT_EQ(poll(&descriptor, 1, 5000), 1);
    clock.ringDueAlarms();
    clock.ringDueAlarms();
    EXPECT_THAT(rung, testing::ElementsAre(1, 2));
}

} // namespace
} // namespace tidewell
