#pragma once

#include "app/HistorySaving.h"
#include "app/QuitConfirmation.h"
#include "app/SceneWindows.h"
#include "app/label/BarLabelView.h"
#include "app/panel/PanelWindow.h"
#include "base/ports/Bundle.h"
#include "base/ports/LoginItem.h"
#include "desktop/appearance/DesktopAppearance.h"
#include "desktop/statusitem/StatusItem.h"
#include "desktop/statusitem/StatusItemPlace.h"
#include "model/memory/MemoryWatcher.h"
#include "model/notifications/NotificationManager.h"
#include "model/processes/MemoryManager.h"
#include "model/updates/SparkleModel.h"

#include <QCoreApplication>
#include <QString>
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

/// The application root: owns the models and everything the user sees. Created once, on the main
/// thread, after the application object. The program runs as long as the event loop does; nothing
/// is torn down before that.
class TidewellApp {
    Q_DECLARE_TR_FUNCTIONS(TidewellApp)

public:
    explicit TidewellApp(ApplicationEnvironment environment);

    /// Puts the label into the status area. Sampling starts with its appearance, and nowhere else.
    void start();

    /// Opens the panel, or brings it to the front: what a second start of the program asks for.
    void openPanel() { panel_.open(); }

    /// To be told of everything that ends the program.
    HistorySaving& historySaving() { return historySaving_; }

private:
    StatusItemBehaviour statusItemBehaviour();
    std::unique_ptr<QWidget> makePanelContent();
    std::unique_ptr<QWidget> makeAbout();
    std::unique_ptr<QWidget> makeSettings();
    std::unique_ptr<QWidget> makeAppMemory();
    void addWindows();
    void applyAppearance();

    ApplicationEnvironment environment_;
    QString applicationName_;
    // The models, in the order in which they are created.
    std::shared_ptr<NotificationManager> notificationManager_;
    std::shared_ptr<MemoryWatcher> memoryWatcher_;
    std::shared_ptr<SparkleModel> sparkleModel_;   // null where others keep the program up to date
    std::shared_ptr<MemoryManager> memoryManager_; // null before its window is first opened

    HistorySaving historySaving_;
    SceneWindows windows_{[this](QWidget& window) { panel_.adopt(window); }};
    PanelWindow panel_;
    QuitConfirmation quitConfirmation_;
    std::unique_ptr<StatusItem> statusItem_;
    std::unique_ptr<BarLabelView> label_; // goes before the item that it writes to
    Subscription appearanceChanged_;
};

} // namespace tidewell
