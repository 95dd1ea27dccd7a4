// What the panel costs: an update while it is open, sampling while it is closed, opening it. Prints
// medians, each beside its baseline from the same run. Runs on whatever display the toolkit finds.

#include "core/probes/linux/LinuxProbes.h"
#include "shell/ContentView.h"
#include "shell/PanelWindow.h"
#include "shell/Scenes.h"
#include "tests/fakes/FakeNotificationCenter.h"
#include "tests/fakes/FakeProbes.h"
#include "tests/fakes/ManualClock.h"
#include "tests/fakes/ManualExecutor.h"
#include "tests/fakes/MemoryUserDefaults.h"

#include <QApplication>
#include <QGridLayout>
#include <QLabel>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>
#include <vector>

namespace tidewell {
namespace {

class NoLog final : public Log {
public:
    bool isEnabled(LogLevel) const override { return false; }
    void write(const LogRecord&) override {}
};

/// A watcher in virtual time and the panel that shows it.
struct WatchedMachine {
    explicit WatchedMachine(SystemProbes& probes)
        : watcher(std::make_shared<MemoryWatcher>(
              MemoryWatcher::Environment{probes, defaults, mainThread, schedulerThread, clock, log,
                                         [this] { return timestamp += 1; }},
              nullptr)) {
        spawn(mainThread, watcher->startPeriodicTask());
        for (int i = 0; i < 400; ++i) {
            step(); // the history of the pressure is full from here on
        }
        for (int i = 0; i < 100; ++i) {
            watcher->updateSwapUsage();
        }
    }
    void step() {
        clock.advance(1);
        while (mainThread.drain() + schedulerThread.drain() > 0) {
        }
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

    MemoryUserDefaults defaults;
    ManualExecutor mainThread;
    ManualExecutor schedulerThread;
    ManualClock clock;
    NoLog log;
    double timestamp = 0;
    FakeNotificationCenter notifications{mainThread};
    std::shared_ptr<NotificationManager> notificationManager =
        std::make_shared<NotificationManager>(notifications, log);
    Bundle bundle{{{"CFBundleName", "Tidewell"}}};
    SceneWindows windows;
    std::shared_ptr<MemoryWatcher> watcher;
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

template <typename Work>
double microseconds(Work work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    const std::chrono::duration<double, std::micro> passed =
        std::chrono::steady_clock::now() - start;
    return passed.count();
}

double median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::ranges::nth_element(values, middle);
    return *middle;
}

void print(const char* what, double value, const char* baselineName, double baseline, double limit,
           const char* unit = "us") {
    std::printf("%-38s%10.1f %s\n  %-36s%10.1f %s\n  %-36s%10.2f    (at most %g)\n", what, value,
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
    WatchedMachine machine(probes);
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
    MemoryUserDefaults defaults;
    NoLog log;
    LinuxProbes probes("/proc", "/sys", log);
    WatchedMachine bare(probes);
    WatchedMachine watched(probes);
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

/// Kilobytes, from the kernel.
double privateDirty() {
    std::ifstream rollup("/proc/self/smaps_rollup");
    for (std::string word; rollup >> word;) {
        if (word == "Private_Dirty:") {
            double kilobytes = 0;
            rollup >> kilobytes;
            return kilobytes;
        }
    }
    return 0;
}

void measureOpening() {
    FakeProbes probes;
    probes.swap = SwapUsage{.total = 1U << 30U, .used = 1U << 28U, .free = 3U << 28U};
    WatchedMachine machine(probes);
    QWidget bare(nullptr, Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint);
    bare.setFixedSize(panelWidth, panelHeight);
    PanelWindow panel([&machine] { return machine.makeContent(); });
    Painted barePainted(bare);
    Painted panelPainted(panel);
    const StatusItemActivation click{QPoint(700, 5), std::nullopt};
    const auto openBare = [&] {
        bare.show();
        bare.raise();
        bare.activateWindow();
        barePainted.wait();
    };
    const auto openPanel = [&] {
        panel.toggle(click);
        panelPainted.wait();
    };
    const auto close = [](QWidget& window) {
        window.close();
        QCoreApplication::processEvents();
    };

    const double firstBare = microseconds(openBare);
    close(bare);
    const double firstPanel = microseconds(openPanel);
    close(panel);
    print("first opening of the panel", firstPanel, "a bare window", firstBare, 3);

    const double before = privateDirty();
    std::vector<double> panelTimes;
    std::vector<double> bareTimes;
    for (int round = 0; round < 200; ++round) {
        bareTimes.push_back(microseconds(openBare));
        close(bare);
        panelTimes.push_back(microseconds(openPanel));
        close(panel);
    }
    print("later openings", median(panelTimes), "a bare window", median(bareTimes), 1.5);
    print("private dirty after 200 openings", privateDirty(), "after the first", before, 1.02,
          "kB");
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
