#include "app/Platform.h"

#include "app/updates/ProgramUpdater.h"
#include "base/ports/Bundle.h"
#include "desktop/files/BundleReader.h"
#include "desktop/files/RunningProgram.h"
#include "desktop/notifications/NotificationSettingsPrograms.h"
#include "desktop/session/AutostartLoginItem.h"
#include "desktop/session/PortalLoginItem.h"
#include "desktop/statusitem/StatusItemForms.h"
#include "model/preferences/StoredPreferences.h"

#include <QDesktopServices>

namespace tidewell {

Platform::Platform(const Bundle& bundle, Log& log,
                   std::function<void(const QString& program)> restart)
    : bundle_(bundle)
    , log_(log)
    , restart_(std::move(restart))
    , defaults_(defaultPreferencesFile(), log)
    , probes_("/proc", "/sys", log)
    , notificationCenter_(
          sessionBus_, clock_, QString::fromStdString(applicationName(bundle)),
          permissionRecordsOfThisSession(QString::fromStdString(bundleIdentifier(bundle))), {})
    , applications_(LinuxApplicationSource::usualSettings(), surveyThread_, log)
    , loginItem_(makeLoginItem()) {
    schedulerThread_.start(); // without it swap would never be read: better to end here
}

std::unique_ptr<LoginItem> Platform::makeLoginItem() const {
    if (sandbox_.isThere()) {
        return std::make_unique<PortalLoginItem>(sessionBus_,
                                                 QStringList{QStringLiteral("tidewell")});
    }
    return std::make_unique<AutostartLoginItem>(autostartFolder(), bundleIdentifier(bundle_),
                                                applicationName(bundle_), installedProgram());
}

ApplicationEnvironment Platform::environment() {
    ApplicationEnvironment environment{
        .log = log_,
        .bundle = bundle_,
        .defaults = defaults_,
        .clock = clock_,
        .mainThread = mainThread_,
        .schedulerThread = schedulerThread_,
        .probes = probes_,
        .applications = applications_,
        .notificationCenter = notificationCenter_,
        .loginItem = *loginItem_,
        .appearance = appearance_,
        .itemPlace = itemPlace_,
        .makeStatusItem =
            [this](const StatusItemBehaviour& behaviour) {
                return std::make_unique<StatusItemSwitcher>(
                    clock_,
                    statusItemForms(sessionBus_, appearance_, itemPlace_,
                                    KeptLabelPosition{defaults_, preferences::labelWindowPos}, log_,
                                    behaviour));
            },
        .makeUpdater = {}, // which needs the rest
        .openNotificationSettings = [this] { return openNotificationSettings(desktop_); },
        .openUrl = [](const QUrl& url) { QDesktopServices::openUrl(url); },
        .processesAreHidden = sandbox_.hidesProcesses(),
        .animationsAreWanted = [this] { return look_.animationsAreWanted(); },
    };
    environment.makeUpdater = programUpdater(environment, restart_);
    return environment;
}

} // namespace tidewell
