#include "app/TidewellApp.h"

#include "app/about/AboutView.h"
#include "app/panel/ContentView.h"
#include "app/processes/AppMemoryView.h"
#include "app/settings/SettingsView.h"
#include "base/ports/Bundle.h"
#include "model/memory/Translatable.h"
#include "ui/Palette.h"

#include <QCoreApplication>
#include <QToolTip>

#include <chrono>
#include <cstdlib>

namespace tidewell {

namespace {

/// Ends the program after the current event.
void quitApplication() {
    // Not quit(): that asks the windows first, and the user was asked already.
    QMetaObject::invokeMethod(
        qApp, [] { QCoreApplication::exit(EXIT_SUCCESS); }, Qt::QueuedConnection);
}

double secondsSince1970() {
    return std::chrono::duration<double>(std::chrono::system_clock::now().time_since_epoch())
        .count();
}

MemoryWatcher::Environment watcherEnvironment(const ApplicationEnvironment& environment) {
    return {
        .probes = environment.probes,
        .defaults = environment.defaults,
        .mainThread = environment.mainThread,
        .schedulerThread = environment.schedulerThread,
        .clock = environment.clock,
        .log = environment.log,
        .secondsSince1970 = secondsSince1970,
        .translated =
            [](const char* text) {
                return QCoreApplication::translate(modelContext, text).toStdString();
            },
    };
}

std::shared_ptr<SparkleModel> makeSparkleModel(const ApplicationEnvironment& environment) {
    if (!environment.makeUpdater) {
        return nullptr;
    }
    return std::make_shared<SparkleModel>(SparkleModel::Environment{
        .defaults = environment.defaults,
        .mainThread = environment.mainThread,
        .clock = environment.clock,
        .log = environment.log,
        .makeUpdater = environment.makeUpdater,
    });
}

} // namespace

TidewellApp::TidewellApp(ApplicationEnvironment environment)
    : environment_(std::move(environment))
    , applicationName_(QString::fromStdString(applicationName(environment_.bundle)))
    , notificationManager_(
          std::make_shared<NotificationManager>(environment_.notificationCenter, environment_.log))
    , memoryWatcher_(
          std::make_shared<MemoryWatcher>(watcherEnvironment(environment_), notificationManager_))
    , sparkleModel_(makeSparkleModel(environment_))
    , historySaving_(*memoryWatcher_, environment_.mainThread)
    , panel_([this] { return makePanelContent(); },
             [this] { return environment_.itemPlace.lastKnown(); })
    , quitConfirmation_(environment_.defaults, applicationName_, panel_, quitApplication) {
    panel_.setWindowTitle(applicationName_);
    addWindows();
    appearanceChanged_ = environment_.appearance.didChange([this] { applyAppearance(); });
    applyAppearance();
}

void TidewellApp::start() {
    statusItem_ = environment_.makeStatusItem(statusItemBehaviour());
    label_ = std::make_unique<BarLabelView>(sparkleModel_.get(), *memoryWatcher_,
                                            environment_.mainThread, *statusItem_);
    label_->appear();
    memoryWatcher_->startPeriodicTask();
}

StatusItemBehaviour TidewellApp::statusItemBehaviour() {
    StatusItemBehaviour behaviour;
    behaviour.identifier = "tidewell";
    behaviour.title = applicationName_.toStdString();
    behaviour.activated = [this] { panel_.toggle(); };
    const auto opens = [this](SceneIdentifier identifier) {
        return [this, identifier] { windows_.openAuxiliaryWindow(identifier); };
    };
    behaviour.menu = {{tr("Open").toStdString(), [this] { panel_.open(); }},
                      {tr("Settings").toStdString(), opens(SceneIdentifier::settings)},
                      {tr("About").toStdString(), opens(SceneIdentifier::about)},
                      {tr("Quit").toStdString(), [this] { quitConfirmation_.confirmQuit(); }}};
    return behaviour;
}

std::unique_ptr<QWidget> TidewellApp::makePanelContent() {
    return std::make_unique<ContentView>(ContentView::Environment{
        .memoryWatcher = memoryWatcher_,
        .notificationManager = notificationManager_,
        .sparkleModel = sparkleModel_,
        .defaults = environment_.defaults,
        .mainThread = environment_.mainThread,
        .bundle = environment_.bundle,
        .windows = windows_,
        .confirmQuit = [this] { quitConfirmation_.confirmQuit(); },
        .openNotificationSettings = environment_.openNotificationSettings,
    });
}

std::unique_ptr<QWidget> TidewellApp::makeAppMemory() {
    if (!memoryManager_) {
        memoryManager_ = std::make_shared<MemoryManager>(MemoryManager::Environment{
            .applications = environment_.applications,
            .defaults = environment_.defaults,
            .mainThread = environment_.mainThread,
            .clock = environment_.clock,
            .log = environment_.log,
        });
    }
    return std::make_unique<AppMemoryView>(AppMemoryView::Environment{
        .memoryManager = memoryManager_,
        .memoryWatcher = memoryWatcher_,
        .defaults = environment_.defaults,
        .dismissWindow = [this] { windows_.dismissWindow(SceneIdentifier::appMemory); },
        .panelWidth = panelWidth,
        .processesAreHidden = environment_.processesAreHidden,
    });
}

std::unique_ptr<QWidget> TidewellApp::makeAbout() {
    return std::make_unique<AboutView>(AboutView::Environment{
        .bundle = environment_.bundle,
        .openUrl = environment_.openUrl,
        .dismissWindow = [this] { windows_.dismissWindow(SceneIdentifier::about); },
    });
}

std::unique_ptr<QWidget> TidewellApp::makeSettings() {
    return std::make_unique<SettingsView>(SettingsView::Environment{
        .defaults = environment_.defaults,
        .loginItem = environment_.loginItem,
        .applicationName = applicationName_.toStdString(),
        .sparkleModel = sparkleModel_,
        .animationsAreWanted = environment_.animationsAreWanted,
    });
}

void TidewellApp::addWindows() {
    auto [about, settings, appMemory] = windowScenes(applicationName_);
    if (!sparkleModel_) {
        settings.height = 0; // as low as what is left of its content
    }
    windows_.add(about, [this] { return makeAbout(); });
    windows_.add(settings, [this] { return makeSettings(); });
    windows_.add(appMemory, [this] { return makeAppMemory(); });
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
