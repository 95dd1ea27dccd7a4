#pragma once

#include "base/runtime/ContinuousClock.h"
#include "base/runtime/Executor.h"
#include "base/runtime/OwnedTask.h"

#include <functional>
#include <memory>

namespace tidewell {

/// Calls a callback on the main thread, at once and then periodically. The pause counts from the
/// callback's return, and missed calls are not made up for: after a suspend of several pauses, one
/// call follows.
///
/// Owned by a `std::shared_ptr`. Waits on an executor of its own; only the callback runs on the
/// main thread. A running loop keeps the scheduler alive, and the scheduler its callback.
class TaskScheduler final : public std::enable_shared_from_this<TaskScheduler> {
public:
    using Callback = std::function<void()>;

    /// The pause between two calls, in seconds.
    static constexpr double executionInterval = 60.0;
    /// The loop goes on until it is cancelled.
    static constexpr bool repeating = true;

    /// Makes an idle scheduler. Without a callback it runs its loop and calls nothing. The
    /// executors and the clock must outlive its loops. Any thread.
    TaskScheduler(Executor& executor, Executor& mainThread, ContinuousClock& clock,
                  Callback callback);

    /// Starts a loop and returns at once. Meant to be called once: a second call starts a second
    /// loop. It ends only by being cancelled, during the pause at once, during a call once the
    /// callback has returned; or with its executors or its clock. Any thread.
    [[nodiscard]] OwnedTask start();

private:
    using Self = std::shared_ptr<TaskScheduler>;
    static Task<void> runLoop(Self self);

    Executor& executor_;
    Executor& mainThread_;
    ContinuousClock& clock_;
    const Callback callback_;
};

} // namespace tidewell
