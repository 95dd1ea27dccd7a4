#include "shell/ContentView.h"

#include "platform/linux/NotificationSettings.h"
#include "platform/ui/LinearGauge.h"
#include "tests/fakes/WatcherSurroundings.h"
#include "views/ShowItemList.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>

#include <gtest/gtest.h>

namespace tidewell {
namespace {

TEST(NotificationSettings, AreThoseOfTheDesktopThatRuns) {
    const auto programs = notificationSettingsPrograms(QStringLiteral("ubuntu:GNOME"));
    ASSERT_EQ(programs.size(), 1U);
    EXPECT_EQ(programs[0].program.toStdString(), "gnome-control-center");
}

class PanelContent : public WatcherSurroundings {
protected:
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
    Widget* first() const {
        Widget* found = nullptr;
        for (QWidget* each : content.findChildren<QWidget*>()) {
            found = found != nullptr ? found : dynamic_cast<Widget*>(each);
        }
        return found;
    }
    QPushButton* prompt(const char* text) const {
        for (auto* button : content.findChildren<QPushButton*>()) {
            if (button->isVisible() && button->text() == QLatin1String(text)) {
                return button;
            }
        }
        return nullptr;
    }

    Bundle bundle{{{"CFBundleName", "Tidewell"}}};
    SceneWindows windows;
    bool settingsExist = false;
    ContentView content{{.memoryWatcher = watcher,
                         .notificationManager = notificationManager,
                         .sparkleModel = makeUpdates(),
                         .defaults = defaults,
                         .mainThread = mainThread,
                         .bundle = bundle,
                         .windows = windows,
                         .confirmQuit = [] {},
                         .openNotificationSettings = [this] { return settingsExist; }}};
};

TEST_F(PanelContent, MakesRoomForThePromptsThatAreNeeded) {
    const char* const allow = "Press to set Allow Notifications";
    const char* const update = "Update available!";
    for (const auto& [allowed, available, height] : {std::tuple{true, false, 205},
                                                     {false, false, 165},
                                                     {true, true, 165},
                                                     {false, true, 125}}) {
        center.authorization = allowed;
        available ? updater->find("2.0") : updater->findNothing();
        open();
        EXPECT_EQ(prompt(allow) != nullptr, !allowed);
        EXPECT_EQ(prompt(update) != nullptr, available);
        EXPECT_EQ(first<ShowItemList>()->height(), height);
        EXPECT_LE(content.minimumSizeHint().height(), panelHeight) << "all of it is seen";
        content.hide();
    }
    EXPECT_EQ(updater->silentChecks, 4) << "one at each appearance";

    open();
    prompt(update)->click();
    EXPECT_EQ(updater->userChecks, 1);
    prompt(allow)->click();
    auto* message = content.findChild<QMessageBox*>();
    ASSERT_NE(message, nullptr) << "where no settings can be opened the user is told";
    message->close();
    settingsExist = true;
    settle();
    prompt(allow)->click();
    EXPECT_EQ(content.findChild<QMessageBox*>(), nullptr);
}

TEST_F(PanelContent, ShowsTheFiguresOfTheMomentAndOnlyWhileItIsOpen) {
    open();
    auto* const swap = first<LinearGauge>();
    EXPECT_FALSE(swap->isVisible());
    useSwap(1024);
    EXPECT_TRUE(swap->isVisible());
    EXPECT_EQ(swap->content().text.toStdString(), "1 KB");
    EXPECT_EQ(swap->content().minimumText.toStdString(), "0 MB");
    EXPECT_EQ(swap->content().maximumText.toStdString(), "4 KB");

    content.hide();
    useSwap(2048);
    EXPECT_EQ(swap->content().text.toStdString(), "1 KB") << "nothing is done while it is closed";
    open();
    EXPECT_EQ(swap->content().text.toStdString(), "2 KB");
}

} // namespace
} // namespace tidewell
