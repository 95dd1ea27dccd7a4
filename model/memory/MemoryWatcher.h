#pragma once

#include "base/observable/ObservableObject.h"
#include "base/ports/Log.h"
#include "base/ports/UserDefaults.h"
#include "base/runtime/OwnedTask.h"
#include "model/memory/MemoryPressureItem.h"
#include "model/memory/ShowItem.h"
#include "model/memory/SwapAlerts.h"
#include "model/memory/SwapItem.h"
#include "model/memory/TaskScheduler.h"
#include "model/memory/probes/SystemProbes.h"
#include "model/notifications/NotificationManager.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace tidewell {

/// The model of the machine's memory: samples pressure and use on the polling interval and swap
/// once a minute, keeps the last 100 samples of pressure and of swap, and alerts when swap is in
/// use.
///
/// Owned by a `std::shared_ptr`; its loops hold it. Main thread only.
class MemoryWatcher final : public ObservableObject,
                            public std::enable_shared_from_this<MemoryWatcher> {
public:
    /// What the watcher depends on. All of it must outlive the watcher and its loops.
    struct Environment {
        SystemProbes& probes;
        UserDefaults& defaults;
        Executor& mainThread;
        Executor& schedulerThread; ///< where the scheduler waits
        ContinuousClock& clock;
        Log& log;
        std::function<double()> secondsSince1970; ///< the wall clock, with fractions
        /// Gives a text of the context "MemoryWatcher" in the user's language.
        std::function<std::string(const char* text)> translated = [](const char* text) {
            return text;
        };
    };

    /// Without a notification manager there are no alerts.
    MemoryWatcher(Environment environment,
                  std::shared_ptr<NotificationManager> notificationManager);
    /// Loads the history, reads physical memory and swap, and starts the swap scheduler and the
    /// sampling loop, both of which run until their executors or clock are destroyed. A second
    /// call loads the history again and replaces both loops.
    void startPeriodicTask();

    /// One sampling step: pressure, then memory use.
    void performWork();

    /// Takes over physical memory where it can be read, and refreshes `usedMemoryPercentage` and
    /// `showItems`. Without counters these two do not change.
    void updateMemoryUsage();
    /// Refreshes the swap figures and appends to the swap history; 0 where swap cannot be read.
    void updateSwapUsage();
    /// Classifies the swap in use anew and may post an alert. Nothing happens while physical
    /// memory is unknown.
    void checkSwapUsage();

    /// Replaces both histories by the saved ones, or by empty ones when there are none or they
    /// cannot be read, which is logged.
    void readData();
    /// Saves both histories. What cannot be saved is logged and leaves the saved ones alone.
    void writeData();

    // Published.
    /// Percent: 100 minus the free-memory percentage.
    std::int64_t memoryPressure() const { return memoryPressure_.get(); }
    const std::vector<MemoryPressureItem>& memoryPressureArray() const {
        return memoryPressureArray_.get();
    }
    const std::vector<SwapItem>& swapUsedArray() const { return swapUsedArray_.get(); }
    /// Percent of physical memory. Keeps its value while that is unknown, and exceeds 100 where the
    /// system's figures contradict each other.
    double usedMemoryPercentage() const { return usedMemoryPercentage_.get(); }
    std::uint64_t swapTotal() const { return swapTotal_.get(); } ///< bytes, as the next two
    std::uint64_t swapUsed() const { return swapUsed_.get(); }
    std::uint64_t swapFree() const { return swapFree_.get(); }
    WarningLevel warningLevel() const { return warningLevel_.get(); }
    /// In display order. Emptied and refilled item by item at each step.
    const std::vector<ShowItem>& showItems() const { return showItems_.get(); }

    // Not published.
    /// Whether the sampling loop is alive.
    bool isRunning() const { return periodicTask_.isGoingOn(); }

private:
    using Self = std::shared_ptr<MemoryWatcher>;
    static Task<void> sample(Self self);
    static Task<void> post(Self self, WarningLevel level);

    void startScheduler();
    template <typename Item>
    void append(Published<std::vector<Item>>& history, std::int64_t value);

    Environment environment_;
    std::shared_ptr<NotificationManager> notificationManager_;

    Published<std::int64_t> memoryPressure_{*this};
    Published<std::vector<MemoryPressureItem>> memoryPressureArray_{*this};
    Published<std::vector<SwapItem>> swapUsedArray_{*this};
    Published<double> usedMemoryPercentage_{*this};
    Published<std::uint64_t> swapTotal_{*this};
    Published<std::uint64_t> swapUsed_{*this};
    Published<std::uint64_t> swapFree_{*this};
    Published<WarningLevel> warningLevel_{*this};
    Published<std::vector<ShowItem>> showItems_{*this};

    std::uint64_t physical_ = 0;      // bytes; 0 while unknown
    std::int64_t maxArrayLength_ = 0; // of both histories; 0 before the start
    OwnedTask periodicTask_;
    // Its task only: a shared pointer to the scheduler would be a cycle, since its callback holds
    // the watcher.
    OwnedTask schedulerWithCallback_;
};

} // namespace tidewell
