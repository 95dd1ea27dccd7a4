#pragma once

#include "base/runtime/Executor.h"

#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>

namespace tidewell {

/// An executor with a thread of its own, which starts with the first job and blocks while the queue
/// is empty. Where no thread can be made, jobs stay queued, and the next `post()` tries again.
/// Destroying it waits for the job that runs at the moment and drops the rest; it must not be
/// destroyed by one of its own jobs.
class SerialExecutor final : public Executor {
public:
    SerialExecutor() = default;
    ~SerialExecutor() override;

    /// Starts the thread. Throws std::system_error where the system has none left.
    void start();
    void post(std::function<void()> job) override;

private:
    void run();

    std::mutex mutex_;
    std::condition_variable wake_;
    std::deque<std::function<void()>> queue_;
    bool stopping_ = false;
    std::thread thread_;
};

} // namespace tidewell
