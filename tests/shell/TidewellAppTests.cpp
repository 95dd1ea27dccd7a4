#include "shell/TidewellApp.h"
#include "tests/fakes/FakeNotificationCenter.h"
#include "tests/fakes/FakeProbes.h"
#include "tests/fakes/ManualClock.h"
#include "tests/fakes/ManualExecutor.h"
#include "tests/fakes/MemoryUserDefaults.h"
#include "tests/fakes/RecordingLog.h"

#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QTest>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tidewell {
namespace {

using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;

/// A status area that keeps what it is told.
struct StatusArea {
    StatusItemBehaviour behaviour;
    std::vector<StatusItemContent> shown;

    std::unique_ptr<StatusItem> makeItem(const StatusItemBehaviour& wanted) {
        class Item final : public StatusItem {
        public:
            explicit Item(StatusArea& area)
                : area_(area) {}
            void setContent(const StatusItemContent& content) override {
                area_.shown.push_back(content);
            }

        private:
            StatusArea& area_;
        };
        behaviour = wanted;
        return std::make_unique<Item>(*this);
    }
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
            if (window->objectName() == QStringLiteral("panel") && window->isVisible()) {
                for (const QLabel* label : window->findChildren<QLabel*>()) {
                    if (label->isVisible()) {
                        texts.append(label->text());
                    }
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
    StatusArea area;
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
        .makeStatusItem = [this](const auto& wanted) { return area.makeItem(wanted); },
    }};
};

TEST_F(Application, SamplesFromTheLabelsAppearanceOnAndSavesWithThePanelNeverOpened) {
    settle();
    clock.advance(5);
    settle();
    EXPECT_TRUE(log.takeLines().empty()) << "nothing runs before the label appears";

    app.start();
    settle();
    EXPECT_THAT(log.takeLines(), Contains(HasSubstr("No data available yet...")));
    ASSERT_FALSE(area.shown.empty());
    EXPECT_EQ(area.shown.back().text, "No Swap");
    EXPECT_EQ(area.shown.back().symbolName, "circle.dotted");

    probes.swap = SwapUsage{.total = 4096, .used = 1024, .free = 3072};
    clock.advance(60);
    settle();
    EXPECT_EQ(area.shown.back().text, "1 KB of 4 KB");
    EXPECT_EQ(area.shown.back().colour, colours::systemGreen);
    EXPECT_EQ(notifications.requests.size(), 1U);

    EXPECT_EQ(defaults.dataForKey("_dataContainer"), std::nullopt);
    app.historySaving().willTerminate();
    EXPECT_NE(defaults.dataForKey("_dataContainer"), std::nullopt);
}

TEST_F(Application, OpensThePanelFromTheItemAndTheMenuAndKeepsItUpToDate) {
    app.start();
    settle();
    EXPECT_TRUE(panelTexts().isEmpty());
    area.behaviour.activated({QPoint(400, 4), std::nullopt});
    EXPECT_THAT(panelTexts(), AllOf(Contains(QStringLiteral("Tidewell")),
                                    Contains(QStringLiteral("Physical Memory")),
                                    Contains(QStringLiteral("16 GB"))));
    EXPECT_FALSE(panelTexts().contains(QStringLiteral("Swap Total")));

    probes.swap = SwapUsage{.total = 4096, .used = 1024, .free = 3072};
    clock.advance(60);
    settle();
    clock.advance(1);
    settle();
    EXPECT_TRUE(
        QTest::qWaitFor([] { return panelTexts().contains(QStringLiteral("Swap Total")); }));

    area.behaviour.activated({QPoint(400, 4), std::nullopt});
    EXPECT_TRUE(panelTexts().isEmpty());
    std::vector<std::string> titles;
    for (const StatusMenuEntry& entry : area.behaviour.menu) {
        titles.push_back(entry.title);
    }
    EXPECT_THAT(titles, ElementsAre("Open", "Quit")) << "the menu offers what there is";
    area.behaviour.menu.front().action();
    EXPECT_FALSE(panelTexts().isEmpty());
    app.openPanel();
    EXPECT_FALSE(panelTexts().isEmpty()) << "a second start brings it up, never down";
}

} // namespace
} // namespace tidewell
