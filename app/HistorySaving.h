#pragma once

#include "base/runtime/Executor.h"
#include "model/memory/DataContainer.h"
#include "model/memory/MemoryWatcher.h"

#include <atomic>
#include <functional>
#include <mutex>
#include <optional>

namespace tidewell {

/// Saves the history once on the program's way out, in whatever order and number the signs of it
/// come: the machine announces its power-off and then ends the program, or the program is simply
/// ended. What was never loaded is not saved: it would replace what is stored. Main thread, except
/// where it says otherwise.
class HistorySaving {
public:
    /// Both must outlive this.
    HistorySaving(MemoryWatcher& watcher, Executor& mainThread);

    /// The program ends, or the machine is about to power off or restart.
    void saveOnce();
    /// It does not, after all: what is sampled from now on is to be saved again.
    void goOn() { state_ = State::unsaved; }

    /// Where the main thread is blocked, or has no say: has the history as of the last sample
    /// saved. Does nothing and says so where it was saved, is just being saved, or is not loaded
    /// yet. Any thread.
    bool rescue(const std::function<void(const DataContainer&)>& save);
    /// Whether it is just being saved, on whatever thread: nothing ends the program meanwhile. Any
    /// thread.
    bool isSaving() const { return state_ == State::saving; }
    /// Waits while it is. Any thread but the one that saves.
    void waitWhileSaving() const { state_.wait(State::saving); }

private:
    enum class State { unsaved, saving, saved };

    void copySoon();

    MemoryWatcher& watcher_;
    Executor& mainThread_;
    std::atomic<State> state_ = State::unsaved;
    bool isLoaded_ = false;
    bool copyIsQueued_ = false;
    std::mutex mutex_;
    std::optional<DataContainer> copy_; // under the mutex; empty before the history was loaded
    Subscription historyChanges_;
};

} // namespace tidewell
