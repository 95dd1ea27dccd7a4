#include "app/panel/ContentView.h"

#include "app/SceneWindows.h"
#include "app/lists/ShowItemList.h"
#include "app/panel/GaugesRow.h"
#include "tests/fakes/WatcherSurroundings.h"
#include "ui/LinearGauge.h"
#include "ui/Palette.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>

#include <gtest/gtest.h>

namespace tidewell {
namespace {

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

    Bundle bundle{{{"CFBundleName", "Tidewell"}}};
    SceneWindows windows{[](QWidget&) {}};
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
    constexpr int laptopHeight = 768 - 28; // below a bar
    const auto prompts = content.findChildren<QPushButton*>();
    ASSERT_EQ(prompts.size(), 2);
    auto* const allow = prompts[0];
    auto* const update = prompts[1];
    ASSERT_TRUE(updater->startUpdater());
    using Case = std::tuple<bool, bool, int>;
    for (const auto& [allowed, available, height] :
         {Case{true, false, 205}, Case{false, false, 165}, Case{true, true, 165},
          Case{false, true, 125}}) {
        center.authorization = allowed;
        available ? updater->find("2.0") : updater->findNothing();
        open();
        EXPECT_EQ(allow->isVisible(), !allowed);
        EXPECT_EQ(update->isVisible(), available);
        EXPECT_EQ(first<ShowItemList>()->height(), height);
        const bool isUsual = allowed && !available;
        EXPECT_LE(content.minimumSizeHint().height(), isUsual ? laptopHeight : panelHeight);
        content.hide();
    }
    EXPECT_EQ(updater->silentChecks, 4) << "one at each appearance";

    open();
    update->click();
    EXPECT_EQ(updater->userChecks, 1);
    allow->click();
    auto* message = content.findChild<QMessageBox*>();
    ASSERT_NE(message, nullptr) << "where no settings can be opened the user is told";
    message->close();
    settingsExist = true;
    settle();
    allow->click();
    EXPECT_EQ(content.findChild<QMessageBox*>(), nullptr);
}

TEST_F(PanelContent, ShowsTheFiguresOfTheMomentAndOnlyWhileItIsOpen) {
    open();
    auto* const swap = first<LinearGauge>();
    EXPECT_FALSE(swap->isVisible());
    useSwap(1024);
    EXPECT_TRUE(swap->isVisible());
    EXPECT_EQ(swap->content().text.toStdString(), "1 KB");
    EXPECT_EQ(swap->content().maximumText.toStdString(), "4 KB");

    content.hide();
    useSwap(2048);
    EXPECT_EQ(swap->content().text.toStdString(), "1 KB") << "nothing is done while it is closed";
    open();
    EXPECT_EQ(swap->content().text.toStdString(), "2 KB");
}

TEST(GaugeGradient, HasABandForEveryValue) {
    using namespace colours;
    for (double from = -1; const auto& [to, gradient] :
                           {std::pair(20, std::vector{systemGreen}),
                            std::pair(40, std::vector{systemGreen, systemTeal}),
                            std::pair(60, std::vector{systemTeal, systemBlue}),
                            std::pair(80, std::vector{systemTeal, systemBlue, systemOrange}),
                            std::pair(101, std::vector{systemBlue, systemOrange, systemRed})}) {
        EXPECT_EQ(gaugeGradient(from), gradient) << from;
        EXPECT_EQ(gaugeGradient(to), gradient) << to;
        from = to + 0.5;
    }
}

} // namespace
} // namespace tidewell
