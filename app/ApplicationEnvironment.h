#pragma once

#include "base/ports/Bundle.h"
#include "base/ports/Log.h"
#include "base/ports/LoginItem.h"
#include "base/ports/UserDefaults.h"
#include "base/ports/UserNotificationCenter.h"
#include "base/runtime/ContinuousClock.h"
#include "base/runtime/Executor.h"
#include "desktop/appearance/DesktopAppearance.h"
#include "desktop/statusitem/StatusItem.h"
#include "desktop/statusitem/StatusItemPlace.h"
#include "model/memory/probes/SystemProbes.h"
#include "model/processes/ApplicationSource.h"
#include "model/updates/SparkleModel.h"

#include <QUrl>

#include <functional>
#include <memory>

namespace tidewell {

/// How the program reaches the outside. What is referred to must outlive the application root.
struct ApplicationEnvironment {
    Log& log;
    const Bundle& bundle;
    UserDefaults& defaults;
    ContinuousClock& clock;
    Executor& mainThread;
    Executor& schedulerThread; ///< where the once-a-minute work waits
    SystemProbes& probes;
    ApplicationSource& applications;
    UserNotificationCenter& notificationCenter;
    LoginItem& loginItem;
    DesktopAppearance& appearance;
    const StatusItemPlace& itemPlace;
    std::function<std::unique_ptr<StatusItem>(const StatusItemBehaviour&)> makeStatusItem;
    MakeUpdater makeUpdater; ///< empty in a program that others keep up to date
    /// Opens the desktop's notification settings; false where it has none.
    std::function<bool()> openNotificationSettings;
    std::function<void(const QUrl& url)> openUrl;
    bool processesAreHidden; ///< a sandbox keeps other programs out of sight
    /// Whether the user wants things to move.
    std::function<bool()> animationsAreWanted;
};

} // namespace tidewell
