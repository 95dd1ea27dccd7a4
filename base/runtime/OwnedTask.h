#pragma once

#include "base/runtime/Task.h"

#include <stop_token>
#include <utility>

namespace tidewell {

/// A task that ends with its owner. Cancelling, assigning to or destroying this lets the task run
/// to its next `co_await` at most. The coroutine is destroyed later, by a job of its executor, and
/// not before a job that it waits for on another one (see `runOn`) has returned. Any thread.
///
/// On the executor's own thread no step of the task is running meanwhile, and none runs afterwards.
/// There, the task may refer to the object that this is a member of; only the destructors of its
/// local variables may not, since they run later.
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
    /// Whether it was started and not cancelled; also true of one that has come to its end.
    bool isGoingOn() const { return stop_.stop_possible() && !stop_.stop_requested(); }

private:
    std::stop_source stop_{std::nostopstate};
};

} // namespace tidewell
