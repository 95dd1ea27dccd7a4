#pragma once

#include "base/runtime/Executor.h"

#include <concepts>
#include <coroutine>
#include <exception>
#include <memory>
#include <optional>
#include <stop_token>
#include <utility>

namespace tidewell {

template <typename T>
class Task;

namespace detail {
struct RunningTask;
class PromiseBase;
} // namespace detail

/// Starts `task` on `executor`, which must outlive it, and returns at once: the first step runs as
/// a job of the executor, as every later one does. Nobody can cancel it. Any thread.
///
/// The task lives as long as something is going to resume it: a queued job, a timer, an expected
/// answer. When that is destroyed instead, the task is destroyed where it waits, without running
/// on. An exception that leaves the task ends the program.
void spawn(Executor& executor, Task<void> task);

namespace detail {

class PromiseBase {
public:
    struct FinalAwaiter {
        bool await_ready() const noexcept { return false; }
        template <typename Promise>
        std::coroutine_handle<> await_suspend(std::coroutine_handle<Promise> ended) const noexcept {
            return ended.promise().whenDone_;
        }
        void await_resume() const noexcept {}
    };

    std::suspend_always initial_suspend() const noexcept { return {}; }
    FinalAwaiter final_suspend() const noexcept { return {}; }
    [[noreturn]] void unhandled_exception() const noexcept { std::terminate(); }

    RunningTask& task() const { return *task_; }

    /// Called once, before the coroutine runs: who runs it, and what goes on after it.
    void attach(RunningTask& task, std::coroutine_handle<> whenDone) {
        task_ = &task;
        whenDone_ = whenDone;
    }

private:
    RunningTask* task_ = nullptr;
    std::coroutine_handle<> whenDone_ = std::noop_coroutine();
};

template <typename T>
struct Returned {
    std::optional<T> value;

    void return_value(T returned) { value.emplace(std::move(returned)); }
    T take() { return std::move(*value); }
};

template <>
struct Returned<void> {
    void return_void() const noexcept {}
    void take() const noexcept {}
};

template <typename T>
struct Promise final : PromiseBase, Returned<T> {
    Task<T> get_return_object() {
        return Task<T>(std::coroutine_handle<Promise>::from_promise(*this));
    }
};

} // namespace detail

/// A lazy coroutine: nothing of it runs until it is awaited or spawned. Awaiting it runs it as a
/// part of the awaiting task: same executor, same cancellation. An exception that leaves it ends
/// the program. Destroying it destroys the coroutine, wherever it waits.
///
/// Coroutines take their parameters by value and are never capturing lambdas: what a parameter
/// refers to would be gone when the coroutine goes on.
template <typename T>
class [[nodiscard]] Task {
public:
    using promise_type = detail::Promise<T>;

    Task(Task&& other) noexcept
        : coroutine_(std::exchange(other.coroutine_, nullptr)) {}
    Task& operator=(Task&&) = delete;
    ~Task() {
        if (coroutine_) {
            coroutine_.destroy();
        }
    }

    struct Awaiter {
        std::coroutine_handle<promise_type> coroutine;

        bool await_ready() const noexcept { return false; }
        template <std::derived_from<detail::PromiseBase> Awaiting>
        std::coroutine_handle<> await_suspend(std::coroutine_handle<Awaiting> awaiting) const {
            coroutine.promise().attach(awaiting.promise().task(), awaiting);
            return coroutine;
        }
        T await_resume() const { return coroutine.promise().take(); }
    };

    Awaiter operator co_await() && { return {coroutine_}; }

private:
    friend promise_type;
    friend struct detail::RunningTask;
    explicit Task(std::coroutine_handle<promise_type> coroutine)
        : coroutine_(coroutine) {}

    std::coroutine_handle<promise_type> coroutine_;
};

namespace detail {

/// A spawned task: the outermost coroutine with its executor and its cancellation. Whatever is
/// going to resume it has a reference: when the last of these goes, so does the task.
struct RunningTask final : std::enable_shared_from_this<RunningTask> {
    RunningTask(Executor& executor, Task<void> body);

    /// Queues a job that resumes `step`, unless the task is cancelled by then. The job takes over
    /// the caller's reference, so that the last one is dropped on the executor's thread, which
    /// destroys the task.
    static void post(std::shared_ptr<RunningTask> task, std::coroutine_handle<> step);
    static void start(std::shared_ptr<RunningTask> task);

    Executor& executor;
    std::stop_source stop;
    Task<void> body;
};

} // namespace detail

} // namespace tidewell
