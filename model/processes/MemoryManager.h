#pragma once

#include "base/observable/ObservableObject.h"
#include "base/ports/Log.h"
#include "base/ports/UserDefaults.h"
#include "base/runtime/ContinuousClock.h"
#include "base/runtime/Executor.h"
#include "base/runtime/OwnedTask.h"
#include "model/processes/ApplicationSource.h"
#include "model/processes/DisplayContainer.h"

#include <memory>
#include <vector>

namespace tidewell {

/// The model of who uses the memory: surveys the running applications on the polling interval, as
/// long as it was started and not stopped.
///
/// Owned by a `std::shared_ptr`; its loop holds it. Main thread only, its tasks included.
class MemoryManager final : public ObservableObject,
                            public std::enable_shared_from_this<MemoryManager> {
public:
    /// What the manager stands on. All of it must outlive the manager and its loop.
    struct Environment {
        ApplicationSource& applications;
        UserDefaults& defaults;
        Executor& mainThread;
        ContinuousClock& clock;
        Log& log;
    };

    explicit MemoryManager(Environment environment);

    /// Stops as `stopPeriodicTask()` does, then starts the loop, whose first survey begins at
    /// once.
    void startPeriodicTask();

    /// Empties the list and ends the loop, which publishes nothing any more. Also when idle.
    void stopPeriodicTask();

    /// One survey: lists the applications and publishes those whose memory can be read, largest
    /// first, equal ones in the source's order. Publishes nothing when it was cancelled while the
    /// source made its list.
    Task<void> getAllProcessesMemoryUsage();

    /// The last complete survey. Published, once for each survey.
    const std::vector<DisplayContainer>& allProcesses() const { return allProcesses_.get(); }

    /// Whether the loop is alive. Not published.
    bool isRunning() const { return periodicTask_.isGoingOn(); }

private:
    using Self = std::shared_ptr<MemoryManager>;
    static Task<void> survey(Self self);
    static Task<void> getAllProcessesMemoryUsage(Self self);

    Environment environment_;
    Published<std::vector<DisplayContainer>> allProcesses_{*this};
    OwnedTask periodicTask_;
};

} // namespace tidewell
