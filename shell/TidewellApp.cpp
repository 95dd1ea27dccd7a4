#include "shell/TidewellApp.h"

#include "platform/ui/Palette.h"
#include "shell/ContentView.h"
#include "support/BundleInformation.h"

#include <QCoreApplication>

namespace tidewell {

namespace {

/// Ends the program after the current event.
void quitApplication() {
    QMetaObject::invokeMethod(qApp, &QCoreApplication::quit, Qt::QueuedConnection);
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
    , historySaving_([this] { memoryWatcher_->writeData(); })
    , panel_([this] { return makePanelContent(); }) {
    panel_.setWindowTitle(QString::fromStdString(applicationName_));
    appearanceChanged_ = environment_.appearance.didChange([this] { applyAppearance(); });
    applyAppearance();
}

void TidewellApp::start() {
    statusItem_ = environment_.makeStatusItem(statusItemBehaviour());
    label_ = std::make_unique<BarLabelView>(nullptr, *memoryWatcher_, colours::primary,
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
    // The menu offers the windows that there are.
    for (const auto& [identifier, title] :
         {std::pair("settings", QT_TRANSLATE_NOOP("StatusMenu", "Settings")),
          std::pair("about", QT_TRANSLATE_NOOP("StatusMenu", "About"))}) {
        if (windows_.contains(identifier)) {
            behaviour.menu.push_back(
                {menuTitle(title), [this, identifier] { windows_.openWindow(identifier); }});
        }
    }
    behaviour.menu.push_back({menuTitle(QT_TRANSLATE_NOOP("StatusMenu", "Quit")), quitApplication});
    return behaviour;
}

std::unique_ptr<QWidget> TidewellApp::makePanelContent() const {
    return std::make_unique<ContentView>(memoryWatcher_, applicationName_, quitApplication);
}

void TidewellApp::applyAppearance() {
    // Each window has its own palette: the application's own is what the desktop's appearance is
    // read from where nothing better is there.
    const QPalette palette = paletteFor(environment_.appearance.desktop());
    panel_.setPalette(palette);
    windows_.setPalette(palette);
}

} // namespace tidewell
