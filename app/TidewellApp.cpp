#include "app/TidewellApp.h"

#include "app/about/AboutView.h"
#include "app/panel/ContentView.h"
#include "app/processes/AppMemoryView.h"
#include "app/settings/SettingsView.h"
#include "base/ports/BundleInformation.h"
#include "ui/Palette.h"

#include <QCoreApplication>
#include <QToolTip>

#include <cstdlib>

namespace tidewell {

namespace {

/// Ends the program after the current event.
void quitApplication() {
    // Not quit(): that asks the windows first, and the user was asked already.
    QMetaObject::invokeMethod(
        qApp, [] { QCoreApplication::exit(EXIT_SUCCESS); }, Qt::QueuedConnection);
}

std::shared_ptr<SparkleModel> makeSparkleModel(const ApplicationEnvironment& environment) {
    if (!environment.makeUpdater) {
        return nullptr;
    }
    return std::make_shared<SparkleModel>(SparkleModel::Environment{
        environment.watcher.defaults, environment.watcher.mainThread, environment.watcher.clock,
        environment.watcher.log, environment.makeUpdater});
}

std::string menuTitle(const char* sourceText) {
    return QCoreApplication::translate("StatusMenu", sourceText).toStdString();
}

} // namespace

TidewellApp::TidewellApp(ApplicationEnvironment environment)
    : environment_(std::move(environment))
    , applicationName_(applicationName(environment_.bundle))
    , notificationManager_(std::make_shared<NotificationManager>(environment_.notificationCenter,
                                                                 environment_.watcher.log))
    , memoryWatcher_(std::make_shared<MemoryWatcher>(environment_.watcher, notificationManager_))
    , sparkleModel_(makeSparkleModel(environment_))
    , historySaving_([this] { memoryWatcher_->writeData(); })
    , panel_([this] { return makePanelContent(); })
    , quitConfirmation_(environment_.watcher.defaults, QString::fromStdString(applicationName_),
                        panel_, quitApplication) {
    panel_.setWindowTitle(QString::fromStdString(applicationName_));
    addWindows();
    appearanceChanged_ = environment_.appearance.didChange([this] { applyAppearance(); });
    applyAppearance();
}

void TidewellApp::start() {
    statusItem_ = environment_.makeStatusItem(statusItemBehaviour());
    label_ = std::make_unique<BarLabelView>(sparkleModel_.get(), *memoryWatcher_, colours::primary,
                                            environment_.watcher.mainThread, *statusItem_);
    label_->appear();
    spawn(environment_.watcher.mainThread, memoryWatcher_->startPeriodicTask());
}

StatusItemBehaviour TidewellApp::statusItemBehaviour() {
    StatusItemBehaviour behaviour;
    behaviour.identifier = "tidewell";
    behaviour.title = applicationName_;
    behaviour.activated = [this](const StatusItemActivation& activation) {
        panel_.toggle(activation);
    };
    behaviour.menu.push_back(
        {menuTitle(QT_TRANSLATE_NOOP("StatusMenu", "Open")), [this] { panel_.open({}); }});
    for (const auto& [identifier, title] :
         {std::pair("settings", QT_TRANSLATE_NOOP("StatusMenu", "Settings")),
          std::pair("about", QT_TRANSLATE_NOOP("StatusMenu", "About"))}) {
        behaviour.menu.push_back(
            {menuTitle(title), [this, identifier] { windows_.openAuxiliaryWindow(identifier); }});
    }
    behaviour.menu.push_back({menuTitle(QT_TRANSLATE_NOOP("StatusMenu", "Quit")),
                              [this] { quitConfirmation_.confirmQuit(); }});
    return behaviour;
}

std::unique_ptr<QWidget> TidewellApp::makePanelContent() {
    return std::make_unique<ContentView>(ContentView::Environment{
        .memoryWatcher = memoryWatcher_,
        .notificationManager = notificationManager_,
        .sparkleModel = sparkleModel_,
        .defaults = environment_.watcher.defaults,
        .mainThread = environment_.watcher.mainThread,
        .bundle = environment_.bundle,
        .windows = windows_,
        .confirmQuit = [this] { quitConfirmation_.confirmQuit(); },
        .openNotificationSettings = environment_.openNotificationSettings,
    });
}

std::unique_ptr<QWidget> TidewellApp::makeAppMemory(std::function<void()> dismissWindow) {
    const MemoryWatcher::Environment& shared = environment_.watcher;
    if (!memoryManager_) {
        memoryManager_ = std::make_shared<MemoryManager>(
            MemoryManager::Environment{environment_.applications, shared.defaults,
                                       shared.mainThread, shared.clock, shared.log});
    }
    return std::make_unique<AppMemoryView>(AppMemoryView::Environment{
        memoryManager_, shared.defaults, std::move(dismissWindow), panelWidth});
}

void TidewellApp::addWindows() {
    const auto [about, settings, appMemory] = windowScenes(applicationName_);
    const auto dismiss = [this](std::string_view identifier) {
        return [this, identifier] { windows_.dismissWindow(identifier); };
    };
    windows_.add(about, [this, close = dismiss(about.identifier)] {
        return std::make_unique<AboutView>(
            AboutView::Environment{environment_.bundle, environment_.openUrl, close});
    });
    windows_.add(settings, [this] {
        return std::make_unique<SettingsView>(SettingsView::Environment{
            environment_.watcher.defaults, environment_.loginItem, applicationName_, sparkleModel_,
            environment_.animationsAreWanted});
    });
    windows_.add(appMemory,
                 [this, close = dismiss(appMemory.identifier)] { return makeAppMemory(close); });
}

void TidewellApp::applyAppearance() {
    // Each window has its own palette: the application's own is what the desktop's appearance is
    // read from where nothing better is there.
    const QPalette palette = paletteFor(environment_.appearance.desktop());
    panel_.setPalette(palette);
    QToolTip::setPalette(palette);
    windows_.setPalette(palette);
}

} // namespace tidewell
