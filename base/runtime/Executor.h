#pragma once

#include "base/values/Interface.h"

#include <functional>

namespace tidewell {

/// Runs jobs one after the other, in the order in which they were posted, never two at a time.
/// A task is bound to one executor and runs on no other.
class Executor : public Interface {
public:
    /// Queues `job` and returns at once, also when called from a job of this executor. Any thread.
    /// Jobs still queued when the executor is destroyed are dropped without being run.
    virtual void post(std::function<void()> job) = 0;
};

} // namespace tidewell
