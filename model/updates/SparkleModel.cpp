#include "model/updates/SparkleModel.h"

#include "model/preferences/StoredPreferences.h"

#include <limits>
#include <utility>

namespace tidewell {

SparkleModel::SparkleModel(Environment environment)
    : environment_(std::move(environment)) {
    auto updater = environment_.makeUpdater(*this);
    canCheckChanges_ = updater->observeCanCheckForUpdates(
        [this](bool canCheck) { canCheckForUpdates_ = canCheck; });
    if (stored(environment_.defaults, preferences::updater.automaticallyChecks).value_or(false)) {
        if (const auto started = updater->startUpdater(); !started) {
            logError(environment_.log, "Failed to start updater: " + started.error().description(),
                     "init()");
            return;
        }
    }
    updater_ = std::move(updater);
}

void SparkleModel::scheduleUpdateChecks() {
    schedulerTask_.cancel();
    SPUUpdater* const present = updater();
    if (present == nullptr) {
        return;
    }
    if (present->automaticallyChecksForUpdates()) {
        startUpdateCheckLoop();
    } else {
        present->checkForUpdateInformation();
    }
}

void SparkleModel::startUpdateCheckLoop() {
    schedulerTask_.cancel();
    if (const auto& present = updater_.get()) {
        schedulerTask_ = OwnedTask(
            environment_.mainThread,
            checkPeriodically(present, present->updateCheckInterval(), &environment_.clock));
    }
}

Task<void> SparkleModel::checkPeriodically(std::weak_ptr<SPUUpdater> updater, double interval,
                                           ContinuousClock* clock) {
    // False for NaN, too.
    const double pause = interval >= 0 ? interval : std::numeric_limits<double>::infinity();
    for (;;) {
        if (const auto present = updater.lock()) { // must not be kept: its delegate may go
            present->checkForUpdateInformation();
        }
        co_await sleepFor(*clock, pause);
    }
}

void SparkleModel::updaterDidFindValidUpdate(SPUUpdater& /*updater*/, const SUAppcastItem& item) {
    logInfo(environment_.log, "Update available: " + item.versionString,
            "updater(_:didFindValidUpdate:)");
    isUpdateAvailable_ = true;
}

void SparkleModel::updaterDidNotFindUpdate(SPUUpdater& /*updater*/) {
    logInfo(environment_.log, "No update found.", "updaterDidNotFindUpdate(_:)");
    isUpdateAvailable_ = false;
}

} // namespace tidewell
