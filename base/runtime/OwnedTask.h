#pragma once

#include "base/runtime/Task.h"

#include <stop_token>
#include <utility>

namespace tidewell {

/// A task that is bound to its owner: once this was cancelled, assigned to or destroyed, the task
/// runs no further than to where it waits next. It is destroyed there, as a job of its executor;
/// work that it has elsewhere is done before. Any thread. On the executor's own the task has no
/// step under way, and so may refer to the owner of this, except in the destructors of its
/// variables.
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
