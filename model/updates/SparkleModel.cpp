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
            logMessage(environment_.log,
                       "Failed to start updater: " + started.error().description(), "general",
                       __FILE__, "init()", __LINE__, LogLevel::error);
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
    logMessage(environment_.log, "Update available: " + item.versionString, "general", __FILE__,
               "updater(_:didFindValidUpdate:)", __LINE__, LogLevel::info);
    isUpdateAvailable_ = true;
}

void SparkleModel::updaterDidNotFindUpdate(SPUUpdater& /*updater*/) {
    logMessage(environment_.log, "No update found.", "general", __FILE__,
               "updaterDidNotFindUpdate(_:)", __LINE__, LogLevel::info);
    isUpdateAvailable_ = false;
}

} // namespace tidewell
