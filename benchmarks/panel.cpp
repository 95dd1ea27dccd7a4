// What the panel costs: an update while it is open, sampling while it is closed, opening it. Prints
// medians, each beside its baseline from the same run. Runs on whatever display Qt finds.

#include "app/SceneWindows.h"
#include "app/about/AboutView.h"
#include "app/panel/ContentView.h"
#include "app/panel/PanelWindow.h"
#include "app/processes/AppMemoryView.h"
#include "app/settings/SettingsView.h"
#include "benchmarks/WatchedMachine.h"
#include "model/memory/probes/linux/LinuxProbes.h"
#include "tests/fakes/FakeApplicationSource.h"
#include "tests/fakes/FakeNotificationCenter.h"
#include "tests/fakes/FakeProbes.h"

#include <QApplication>
#include <QGridLayout>
#include <QLabel>

#include <cstdio>
#include <vector>

namespace tidewell {
namespace {

/// Does not start the program at login.
struct NeverAtLogin final : LoginItem {
    Result<> registerApplication() override { return {}; }
    Result<> unregisterApplication() override { return {}; }
};

/// A watcher whose histories are full, and the windows that show it and thirty applications.
struct PanelMachine : WatchedMachine {
    explicit PanelMachine(SystemProbes& probes)
        : WatchedMachine(probes) {
        step(400);
        for (int i = 0; i < 100; ++i) {
            watcher->updateSwapUsage();
        }
        for (int i = 0; i < 30; ++i) {
            applications.applications.push_back(
                {.localizedName = "application " + std::to_string(i),
                 .icon = ThemeIcon("text-x-generic"),
                 .memory = (100U + static_cast<unsigned>(i)) << 20U});
        }
        addWindows();
    }
    void addWindows() {
        const auto [about, settings, appMemory] = windowScenes(QStringLiteral("Tidewell"));
        windows.add(about, [this] {
            return std::make_unique<AboutView>(AboutView::Environment{
                .bundle = bundle, .openUrl = [](const QUrl&) {}, .dismissWindow = [] {}});
        });
        windows.add(settings, [this] {
            return std::make_unique<SettingsView>(
                SettingsView::Environment{.defaults = defaults,
                                          .loginItem = loginItem,
                                          .applicationName = "Tidewell",
                                          .sparkleModel = nullptr,
                                          .animationsAreWanted = [] { return false; }});
        });
        windows.add(appMemory, [this] {
            return std::make_unique<AppMemoryView>(AppMemoryView::Environment{
                .memoryManager = memoryManager,
                .memoryWatcher = watcher,
                .defaults = defaults,
                .dismissWindow = [] {},
                .panelWidth = panelWidth,
            });
        });
    }
    std::unique_ptr<ContentView> makeContent() {
        return std::make_unique<ContentView>(
            ContentView::Environment{.memoryWatcher = watcher,
                                     .notificationManager = notificationManager,
                                     .sparkleModel = nullptr,
                                     .defaults = defaults,
                                     .mainThread = mainThread,
                                     .bundle = bundle,
                                     .windows = windows,
                                     .confirmQuit = [] {},
                                     .openNotificationSettings = [] { return true; }});
    }

    FakeApplicationSource applications{mainThread};
    std::shared_ptr<MemoryManager> memoryManager =
        std::make_shared<MemoryManager>(MemoryManager::Environment{.applications = applications,
                                                                   .defaults = defaults,
                                                                   .mainThread = mainThread,
                                                                   .clock = clock,
                                                                   .log = log});
    NeverAtLogin loginItem;
    FakeNotificationCenter notifications{mainThread};
    std::shared_ptr<NotificationManager> notificationManager =
        std::make_shared<NotificationManager>(notifications, log);
    Bundle bundle{{{"CFBundleName", "Tidewell"}}};
    SceneWindows windows{[](QWidget&) {}};
};

/// Counts what is painted in a window.
class Painted final : public QObject {
public:
    explicit Painted(const QWidget& window)
        : window_(window) {
        qApp->installEventFilter(this);
    }
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Paint) {
            const auto* const widget = dynamic_cast<const QWidget*>(watched);
            count += widget != nullptr && widget->window() == &window_ ? 1 : 0;
        }
        return false;
    }
    /// Runs the event loop until something was painted.
    void wait() const {
        for (const int before = count; count == before;) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
        QCoreApplication::processEvents();
    }
    int count = 0;

private:
    const QWidget& window_;
};

void print(const char* what, double value, const char* baselineName, double baseline, double limit,
           const char* unit = "us") {
    std::printf("%-42s%10.1f %s\n  %-40s%10.1f %s\n  %-40s%10.2f    (at most %g)\n", what, value,
                unit, baselineName, baseline, unit, "ratio", value / baseline, limit);
}

/// A window of the panel's size, full of plain texts.
struct LabelGrid {
    LabelGrid() {
        window.setFixedSize(panelWidth, panelHeight);
        auto* grid = new QGridLayout(&window);
        for (int at = 0; at < rows * columns; ++at) {
            labels.push_back(new QLabel);
            grid->addWidget(labels.back(), at / columns, at % columns);
        }
    }
    void change(int round) {
        for (std::size_t at = 0; at < labels.size(); ++at) {
            labels[at]->setText(QString::number(round * 1000 + static_cast<int>(at)));
        }
    }
    static constexpr int rows = 24;
    static constexpr int columns = 4;
    QWidget window;
    std::vector<QLabel*> labels;
};

void measureUpdate() {
    FakeProbes probes;
    probes.swap = SwapUsage{.total = 1U << 30U, .used = 1U << 28U, .free = 3U << 28U};
    PanelMachine machine(probes);
    const auto content = machine.makeContent();
    content->setFixedSize(panelWidth, panelHeight);
    LabelGrid grid;
    Painted contentPainted(*content);
    Painted gridPainted(grid.window);
    content->show();
    contentPainted.wait();
    grid.window.show();
    gridPainted.wait();

    std::vector<double> update;
    std::vector<double> baseline;
    for (int round = 0; round < 301; ++round) {
        probes.freePercentage = 20 + 7 * round % 60;
        probes.counters->internalPages = 1048576U + 4096U * static_cast<unsigned>(round);
        update.push_back(microseconds([&] {
            machine.step();
            contentPainted.wait();
        }));
        baseline.push_back(microseconds([&] {
            grid.change(round);
            gridPainted.wait();
        }));
    }
    print("update of the open panel", median(update), "a grid of plain texts", median(baseline), 4);
}

void measureClosed() {
    SilentLog log;
    LinuxProbes probes("/proc", "/sys", log);
    PanelMachine bare(probes);
    PanelMachine watched(probes);
    const auto content = watched.makeContent();
    Painted painted(*content);
    content->show();
    painted.wait();
    content->hide();
    std::vector<double> step;
    std::vector<double> baseline;
    for (int round = 0; round < 3001; ++round) {
        baseline.push_back(microseconds([&] { bare.step(); }));
        step.push_back(microseconds([&] {
            watched.step();
            QCoreApplication::sendPostedEvents();
        }));
    }
    print("sampling step, panel closed", median(step), "without a panel", median(baseline), 1.1);
}

double privateDirty() {
    return ownMemory("Private_Dirty");
}

void measureOpening() {
    FakeProbes probes;
    probes.swap = SwapUsage{.total = 1U << 30U, .used = 1U << 28U, .free = 3U << 28U};
    PanelMachine machine(probes);
    QWidget bare(nullptr, Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint);
    bare.setFixedSize(panelWidth, panelHeight);
    PanelWindow panel([&machine] { return machine.makeContent(); },
                      [] { return QRect(1100, 5, 1, 1); });
    Painted barePainted(bare);
    Painted panelPainted(panel);
    const auto openBare = [&] {
        bare.show();
        bare.raise();
        bare.activateWindow();
        barePainted.wait();
    };
    const auto openPanel = [&] {
        panel.toggle();
        panelPainted.wait();
    };
    const auto close = [&machine](QWidget& window) {
        window.close();
        QCoreApplication::processEvents();
        settle(machine.mainThread,
               machine.schedulerThread); // the question for the permission to notify
        QCoreApplication::processEvents();
    };

    const double firstBare = microseconds(openBare);
    close(bare);
    const double firstPanel = microseconds(openPanel);
    close(panel);
    print("first opening of the panel", firstPanel, "a bare window", firstBare, 3);

    const auto openAll = [&] {
        openPanel();
        for (const auto scene :
             {SceneIdentifier::about, SceneIdentifier::settings, SceneIdentifier::appMemory}) {
            machine.windows.openWindow(scene);
            QWidget& window = *machine.windows.window(scene);
            Painted(window).wait();
            close(window);
        }
        close(panel);
    };
    openAll();
    const double before = privateDirty();
    for (int round = 0; round < 200; ++round) {
        openAll();
    }
    print("dirty after 200 openings of all windows", privateDirty(), "after the first", before,
          1.05, "kB");

    std::vector<double> panelTimes;
    std::vector<double> bareTimes;
    for (int round = 0; round < 101; ++round) {
        bareTimes.push_back(microseconds(openBare));
        close(bare);
        panelTimes.push_back(microseconds(openPanel));
        close(panel);
    }
    print("later openings", median(panelTimes), "a bare window", median(bareTimes), 1.5);
}

} // namespace
} // namespace tidewell

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    tidewell::measureOpening();
    tidewell::measureUpdate();
    tidewell::measureClosed();
}
