#include "base/runtime/SerialExecutor.h"

#include <system_error>
#include <utility>

namespace tidewell {

SerialExecutor::~SerialExecutor() {
    {
        const std::lock_guard lock(mutex_);
        stopping_ = true;
    }
    wake_.notify_one();
    if (thread_.joinable()) {
        thread_.join();
    }
    // One by one, while there still is a queue: see the end of run().
    while (!queue_.empty()) {
        const auto dropped = std::move(queue_.front());
        queue_.pop_front();
    }
}

void SerialExecutor::start() {
    const std::lock_guard lock(mutex_);
    if (!thread_.joinable() && !stopping_) {
        thread_ = std::thread([this] { run(); });
    }
}

void SerialExecutor::post(std::function<void()> job) {
    {
        const std::lock_guard lock(mutex_);
        queue_.push_back(std::move(job));
    }
    try {
        start();
    } catch (const std::system_error&) {
        return; // no more threads at the moment
    }
    wake_.notify_one();
}

void SerialExecutor::run() {
    for (;;) {
        std::function<void()> job;
        {
            std::unique_lock lock(mutex_);
            wake_.wait(lock, [this] { return stopping_ || !queue_.empty(); });
            if (stopping_) {
                return;
            }
            job = std::move(queue_.front());
            queue_.pop_front();
        }
        job();
        // The job goes here, outside the lock: destroying it may destroy a task, which may post.
    }
}

} // namespace tidewell
