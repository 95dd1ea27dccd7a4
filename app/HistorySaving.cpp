#include "app/HistorySaving.h"

#include <utility>

namespace tidewell {

HistorySaving::HistorySaving(MemoryWatcher& watcher, Executor& mainThread)
    : watcher_(watcher)
    , mainThread_(mainThread)
    , historyChanges_(watcher.objectWillChange([this] { copySoon(); })) {}

void HistorySaving::saveOnce() {
    State expected = State::unsaved;
    if (isLoaded_ && state_.compare_exchange_strong(expected, State::saving)) {
        watcher_.writeData();
        state_ = State::saved;
        state_.notify_all();
    } else {
        waitWhileSaving(); // on another thread, whose work the program's end would cut off
    }
}

bool HistorySaving::rescue(const std::function<void(const DataContainer&)>& save) {
    std::optional<DataContainer> copy;
    {
        const std::lock_guard lock(mutex_);
        State expected = State::unsaved;
        if (!copy_ || !state_.compare_exchange_strong(expected, State::saving)) {
            return false;
        }
        copy = std::exchange(copy_, std::nullopt);
    }
    save(*copy);
    State expected = State::saving; // unless it goes on meanwhile
    state_.compare_exchange_strong(expected, State::saved);
    state_.notify_all();
    return true;
}

void HistorySaving::copySoon() {
    isLoaded_ = true; // loading it is the watcher's first change
    if (!std::exchange(copyIsQueued_, true)) {
        mainThread_.post([this] {
            copyIsQueued_ = false;
            const std::lock_guard lock(mutex_);
            copy_.emplace();
            copy_->memoryPressureArray = watcher_.memoryPressureArray();
            copy_->swapUsedArray = watcher_.swapUsedArray();
        });
    }
}

} // namespace tidewell
