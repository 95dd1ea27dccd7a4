#pragma once

#include "base/observable/Subscription.h"
#include "base/ports/StoredPreference.h"
#include "base/values/Interface.h"
#include "base/values/Result.h"

#include <functional>
#include <string>

namespace tidewell {

class SPUUpdater;

/// Where an updater keeps the user's choices.
struct UpdaterPreferences {
    StoredPreference<bool> automaticallyChecks;
    /// Whether a new version is downloaded before the user wants to install it.
    StoredPreference<bool> automaticallyDownloads;
    StoredPreference<double> checkInterval;       ///< seconds between two silent checks
    StoredPreference<std::string> skippedVersion; ///< which the user does not want to hear of
    StoredPreference<double> feedSerial;          ///< the highest one seen: older feeds are refused
};

/// A release that an updater found.
struct SUAppcastItem {
    std::string versionString; ///< as it is shown to the user
};

/// Called on the main thread with the result of each check of an updater, silent or not. A check
/// that fails or is cancelled calls nothing.
class SPUUpdaterDelegate {
public:
    SPUUpdaterDelegate(const SPUUpdaterDelegate&) = delete;
    SPUUpdaterDelegate& operator=(const SPUUpdaterDelegate&) = delete;

    virtual void updaterDidFindValidUpdate(SPUUpdater& updater, const SUAppcastItem& item) = 0;
    virtual void updaterDidNotFindUpdate(SPUUpdater& updater) = 0;

protected:
    SPUUpdaterDelegate() = default;
    ~SPUUpdaterDelegate() = default;
};

/// Looks for new versions of the program and, when the user wants it, installs them. Main thread;
/// nothing here blocks.
class SPUUpdater : public Interface {
public:
    /// Makes the updater ready for checks, or says why it cannot be. Does nothing, successfully, on
    /// one that is started already.
    [[nodiscard]] virtual Result<> startUpdater() = 0;

    /// True while the updater is started and no check is under way.
    virtual bool canCheckForUpdates() const = 0;
    /// Calls `observer` with the present value, at once, and with every new one.
    [[nodiscard]] virtual Subscription
    observeCanCheckForUpdates(std::function<void(bool canCheck)> observer) = 0;

    // The user's choices, which the updater stores under its `UpdaterPreferences`.

    virtual bool automaticallyChecksForUpdates() const = 0;
    virtual void setAutomaticallyChecksForUpdates(bool automatically) = 0;
    virtual bool automaticallyDownloadsUpdates() const = 0;
    virtual void setAutomaticallyDownloadsUpdates(bool automatically) = 0;
    /// Seconds between two silent checks.
    virtual double updateCheckInterval() const = 0;
    virtual void setUpdateCheckInterval(double seconds) = 0;

    /// The check that the user asked for, in windows of the updater's own.
    virtual void checkForUpdates() = 0;

    /// A check that shows nothing, errors included, and answers through the delegate alone. Does
    /// nothing while another check is under way, and on an updater that is not started.
    virtual void checkForUpdateInformation() = 0;
};

} // namespace tidewell
