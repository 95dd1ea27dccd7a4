#pragma once

#include "base/runtime/SerialExecutor.h"

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <mutex>

namespace tidewell {

/// A figure whose reading may block: it is read on a thread of its own, which starts with the first
/// reading, and is waited for with limited patience. Used by one thread.
class PromptReading final {
public:
    /// `read` is called on the thread of its own.
    explicit PromptReading(std::function<std::uint64_t()> read)
        : read_(std::move(read)) {}

    /// Reads the figure. The last one that was read, at first 0, where that takes longer, and while
    /// an earlier reading has not ended.
    std::uint64_t value();

    /// A thousand times what a kernel's file takes on a busy machine; spent once for each reading
    /// that blocks.
    static constexpr std::chrono::milliseconds patience{500};

private:
    std::function<std::uint64_t()> read_;
    std::mutex mutex_;
    std::condition_variable hasEnded_;
    bool isReading_ = false;
    std::uint64_t last_ = 0;
    SerialExecutor reader_; // ends before what it writes to
};

} // namespace tidewell
