#pragma once

#include "app/ApplicationEnvironment.h"
#include "app/HistorySaving.h"
#include "app/QuitConfirmation.h"
#include "app/SceneWindows.h"
#include "app/label/BarLabelView.h"
#include "app/panel/PanelWindow.h"
#include "model/memory/MemoryWatcher.h"
#include "model/notifications/NotificationManager.h"
#include "model/processes/MemoryManager.h"
#include "model/updates/SparkleModel.h"

#include <QCoreApplication>
#include <QString>

#include <memory>

namespace tidewell {

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
