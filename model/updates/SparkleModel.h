#pragma once

#include "base/observable/ObservableObject.h"
#include "base/ports/Log.h"
#include "base/ports/SPUUpdater.h"
#include "base/ports/UserDefaults.h"
#include "base/runtime/ContinuousClock.h"
#include "base/runtime/OwnedTask.h"

#include <functional>
#include <memory>

namespace tidewell {

/// Makes the program's updater, which tells the delegate. That outlives it.
using MakeUpdater = std::function<std::shared_ptr<SPUUpdater>(SPUUpdaterDelegate& delegate)>;

/// Connects the program to its updater: publishes whether a check can be started now and whether
/// there is a newer version, and has it looked for from time to time. Main thread.
class SparkleModel final : public ObservableObject, private SPUUpdaterDelegate {
public:
    /// How the model reaches the outside. What is referred to must outlive it.
    struct Environment {
        UserDefaults& defaults;
        Executor& mainThread;
        ContinuousClock& clock;
        Log& log;
        /// Called once, from the constructor. The updater destroys what it shows when it goes.
        MakeUpdater makeUpdater;
    };

    /// Makes the updater, and starts it where the user has automatic checks enabled. A failure to
    /// start is logged and leaves the model without an updater.
    explicit SparkleModel(Environment environment);

    /// Published: whether the user can have a check made now.
    bool canCheckForUpdates() const { return canCheckForUpdates_.get(); }
    /// Overrides what the updater last said, until it says something new.
    void setCanCheckForUpdates(bool canCheck) { canCheckForUpdates_ = canCheck; }

    /// Published: the program's updater; null where it could not be started. Lives as long as the
    /// model.
    SPUUpdater* updater() const { return updater_.get().get(); }

    /// Published: true once a newer version was found, false once none was.
    bool isUpdateAvailable() const { return isUpdateAvailable_.get(); }

    /// Has a silent check made at once, and where the updater checks automatically, one more after
    /// each of its intervals; returns at once. Replaces the checks that were scheduled before.
    /// Called each time a view that shows the result appears.
    void scheduleUpdateChecks();

    /// The second half of `scheduleUpdateChecks()`. The interval is the updater's at this moment.
    /// One that is negative, NaN or too long for the clock never elapses.
    void startUpdateCheckLoop();

private:
    void updaterDidFindValidUpdate(SPUUpdater& updater, const SUAppcastItem& item) override;
    void updaterDidNotFindUpdate(SPUUpdater& updater) override;

    static Task<void> checkPeriodically(std::weak_ptr<SPUUpdater> updater, double interval,
                                        ContinuousClock* clock);

    Environment environment_;
    Published<bool> canCheckForUpdates_{*this};
    Published<std::shared_ptr<SPUUpdater>> updater_{*this};
    Published<bool> isUpdateAvailable_{*this};
    OwnedTask schedulerTask_;
    Subscription canCheckChanges_;
};

} // namespace tidewell
