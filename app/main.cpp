#include "app/TidewellApp.h"
#include "app/updates/ProgramUpdater.h"
#include "base/ports/BundleInformation.h"
#include "base/runtime/SerialExecutor.h"
#include "desktop/appearance/DesktopAnimations.h"
#include "desktop/appearance/DesktopAppearance.h"
#include "desktop/appearance/IconThemes.h"
#include "desktop/files/BundleReader.h"
#include "desktop/files/FileUserDefaults.h"
#include "desktop/files/JournalLog.h"
#include "desktop/notifications/DesktopNotificationCenter.h"
#include "desktop/notifications/NotificationSettings.h"
#include "desktop/session/AutostartLoginItem.h"
#include "desktop/session/HangingBuses.h"
#include "desktop/session/MainThread.h"
#include "desktop/session/PowerOffMonitor.h"
#include "desktop/session/SessionEnd.h"
#include "desktop/session/SingleInstance.h"
#include "desktop/session/TerminationSignals.h"
#include "desktop/statusitem/DesktopStatusItem.h"
#include "desktop/statusitem/X11.h"
#include "model/memory/probes/linux/LinuxProbes.h"
#include "model/processes/linux/LinuxApplicationSource.h"
#include "ui/Translations.h"

#include <QApplication>
#include <QDesktopServices>
#include <QFile>
#include <QUrl>

#include <cerrno>
#include <chrono>
#include <clocale>
#include <cstdlib>
#include <string>
#include <system_error>

#include <fcntl.h>
#include <unistd.h>

namespace tidewell {
namespace {

using namespace std::chrono_literals;

bool isSet(const char* variable) {
    const char* value = std::getenv(variable);
    return value != nullptr && *value != '\0';
}

/// Whether there is a display beside the X server. The toolkit ends the program with a core dump
/// where it finds none at all.
bool hasOtherDisplay() {
    return isSet("WAYLAND_DISPLAY") || isSet("QT_QPA_PLATFORM");
}

/// A Wayland client cannot place its windows, so the panel could not lie beside the status item.
/// Where there is an X server, too, it is the better choice, unless the user chose.
/// Returns whether it was this program's choice.
bool preferX11() {
    return isSet("DISPLAY") && !isSet("QT_QPA_PLATFORM") &&
           qputenv("QT_QPA_PLATFORM", "xcb;wayland");
}

/// A program may be started without standard streams. Their numbers would go to the next files
/// that are opened, and log lines into the bus, say.
void fillStandardStreams() {
    int descriptor = STDIN_FILENO;
    while (descriptor >= 0 && descriptor <= STDERR_FILENO) {
        descriptor = open("/dev/null", O_RDWR);
    }
    if (descriptor >= 0) {
        close(descriptor);
    }
}

double secondsSince1970() {
    return std::chrono::duration<double>(std::chrono::system_clock::now().time_since_epoch())
        .count();
}

void logError(Log& log, std::string_view message, std::int64_t line) {
    logMessage(log, message, "general", __FILE__, "main()", line, LogLevel::error);
}

struct Ending {
    int status;
    std::string next; ///< the file to start then; empty where nothing is to be started
};

Ending runProgram(int argc, char** argv, const Bundle& bundle, x11::OwnConnection server,
                  Log& log) {
    const QString identifier = QString::fromStdString(bundleIdentifier(bundle));
    const QString name = QString::fromStdString(applicationName(bundle));

    const bool choseX11 = preferX11();
    const QApplication application(argc, argv);
    if (choseX11) {
        qunsetenv("QT_QPA_PLATFORM"); // not the choice of the programs that this one starts
    }
    server.reset(); // not before: a server may start anew when its last client leaves
    // The toolkit has taken over the user's locale. Texts for the user come from ICU; files and
    // protocols keep the plain notation of numbers, whatever the user's decimal sign is.
    std::setlocale(LC_NUMERIC, "C");
    QApplication::setApplicationName(name);
    QApplication::setDesktopFileName(identifier);
    QApplication::setQuitOnLastWindowClosed(false);

    const QDBusConnection sessionBus = QDBusConnection::sessionBus();
    SingleInstance instance(sessionBus, identifier, SingleInstance::usualLockFile(identifier), 3s,
                            log);
    if (const auto status = instance.start()) {
        return {*status, {}};
    }
    const Translations translations(
        QString::fromStdString((installedInfoFile().parent_path() / "translations").string()));
    useInstalledIconThemes();

    // What the models stand on, in the order in which it has to outlive the rest. Tasks wait in
    // the clock and the executors, and end with them.
    FileUserDefaults defaults(defaultPreferencesFile(), log);
    LinuxProbes probes("/proc", "/sys", log);
    TimerFdClock clock;
    const ClockDriver clockDriver(clock);
    MainThread mainThread;
    SerialExecutor schedulerThread;
    SerialExecutor surveyThread;
    DesktopNotificationCenter notificationCenter(sessionBus, clock, name,
                                                 notificationRecordsOfThisSession(identifier), {});
    const QString desktop = qEnvironmentVariable("XDG_CURRENT_DESKTOP");
    DesktopAppearance appearance(sessionBus, desktop);
    const DesktopAnimations animations(sessionBus);
    const auto animationsAreWanted = [&animations] { return animations.areWanted(); };
    LinuxApplicationSource applications(LinuxApplicationSource::usualSettings(), surveyThread, log);
    AutostartLoginItem loginItem(autostartFolder(), identifier.toStdString(), name.toStdString(),
                                 installedProgram());
    std::string next;
    const auto restart = [&next](const QString& program) {
        next = QFile::encodeName(program).toStdString();
        QCoreApplication::exit(EXIT_SUCCESS);
    };

    TidewellApp app({
        .watcher = {.probes = probes,
                    .defaults = defaults,
                    .mainThread = mainThread,
                    .schedulerThread = schedulerThread,
                    .clock = clock,
                    .log = log,
                    .secondsSince1970 = secondsSince1970,
                    .translated =
                        [](const char* text) {
                            return QCoreApplication::translate("MemoryWatcher", text).toStdString();
                        }},
        .notificationCenter = notificationCenter,
        .bundle = bundle,
        .appearance = appearance,
        .makeStatusItem =
            [&](const StatusItemBehaviour& behaviour) {
                return std::make_unique<DesktopStatusItem>(sessionBus, clock, appearance, log,
                                                           behaviour);
            },
        .makeUpdater = programUpdater(
            {bundle, defaults, mainThread, log, appearance, animationsAreWanted, restart}),
        .applications = applications,
        .loginItem = loginItem,
        .openNotificationSettings = [desktop] { return openNotificationSettings(desktop); },
        .openUrl = [](const QUrl& url) { QDesktopServices::openUrl(url); },
        .animationsAreWanted = animationsAreWanted,
    });

    const SessionEnd sessionEnd([&app] { app.historySaving().willTerminate(); });
    // Not quit(): that asks the windows first, and a signal is no question.
    const TerminationSignals signals([] { QCoreApplication::exit(EXIT_SUCCESS); });
    const PowerOffMonitor powerOff(
        QDBusConnection::systemBus(), name,
        {.willPowerOff = [&app] { app.historySaving().willPowerOff(); },
         .calledOff = [&app] { app.historySaving().powerOffWasCancelled(); }},
        log);
    instance.onActivate([&app] { app.openPanel(); });

    app.start();
    const int status = QApplication::exec();
    return {status, next};
}

/// Goes on as another program, now that nothing of this one is left.
int startNext(const std::string& program, Log& log) {
    execl(program.c_str(), program.c_str(), nullptr);
    logError(log, program + " cannot be started: " + std::system_category().message(errno),
             __LINE__);
    return EXIT_FAILURE;
}

} // namespace
} // namespace tidewell

int main(int argc, char** argv) {
    using namespace tidewell;
    fillStandardStreams();
    JournalLog startUpLog(bundleIdentifier(Bundle({})));
    const Bundle bundle = readBundle(installedInfoFile(), startUpLog);
    JournalLog log(bundleIdentifier(bundle));

    x11::OwnConnection server = x11::connect();
    if (!server && !hasOtherDisplay()) {
        logError(log,
                 "There is no display to show anything on: neither DISPLAY nor "
                 "WAYLAND_DISPLAY leads to one",
                 __LINE__);
        return EXIT_FAILURE;
    }
    leaveOutHangingBuses(1s, log);
    const Ending ending = runProgram(argc, argv, bundle, std::move(server), log);
    return ending.next.empty() ? ending.status : startNext(ending.next, log);
}
