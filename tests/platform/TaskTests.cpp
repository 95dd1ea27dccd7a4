#include "platform/runtime/SerialExecutor.h"
#include "platform/runtime/Waiting.h"
#include "tests/fakes/ManualExecutor.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <future>
#include <stdexcept>
#include <string>

namespace tidewell {
namespace {

using Notes = std::shared_ptr<std::vector<std::string>>;

Task<int> half(int number) {
    if (number % 2 != 0) {
        throw std::invalid_argument("odd");
    }
    co_return number / 2;
}

Task<void> quarter(int number, Notes notes) {
    notes->push_back("started");
    const int first = co_await half(number);
    try {
        const int second = co_await half(first);
        notes->push_back(std::to_string(second));
    } catch (const std::invalid_argument& error) {
        notes->push_back(error.what());
    }
}

TEST(Task, StartsAsAJobOfItsExecutorAndPassesResultsAndExceptionsOn) {
    ManualExecutor executor;
    const Notes notes = std::make_shared<std::vector<std::string>>();
    spawn(executor, quarter(12, notes));
    spawn(executor, quarter(6, notes));
    EXPECT_TRUE(notes->empty());
    executor.drain();
    EXPECT_THAT(*notes, testing::ElementsAre("started", "3", "started", "odd"));
}

Task<void> noteCancellation(Notes notes) {
    const bool before = co_await currentTaskIsCancelled();
    notes->push_back(before ? "cancelled" : "alive");
}

TEST(Task, IsCancelledThroughAnyCopyOfItsHandleButNotByLettingGoOfIt) {
    ManualExecutor executor;
    const Notes notes = std::make_shared<std::vector<std::string>>();
    {
        const auto dropped = spawn(executor, noteCancellation(notes));
    }
    auto handle = spawn(executor, noteCancellation(notes));
    auto copy = handle;
    copy.cancel();
    executor.drain();
    EXPECT_THAT(*notes, testing::ElementsAre("alive", "cancelled"));
    handle.cancel(); // after its end: nothing happens
}

Task<void> askFor(std::shared_ptr<std::function<void(int)>> complete, Notes notes) {
    auto answer =
        answerOf<int>([complete](std::function<void(int)> take) { *complete = std::move(take); });
    const int value = co_await answer;
    notes->push_back(std::to_string(value));
}

TEST(Task, GoesOnAtTheFirstAnswerAndIsDestroyedWhenNoneCanComeAnyMore) {
    ManualExecutor executor;
    const Notes notes = std::make_shared<std::vector<std::string>>();
    const auto complete = std::make_shared<std::function<void(int)>>();
    spawn(executor, askFor(complete, notes));
    executor.drain();
    (*complete)(7);
    (*complete)(8);
    EXPECT_TRUE(notes->empty()) << "must not go on inside the caller of the answer";
    executor.drain();
    EXPECT_THAT(*notes, testing::ElementsAre("7"));

    const auto unanswered = std::make_shared<std::function<void(int)>>();
    spawn(executor, askFor(unanswered, notes));
    executor.drain();
    const std::weak_ptr<std::vector<std::string>> watched = notes;
    const auto references = watched.use_count();
    *unanswered = nullptr;
    EXPECT_LT(watched.use_count(), references) << "the waiting task still holds its parameters";
}

TEST(Task, QueuedButNeverRunIsDestroyedWithItsExecutor) {
    const Notes notes = std::make_shared<std::vector<std::string>>();
    {
        ManualExecutor executor;
        spawn(executor, noteCancellation(notes));
    }
    EXPECT_EQ(notes.use_count(), 1);
}

Task<void> hop(Executor* other, std::promise<std::array<std::thread::id, 3>>* result) {
    std::array<std::thread::id, 3> threads;
    threads[0] = std::this_thread::get_id();
    auto work = runOn(*other, [&threads] { threads[1] = std::this_thread::get_id(); });
    co_await work;
    threads[2] = std::this_thread::get_id();
    result->set_value(threads);
}

TEST(SerialExecutor, RunsJobsInOrderAndTasksComeBackToItAfterWorkElsewhere) {
    SerialExecutor own;
    SerialExecutor other;
    std::promise<std::array<std::thread::id, 3>> result;
    spawn(own, hop(&other, &result));
    const auto threads = result.get_future().get();
    EXPECT_EQ(threads[0], threads[2]);
    EXPECT_NE(threads[0], threads[1]);

    std::vector<int> order;
    std::promise<void> done;
    for (int i = 0; i < 100; ++i) {
        own.post([&order, i] { order.push_back(i); });
    }
    own.post([&done] { done.set_value(); });
    done.get_future().get();
    EXPECT_EQ(order.size(), 100U);
    EXPECT_TRUE(std::ranges::is_sorted(order));
}

} // namespace
} // namespace tidewell
