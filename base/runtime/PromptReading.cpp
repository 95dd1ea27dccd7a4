#include "base/runtime/PromptReading.h"

namespace tidewell {

std::uint64_t PromptReading::value() {
    std::unique_lock lock(mutex_);
    if (!isReading_) {
        isReading_ = true;
        reader_.post([this] {
            const std::uint64_t figure = read_();
            const std::lock_guard ending(mutex_);
            last_ = figure;
            isReading_ = false;
            hasEnded_.notify_one();
        });
        hasEnded_.wait_for(lock, patience, [this] { return !isReading_; });
    }
    return last_;
}

} // namespace tidewell
