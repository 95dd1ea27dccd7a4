#include "app/Platform.h"
#include "app/TidewellApp.h"
#include "base/ports/Bundle.h"
#include "desktop/display/LayerShell.h"
#include "desktop/display/QtPlatform.h"
#include "desktop/display/WaylandCompositor.h"
#include "desktop/display/X11.h"
#include "desktop/files/BundleReader.h"
#include "desktop/files/FileUserDefaults.h"
#include "desktop/files/JournalLog.h"
#include "desktop/files/QtMessages.h"
#include "desktop/files/RunningProgram.h"
#include "desktop/files/UserFolders.h"
#include "desktop/session/PowerOffMonitor.h"
#include "desktop/session/ProgramEnd.h"
#include "desktop/session/ScopedVariable.h"
#include "desktop/session/SessionBusReturn.h"
#include "desktop/session/SingleInstance.h"
#include "desktop/session/TerminationSignals.h"
#include "desktop/session/UsableBuses.h"
#include "model/memory/DataContainerJson.h"
#include "model/preferences/StoredPreferences.h"
#include "ui/Accessible.h"
#include "ui/Style.h"
#include "ui/Translations.h"

#include <QApplication>
#include <QFile>

#include <cerrno>
#include <chrono>
#include <clocale>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>
#include <system_error>

#include <fcntl.h>
#include <malloc.h>
#include <unistd.h>

namespace tidewell {
namespace {

using namespace std::chrono_literals;

bool isSet(const char* variable) {
    const char* value = std::getenv(variable);
    return value != nullptr && *value != '\0';
}

struct UsableDisplay {
    bool isThere = false;
    bool isX11 = false;                                  ///< that of an X server may be used
    x11::OwnConnection server{nullptr, &xcb_disconnect}; ///< null where it is not needed
};

/// Leaves out an X server that does not answer, for which Qt would wait without a limit, and asks
/// none where Wayland will do: that would start XWayland.
UsableDisplay findDisplay(Log& log) {
    const bool isWanted = isSet("QT_QPA_PLATFORM");
    if (!isWanted && layershell::isOffered()) {
        return {.isThere = true, .isX11 = isSet("DISPLAY")};
    }
    UsableDisplay display;
    if (isSet("DISPLAY")) {
        display.server = x11::connect(10s); // with patience: at log-in it may be slow
    }
    display.isX11 = display.server != nullptr;
    display.isThere = display.isX11 || isWanted || compositorOffers("wl_compositor", 5s);
    if (!display.isThere) {
        logError(log,
                 "There is no display to show anything on: neither DISPLAY nor "
                 "WAYLAND_DISPLAY leads to one that answers",
                 "findDisplay()");
    }
    return display;
}

/// What the program does instead of starting where it is given arguments: there is no
/// configuration by command line. The status to end with.
int answerArguments(int argc, char** argv, const Bundle& bundle) {
    const std::string_view argument = argv[1];
    if (argc == 2 && argument == "--version") {
        std::printf("%s %s (%s)\n", applicationName(bundle).c_str(), version(bundle).c_str(),
                    buildNumber(bundle).c_str());
        return EXIT_SUCCESS;
    }
    if (argc == 2 && argument == "--help") {
        std::puts(
            "Usage: tidewell [--version | --help]\n"
            "Watches the machine's memory from the status area of the desktop.\n"
            "A second start brings up the panel of the first. Settings are made in the panel.");
        return EXIT_SUCCESS;
    }
    std::fprintf(stderr, "tidewell: cannot be started with \"%s\"; see tidewell --help\n", argv[1]);
    return 2;
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

std::unique_ptr<QApplication> makeApplication(int& argc, char** argv, const Bundle& bundle,
                                              bool isX11) {
    std::unique_ptr<QApplication> application;
    {
        const ScopedVariable display("DISPLAY", isX11 ? qgetenv("DISPLAY") : QByteArray());
        const ScopedVariable platform("QT_QPA_PLATFORM",
                                      qtPlatform({.x11 = isX11,
                                                  .layerShell = layershell::isOffered(),
                                                  .wanted = qgetenv("QT_QPA_PLATFORM")}));
        // On Wayland Qt takes all windows to be at (0, 0), unless told otherwise; what opens beside
        // one then goes astray.
        const ScopedVariable places("QT_WAYLAND_DISABLE_FIXED_POSITIONS", "1");
        // A session manager that hangs would block the start, and one that crashes would end the
        // program: libICE calls exit(). What it tells, the end of the X server tells as well.
        const ScopedVariable sessionManager("SESSION_MANAGER", {});
        // No platform theme and no style but Qt's own: see DesktopLook.
        const ScopedVariable theme("QT_QPA_PLATFORMTHEME", {});
        const ScopedVariable style("QT_STYLE_OVERRIDE", {});
        QGuiApplication::setDesktopSettingsAware(false);
        QApplication::setStyle(new Style); // the application's from now on
        application = std::make_unique<QApplication>(argc, argv);
    }
    makeWindowsAccessible();
    // Qt has set the user's locale. Texts for the user come from ICU; files and protocols keep
    // the decimal point.
    std::setlocale(LC_NUMERIC, "C");
    QApplication::setApplicationName(QString::fromStdString(applicationName(bundle)));
    QApplication::setDesktopFileName(QString::fromStdString(bundleIdentifier(bundle)));
    QApplication::setQuitOnLastWindowClosed(false);
    return application;
}

/// Saves the history by nothing that the main thread could hold up, on any thread. Whether there
/// was something to be saved.
bool rescueHistory(HistorySaving& saving, Log& log) {
    return saving.rescue([&log](const DataContainer& history) {
        if (auto document = encodeDataContainer(history)) {
            FileUserDefaults defaults(defaultPreferencesFile(), log);
            write(defaults, preferences::dataContainer, std::move(*document));
        }
    });
}

/// Ends the program from another thread than the main one, which is blocked.
void endWithoutMainThread(HistorySaving& saving, Log& log) {
    if (saving.isSaving()) {
        return;
    }
    if (rescueHistory(saving, log)) {
        logError(log, "The display does not answer: the program is ended without it",
                 "endWithoutMainThread()");
    }
    std::_Exit(EXIT_SUCCESS);
}

/// Everything that tells the program to save its history, which is done once for each way out.
class WaysOut final {
public:
    WaysOut(HistorySaving& saving, QtMessages& messages, Log& log)
        : messages_(messages)
        , programEnd_([&saving] { saving.saveOnce(); })
        // Not quit(): that asks the windows first, and a signal is no question.
        , signals_(
              [] { QCoreApplication::exit(EXIT_SUCCESS); },
              {.patience = 500ms, .call = [&saving, &log] { endWithoutMainThread(saving, log); }})
        , powerOff_(QDBusConnection::systemBus(), QApplication::applicationName(),
                    {.willPowerOff = [&saving] { saving.saveOnce(); },
                     .calledOff = [&saving] { saving.goOn(); }},
                    log) {
        messages_.onCompositorLost([this, &saving, &log] {
            saving.waitWhileSaving();
            if (rescueHistory(saving, log)) { // if Qt goes on, then so does the history
                QMetaObject::invokeMethod(
                    &context_, [&saving] { saving.goOn(); }, Qt::QueuedConnection);
            }
        });
    }
    WaysOut(const WaysOut&) = delete;
    WaysOut& operator=(const WaysOut&) = delete;
    ~WaysOut() { messages_.onCompositorLost({}); }

private:
    QtMessages& messages_;
    QObject context_;
    ProgramEnd programEnd_;
    TerminationSignals signals_;
    PowerOffMonitor powerOff_;
};

/// The file to start at the end; empty where nothing is to be started. A signal's handler has no
/// other context.
// NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables)
std::string nextProgram;

/// Goes on as the next program in the same process. Returns where that cannot be started.
void startNext() {
    alarm(0); // it would be inherited
    execl(nextProgram.c_str(), nextProgram.c_str(), nullptr);
}

/// Ends the program when some seconds have passed: nothing is to be saved any more, and what is
/// torn down may wait for a display, or for a thread that a hanging file system holds.
void endSoon() {
    struct sigaction action{};
    action.sa_handler = [](int) {
        if (!nextProgram.empty()) {
            startNext();
        }
        _exit(EXIT_SUCCESS);
    };
    action.sa_flags = SA_NODEFER; // what is blocked is inherited
    sigaction(SIGALRM, &action, nullptr);
    alarm(2);
}

int runProgram(int argc, char** argv, const Bundle& bundle, UsableDisplay display,
               UnusableBuses buses, Log& log) {
    QtMessages messages(log);
    const auto application = makeApplication(argc, argv, bundle, display.isX11);
    messages.started();
    display.server.reset(); // not before: a server may start anew when its last client leaves
    static_cast<void>(QDBusConnection::sessionBus()); // connects, or fails to for good
    static_cast<void>(QDBusConnection::systemBus());
    buses.giveBack();

    const QString identifier = QString::fromStdString(bundleIdentifier(bundle));
    SingleInstance instance(QDBusConnection::sessionBus(), identifier,
                            runtimeFile(bundleIdentifier(bundle) + ".lock"), 3s, log);
    if (const auto status = instance.start()) {
        return *status;
    }
    const Translations translations(
        QString::fromStdString((installedInfoFile().parent_path() / "translations").string()));

    const auto restart = [](std::string program) {
        nextProgram = std::move(program);
        QCoreApplication::exit(EXIT_SUCCESS);
    };
    Platform platform(bundle, log, [&restart](const QString& program) {
        restart(QFile::encodeName(program).toStdString());
    });
    // Everything that stands on the bus is made anew by starting anew.
    const SessionBusReturn busReturn(
        QDBusConnection::sessionBus(), buses.isSessionHanging(),
        [&restart, program = installedProgram()] { restart(program); }, log);
    TidewellApp app(platform.environment());
    const WaysOut waysOut(app.historySaving(), messages, log);
    instance.onActivate([&app] { app.openPanel(); });

    app.start();
    const int status = QApplication::exec();
    endSoon();
    return status;
}

} // namespace
} // namespace tidewell

int main(int argc, char** argv) {
    using namespace tidewell;
    fillStandardStreams();
    // One heap: what a thread frees is of use to the others, and can be given back to the system.
    // None of them is hurried by another.
    ::mallopt(M_ARENA_MAX, 1);
    // A reader of our output that goes away must not end the program. QProcess restores it for
    // the programs that it starts.
    std::signal(SIGPIPE, SIG_IGN);
    JournalLog startUpLog(bundleIdentifier(Bundle({})));
    const Bundle bundle = readBundle(installedInfoFile(), startUpLog);
    if (argc > 1) {
        return answerArguments(argc, argv, bundle);
    }
    JournalLog log(bundleIdentifier(bundle));

    UsableDisplay display = findDisplay(log);
    if (!display.isThere) {
        return EXIT_FAILURE;
    }
    const int status = runProgram(argc, argv, bundle, std::move(display), {1s, log}, log);
    if (nextProgram.empty()) {
        return status;
    }
    startNext();
    logError(log, nextProgram + " cannot be started: " + std::system_category().message(errno),
             "main()");
    return EXIT_FAILURE;
}
