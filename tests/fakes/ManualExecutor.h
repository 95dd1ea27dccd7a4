#pragma once

#include "base/runtime/Executor.h"

#include <deque>

namespace tidewell {

/// A queue that the test drains: the main thread, or an actor's thread, under control.
class ManualExecutor final : public Executor {
public:
    void post(std::function<void()> job) override { queue_.push_back(std::move(job)); }

    /// Runs what is queued and what that queues. Returns how many jobs ran.
    std::size_t drain() {
        std::size_t count = 0;
        while (!queue_.empty()) {
            const auto job = std::move(queue_.front());
            queue_.pop_front();
            job();
            ++count;
        }
        return count;
    }

private:
    std::deque<std::function<void()>> queue_;
};

} // namespace tidewell
