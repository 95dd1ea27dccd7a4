#pragma once

#include "base/runtime/Task.h"

#include <atomic>
#include <functional>

namespace tidewell {

/// The right to resume one suspended coroutine, once, as a job of its task's executor. Made by
/// awaiters, which hand it to whatever they wait for.
class Resumption {
public:
    template <std::derived_from<detail::PromiseBase> Promise>
    explicit Resumption(std::coroutine_handle<Promise> coroutine)
        : task_(coroutine.promise().task().shared_from_this())
        , coroutine_(coroutine) {}
    Resumption(const Resumption&) = delete;
    Resumption& operator=(const Resumption&) = delete;

    /// True for the first caller only, who has to call `resume()` next. Any thread.
    bool claim() { return !claimed_.exchange(true); }

    /// Posts the resumption. Only after a successful `claim()`.
    void resume();

private:
    std::shared_ptr<detail::RunningTask> task_;
    std::coroutine_handle<> coroutine_;
    std::atomic<bool> claimed_ = false;
};

namespace detail {

/// Called on the thread that cancels. The function holds the `Resumption` by a weak pointer: that
/// owns the task, which owns this.
using OnCancel = std::stop_callback<std::function<void()>>;

class WorkElsewhere {
public:
    using Work = std::function<void(const std::stop_token& stop)>;

    WorkElsewhere(Executor& other, Work work)
        : other_(other)
        , work_(std::move(work)) {}

    WorkElsewhere& operator co_await() & { return *this; }
    void operator co_await() && = delete; // see "named first"

    bool await_ready() const noexcept { return false; }
    template <std::derived_from<PromiseBase> Promise>
    void await_suspend(std::coroutine_handle<Promise> coroutine) {
        // The job keeps the task, and with it this awaiter, alive until the work is done.
        other_.post([this, stop = coroutine.promise().task().stop.get_token(),
                     resumption = std::make_shared<Resumption>(coroutine)] {
            work_(stop);
            resumption->resume();
        });
    }
    void await_resume() const noexcept {}

private:
    Executor& other_;
    Work work_;
};

template <typename T>
class Answer {
public:
    using Ask = std::function<void(std::function<void(T)>)>;

    explicit Answer(Ask ask)
        : ask_(std::move(ask)) {}

    Answer& operator co_await() & { return *this; }
    void operator co_await() && = delete; // see "named first"

    bool await_ready() const noexcept { return false; }
    template <std::derived_from<PromiseBase> Promise>
    void await_suspend(std::coroutine_handle<Promise> coroutine) {
        const std::stop_source& stop = coroutine.promise().task().stop;
        if (stop.stop_requested()) {
            return; // without anybody who would resume it
        }
        auto resumption = std::make_shared<Resumption>(coroutine);
        onCancel_ =
            std::make_shared<OnCancel>(stop.get_token(), [weak = std::weak_ptr(resumption)] {
                const auto pending = weak.lock();
                if (pending && pending->claim()) {
                    pending->resume();
                }
            });
        // A local: where `ask` drops its argument, the task and this awaiter are destroyed
        // meanwhile.
        const Ask ask = std::move(ask_);
        ask([this, resumption = std::move(resumption)](T value) {
            if (resumption->claim()) {
                answer_.emplace(std::move(value));
                resumption->resume();
            }
        });
    }
    T await_resume() { return std::move(*answer_); }

private:
    Ask ask_;
    std::optional<T> answer_;
    std::shared_ptr<OnCancel> onCancel_; // shared, since GCC 12 copies what is awaited first
};

} // namespace detail

// Named first: what takes a function has to be stored in a variable that is awaited then. A
// capturing lambda that is a temporary of the awaiting expression itself is destroyed twice by
// GCC 12 when the task is destroyed where it waits. Awaiting the call directly does not compile.

/// `auto work = runOn(other, function); co_await work;`: runs `function` as a job of another
/// executor, waits for it to return and goes on where the task belongs. Cancelling the task
/// meanwhile is up to the work: it is handed the task's stop token if it takes one. `other` must
/// outlive the task.
inline detail::WorkElsewhere runOn(Executor& other, detail::WorkElsewhere::Work work) {
    return {other, std::move(work)};
}
inline detail::WorkElsewhere runOn(Executor& other, std::function<void()> work) {
    return {other, [work = std::move(work)](const std::stop_token& /*stop*/) { work(); }};
}

/// `auto answer = answerOf<T>(ask); T value = co_await answer;`: calls `ask` with a function that
/// takes the answer, and waits until that was called, from any thread; later calls are ignored.
/// Cancelling ends the wait. When every copy of the function is destroyed uncalled, the task is
/// destroyed where it waits.
template <typename T>
detail::Answer<T> answerOf(typename detail::Answer<T>::Ask ask) {
    return detail::Answer<T>(std::move(ask));
}

} // namespace tidewell
