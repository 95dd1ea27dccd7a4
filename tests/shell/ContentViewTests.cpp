#include "shell/ContentView.h"

#include "platform/linux/NotificationSettings.h"
#include "platform/ui/LinearGauge.h"
#include "platform/ui/Palette.h"
#include "platform/ui/RoundGauge.h"
#include "platform/ui/SymbolButton.h"
#include "platform/ui/TitledBox.h"
#include "services/StoredPreferences.h"
#include "shell/PanelRules.h"
#include "shell/QuitConfirmation.h"
#include "tests/fakes/FakeNotificationCenter.h"
#include "tests/fakes/FakeProbes.h"
#include "tests/fakes/FakeUpdater.h"
#include "tests/fakes/Surroundings.h"
#include "views/ShowItemList.h"

#include <QApplication>
#include <QLabel>
#include <QLayout>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>

namespace tidewell {
namespace {

using namespace colours;
using testing::ElementsAre;

TEST(PanelRules, ChooseTheGaugesColoursByBands) {
    const struct {
        double value;
        std::vector<Colour> gradient;
    } cases[] = {
        {-1, {systemGreen}},
        {20, {systemGreen}},
        {20.5, {systemGreen, systemTeal}},
        {40, {systemGreen, systemTeal}},
        {60, {systemTeal, systemBlue}},
        {80, {systemTeal, systemBlue, systemOrange}},
        {80.5, {systemBlue, systemOrange, systemRed}},
    };
    for (const auto& [value, gradient] : cases) {
        EXPECT_EQ(gaugeGradient(value), gradient) << value;
    }
}

TEST(NotificationSettings, AreThoseOfTheDesktopThatRuns) {
    const auto programs = [](const char* desktop) {
        QStringList names;
        for (const auto& each : notificationSettingsPrograms(QString::fromLatin1(desktop))) {
            names.append((QStringList{each.program} + each.arguments).join(u' '));
        }
        return names.join(u'|').toStdString();
    };
    EXPECT_EQ(programs("ubuntu:GNOME"), "gnome-control-center notifications");
    EXPECT_EQ(programs("KDE"),
              "systemsettings kcm_notifications|systemsettings5 kcm_notifications");
    EXPECT_EQ(programs("XFCE"), "xfce4-notifyd-config");
    EXPECT_EQ(programs("X-Cinnamon"), "cinnamon-settings notifications");
    EXPECT_EQ(programs("MATE"), "mate-notification-properties");
    EXPECT_EQ(programs("sway"), "");
}

class PanelContent : public Surroundings {
protected:
    PanelContent() {
        for (const WindowScene& scene : windowScenes("Tidewell")) {
            windows.add(scene, [] { return std::make_unique<QWidget>(); });
        }
    }

    void settle() {
        do {
            QCoreApplication::processEvents();
        } while (mainThread.drain() + worker.drain() > 0);
    }
    void open() {
        content.show();
        settle();
    }
    void useSwap(std::uint64_t used) {
        probes.swap = SwapUsage{.total = 4096, .used = used, .free = 4096 - used};
        watcher->updateSwapUsage();
        settle();
    }
    template <typename Widget>
    std::vector<Widget*> all() const {
        std::vector<Widget*> found;
        for (QWidget* each : content.findChildren<QWidget*>()) {
            if (auto* widget = dynamic_cast<Widget*>(each)) {
                found.push_back(widget);
            }
        }
        return found;
    }
    /// The one of that text or name that is to be seen.
    template <typename Widget>
    Widget* visible(const char* name) const {
        for (Widget* widget : all<Widget>()) {
            const QString text = widget->property("text").toString();
            if (widget->isVisible() &&
                (text.isEmpty() ? widget->accessibleName() : text) == QLatin1String(name)) {
                return widget;
            }
        }
        return nullptr;
    }
    QMessageBox* question() {
        const auto questions = panel.findChildren<QMessageBox*>();
        return questions.isEmpty() ? nullptr : questions.first();
    }
    FakeProbes probes;
    FakeNotificationCenter notifications{mainThread};
    Bundle bundle{{{"CFBundleName", "Tidewell"}}};
    std::shared_ptr<NotificationManager> manager =
        std::make_shared<NotificationManager>(notifications, log);
    std::shared_ptr<MemoryWatcher> watcher = std::make_shared<MemoryWatcher>(
        MemoryWatcher::Environment{probes, defaults, mainThread, worker, clock, log,
                                   [] { return 1000.0; }},
        manager);
    std::shared_ptr<FakeUpdater> updater;
    std::shared_ptr<SparkleModel> updates =
        std::make_shared<SparkleModel>(SparkleModel::Environment{
            defaults, mainThread, clock, log, [this](SPUUpdaterDelegate& delegate) {
                return updater = std::make_shared<FakeUpdater>(delegate);
            }});
    SceneWindows windows;
    QWidget panel;
    int quits = 0;
    QuitConfirmation quitting{defaults, QStringLiteral("Tidewell"), panel, [this] { ++quits; }};
    bool settingsExist = false;
    ContentView content{{.memoryWatcher = watcher,
                         .notificationManager = manager,
                         .sparkleModel = updates,
                         .defaults = defaults,
                         .mainThread = mainThread,
                         .bundle = bundle,
                         .windows = windows,
                         .confirmQuit = [this] { quitting.confirmQuit(); },
                         .openNotificationSettings = [this] { return settingsExist; }}};
};

TEST_F(PanelContent, MakesRoomForThePromptsThatAreNeeded) {
    const char* const allow = "Press to set Allow Notifications";
    const char* const update = "Update available!";
    const struct {
        bool allowed;
        bool available;
        int height;
    } cases[] = {{true, false, 205}, {false, false, 165}, {true, true, 165}, {false, true, 125}};
    for (const auto& each : cases) {
        notifications.authorization = each.allowed;
        each.available ? updater->find("2.0") : updater->findNothing();
        open();
        EXPECT_EQ(visible<QPushButton>(allow) != nullptr, !each.allowed);
        EXPECT_EQ(visible<QPushButton>(update) != nullptr, each.available);
        EXPECT_EQ(all<ShowItemList>().front()->height(), each.height);
        EXPECT_LE(content.minimumSizeHint().height(), panelHeight) << "all of it is seen";
        content.hide();
    }
    EXPECT_EQ(updater->silentChecks, 4) << "one at each appearance";

    open();
    visible<QPushButton>(update)->click();
    EXPECT_EQ(updater->userChecks, 1);
    visible<QPushButton>(allow)->click();
    auto* message = content.findChild<QMessageBox*>();
    ASSERT_NE(message, nullptr) << "where no settings can be opened the user is told";
    message->close();
    settingsExist = true;
    settle();
    visible<QPushButton>(allow)->click();
    EXPECT_EQ(content.findChild<QMessageBox*>(), nullptr);
}

TEST_F(PanelContent, ShowsTheFiguresOfTheMomentAndOnlyWhileItIsOpen) {
    watcher->updateMemoryUsage();
    open();
    const auto gauges = all<RoundGauge>();
    ASSERT_EQ(gauges.size(), 2U);
    EXPECT_EQ(gauges[1]->content().text.toStdString(),
              std::to_string(static_cast<int>(watcher->usedMemoryPercentage())) + "%");
    EXPECT_NE(visible<QLabel>("No swap memory used."), nullptr);
    EXPECT_EQ(visible<LinearGauge>("Swap"), nullptr);

    useSwap(1024);
    auto* swap = visible<LinearGauge>("Swap");
    ASSERT_NE(swap, nullptr);
    EXPECT_EQ(swap->content().text.toStdString(), "1 KB");
    EXPECT_EQ(swap->content().minimumText.toStdString(), "0 MB");
    EXPECT_EQ(swap->content().maximumText.toStdString(), "4 KB");

    content.hide();
    useSwap(2048);
    EXPECT_EQ(swap->content().text.toStdString(), "1 KB") << "nothing is done while it is closed";
    open();
    EXPECT_EQ(swap->content().text.toStdString(), "2 KB");
}

TEST_F(PanelContent, ItsToolbarOpensWindowsOnceAndQuitsAfterAQuestion) {
    panel.setPalette(paletteFor(Appearance::dark));
    open();
    QApplication::setActiveWindow(&content);
    QStringList tips;
    for (const auto* button : all<SymbolButton>()) {
        tips.append(button->toolTip());
    }
    EXPECT_EQ(tips.join(u'|').toStdString(),
              "About Tidewell|Go to Settings - Ctrl+,|Quit Tidewell - Ctrl+Q");
    // Buttons show that they are pressed by key for a moment before they act.
    const auto press = [this](Qt::Key key, const std::function<bool()>& done) {
        QApplication::setActiveWindow(&content);
        QTest::keyClick(&content, key, Qt::ControlModifier);
        return QTest::qWaitFor(done);
    };
    const auto settingsOpen = [this] { return windows.window("settings") != nullptr; };
    ASSERT_TRUE(press(Qt::Key_Comma, settingsOpen));
    windows.openAuxiliaryWindow("settings");
    EXPECT_EQ(QApplication::topLevelWidgets().count(windows.window("settings")), 1);
    windows.dismissWindow("settings");

    const auto asked = [this] { return question() != nullptr; };
    for (const auto& [key, expected] :
         {std::pair(Qt::Key_Escape, 0), std::pair(Qt::Key_Return, 1)}) {
        ASSERT_TRUE(press(Qt::Key_Q, asked));
        EXPECT_EQ(question()->palette().window(), panel.palette().window());
        EXPECT_EQ(question()->text().toStdString(), "Are you sure you want to quit?");
        EXPECT_EQ(question()->informativeText().toStdString(),
                  "Tidewell will terminate immediately.");
        EXPECT_EQ(quits, 0);
        QTest::keyClick(question(), key);
        EXPECT_TRUE(QTest::qWaitFor([&] { return question() == nullptr; }));
        EXPECT_EQ(quits, expected);
    }

    write(defaults, preferences::confimQuitOnExit, false);
    EXPECT_TRUE(press(Qt::Key_Q, [this] { return quits == 2; }));
    EXPECT_EQ(question(), nullptr);
}

} // namespace
} // namespace tidewell
