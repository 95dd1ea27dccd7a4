#include "shell/TidewellApp.h"
#include "tests/fakes/FakeNotificationCenter.h"
#include "tests/fakes/FakeProbes.h"
#include "tests/fakes/ManualClock.h"
#include "tests/fakes/ManualExecutor.h"
#include "tests/fakes/MemoryUserDefaults.h"
#include "tests/fakes/RecordingLog.h"

#include <QApplication>
#include <QLabel>
#include <QTest>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tidewell {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::Field;
using testing::HasSubstr;

/// A status item that passes on what it is told.
struct Item final : public StatusItem {
    explicit Item(StatusItemContent& place)
        : shown(place) {}
    void setContent(const StatusItemContent& content) override { shown = content; }

    StatusItemContent& shown;
};

class Application : public testing::Test {
protected:
    void settle() {
        while (mainThread.drain() + schedulerThread.drain() > 0) {
        }
    }

    /// The panel's texts, top to bottom.
    static QStringList panelTexts() {
        QStringList texts;
        for (const QWidget* window : QApplication::topLevelWidgets()) {
            for (const QLabel* label : window->findChildren<QLabel*>()) {
                if (label->isVisible()) {
                    texts.append(label->text());
                }
            }
        }
        return texts;
    }

    FakeProbes probes;
    MemoryUserDefaults defaults;
    ManualExecutor mainThread;
    ManualExecutor schedulerThread;
    ManualClock clock;
    RecordingLog log;
    FakeNotificationCenter notifications{mainThread};
    Bundle bundle{{{"CFBundleName", "Tidewell"}}};
    DesktopAppearance appearance{QDBusConnection(QStringLiteral("none")), QString()};
    StatusItemBehaviour behaviour;
    StatusItemContent shown;
    TidewellApp app{{
        .watcher = {.probes = probes,
                    .defaults = defaults,
                    .mainThread = mainThread,
                    .schedulerThread = schedulerThread,
                    .clock = clock,
                    .log = log,
                    .secondsSince1970 = [] { return 1000.0; }},
        .notificationCenter = notifications,
        .bundle = bundle,
        .appearance = appearance,
        .makeStatusItem =
            [this](const auto& wanted) {
                behaviour = wanted;
                return std::make_unique<Item>(shown);
            },
    }};
};

TEST_F(Application, SamplesFromTheLabelsAppearanceOnAndSavesWithThePanelNeverOpened) {
    clock.advance(5);
    settle();
    EXPECT_TRUE(log.takeLines().empty()) << "nothing runs before the label appears";

    app.start();
    settle();
    EXPECT_THAT(log.takeLines(), Contains(HasSubstr("No data available yet...")));
    EXPECT_EQ(shown.text, "No Swap");

    probes.swap = SwapUsage{.total = 4096, .used = 1024, .free = 3072};
    clock.advance(60);
    settle();
    EXPECT_EQ(shown.text, "1 KB of 4 KB");
    EXPECT_EQ(shown.colour, colours::systemGreen);
    EXPECT_EQ(notifications.requests.size(), 1U);

    EXPECT_EQ(defaults.dataForKey("_dataContainer"), std::nullopt);
    app.historySaving().willTerminate();
    EXPECT_NE(defaults.dataForKey("_dataContainer"), std::nullopt);
}

TEST_F(Application, OpensThePanelFromTheItemAndTheMenuAndKeepsItUpToDate) {
    app.start();
    settle();
    EXPECT_TRUE(panelTexts().isEmpty());
    behaviour.activated({QPoint(400, 4), std::nullopt});
    EXPECT_THAT(panelTexts(), Contains(QStringLiteral("16 GB")));
    EXPECT_FALSE(panelTexts().contains(QStringLiteral("Swap Total")));

    probes.swap = SwapUsage{.total = 4096, .used = 1024, .free = 3072};
    clock.advance(60);
    settle();
    clock.advance(1);
    settle();
    EXPECT_TRUE(
        QTest::qWaitFor([] { return panelTexts().contains(QStringLiteral("Swap Total")); }));

    behaviour.activated({QPoint(400, 4), std::nullopt});
    EXPECT_TRUE(panelTexts().isEmpty());
    EXPECT_THAT(behaviour.menu, ElementsAre(Field(&StatusMenuEntry::title, "Open"),
                                            Field(&StatusMenuEntry::title, "Quit")))
        << "the menu offers what there is";
    behaviour.menu.front().action();
    EXPECT_FALSE(panelTexts().isEmpty());
    app.openPanel();
    EXPECT_FALSE(panelTexts().isEmpty()) << "a second start brings it up, never down";
}

} // namespace
} // namespace tidewell
