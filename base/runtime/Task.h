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
class RunningTask;
class PromiseBase;
} // namespace detail

/// Cancels a spawned task. Copies refer to the same task; letting go of a handle cancels nothing
/// and does not keep the task alive.
class TaskHandle {
public:
    /// Asks the task to end: a sleep that it is in, or comes to, ends at once as cancelled, and
    /// `currentTaskIsCancelled()` is true from now on. Any thread, any number of times, also
    /// after the task has ended.
    void cancel() { stop_.request_stop(); }

private:
    friend TaskHandle spawn(Executor& executor, Task<void> task);
    explicit TaskHandle(std::stop_source stop)
        : stop_(std::move(stop)) {}

    std::stop_source stop_;
};

/// A task that is bound to its owner: once this was cancelled, assigned to or destroyed, the task
/// runs no further, whatever it waits for. It is destroyed where it waits, as a job of its
/// executor; work that it has elsewhere is done before. On the executor's thread: so the task may
/// refer to the owner of this, except in the destructors of its variables.
class OwnedTask {
public:
    OwnedTask() = default;
    /// Starts `task` as `spawn()` does.
    OwnedTask(Executor& executor, Task<void> task);
    OwnedTask(OwnedTask&& other) noexcept = default;
    OwnedTask& operator=(OwnedTask&& other) noexcept {
        cancel();
        stop_ = std::move(other.stop_);
        return *this;
    }
    ~OwnedTask() { cancel(); }

    void cancel() { stop_.request_stop(); }

private:
    std::stop_source stop_{std::nostopstate};
};

/// Starts `task` on `executor`, which must outlive it, and returns at once: the first step runs as
/// a job of the executor, as every later one does. Any thread.
///
/// The task lives as long as something is going to resume it: a queued job, a timer, an expected
/// answer. When that is destroyed instead, the task is destroyed where it waits, without running
/// on. An exception that leaves the task ends the program.
TaskHandle spawn(Executor& executor, Task<void> task);

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
class Promise final : public PromiseBase {
public:
    Task<T> get_return_object();
    void return_value(T value) { value_.emplace(std::move(value)); }
    void unhandled_exception() { failure_ = std::current_exception(); }
    T takeResult() {
        if (failure_) {
            std::rethrow_exception(failure_);
        }
        return std::move(*value_);
    }

private:
    std::optional<T> value_;
    std::exception_ptr failure_;
};

template <>
class Promise<void> final : public PromiseBase {
public:
    Task<void> get_return_object();
    void return_void() const noexcept {}
    void unhandled_exception() { failure_ = std::current_exception(); }
    void takeResult() const {
        if (failure_) {
            std::rethrow_exception(failure_);
        }
    }

private:
    std::exception_ptr failure_;
};

} // namespace detail

/// A lazy coroutine: nothing of it runs until it is awaited or spawned. Awaiting it runs it as a
/// part of the awaiting task: same executor, same cancellation. An exception that leaves it is
/// thrown where it is awaited. Destroying it destroys the coroutine, wherever it waits.
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

    class Awaiter {
    public:
        explicit Awaiter(std::coroutine_handle<promise_type> coroutine)
            : coroutine_(coroutine) {}

        bool await_ready() const noexcept { return false; }
        template <std::derived_from<detail::PromiseBase> Awaiting>
        std::coroutine_handle<> await_suspend(std::coroutine_handle<Awaiting> awaiting) const {
            coroutine_.promise().attach(awaiting.promise().task(), awaiting);
            return coroutine_;
        }
        T await_resume() const { return coroutine_.promise().takeResult(); }

    private:
        std::coroutine_handle<promise_type> coroutine_;
    };

    Awaiter operator co_await() && { return Awaiter(coroutine_); }

private:
    friend promise_type;
    friend class detail::RunningTask;
    explicit Task(std::coroutine_handle<promise_type> coroutine)
        : coroutine_(coroutine) {}

    std::coroutine_handle<promise_type> coroutine_;
};

namespace detail {

template <typename T>
Task<T> Promise<T>::get_return_object() {
    return Task<T>(std::coroutine_handle<Promise>::from_promise(*this));
}

inline Task<void> Promise<void>::get_return_object() {
    return Task<void>(std::coroutine_handle<Promise>::from_promise(*this));
}

/// A spawned task: the outermost coroutine with its executor and its cancellation. Owned by
/// whatever will resume it, so that nothing has to be torn down by hand.
class RunningTask final : public std::enable_shared_from_this<RunningTask> {
public:
    enum class Cancelled {
        isTold, ///< goes on, to end by itself
        ends,   ///< goes on no more
    };
    RunningTask(Executor& executor, Task<void> body, Cancelled cancelled);

    Executor& executor() const { return executor_; }
    const std::stop_source& stop() const { return stop_; }
    bool endsWhenCancelled() const { return cancelled_ == Cancelled::ends; }
    void start();
    void resume(std::coroutine_handle<> coroutine);

private:
    Executor& executor_;
    std::stop_source stop_;
    Cancelled cancelled_;
    Task<void> body_;
};

} // namespace detail

} // namespace tidewell
