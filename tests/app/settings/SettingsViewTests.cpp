#include "app/settings/SettingsView.h"
#include "model/preferences/StoredPreferences.h"
#include "tests/fakes/UpdaterSurroundings.h"
#include "ui/Palette.h"

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QSlider>
#include <QTest>

#include <cmath>

namespace tidewell {
namespace {

class FailingLoginItem final : public LoginItem {
public:
    Result<> registerApplication() override { return failure("full"); }
    Result<> unregisterApplication() override { return failure("full"); }
};

class SettingsViewTest : public UpdaterSurroundings {
protected:
    void open() {
        view = std::make_unique<SettingsView>(
            SettingsView::Environment{.defaults = defaults,
                                      .loginItem = loginItem,
                                      .applicationName = "Tidewell",
                                      .sparkleModel = model,
                                      .animationsAreWanted = [] { return false; }});
        view->setPalette(paletteFor(Appearance::light));
        view->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(view.get()));
    }
    /// The control of that text or, without one, of that name.
    template <typename Widget>
    Widget* control(const char* text) const {
        for (auto* each : view->findChildren<Widget*>()) {
            const QString shown = each->text().isEmpty() ? each->accessibleName() : each->text();
            if (shown.startsWith(QLatin1String(text))) {
                return each;
            }
        }
        return nullptr;
    }
    QAbstractButton* button(const char* name) const { return control<QAbstractButton>(name); }
    void click(const char* name) const { QTest::mouseClick(button(name), Qt::LeftButton); }
    std::string pollingText() const { return control<QLabel>("Polling")->text().toStdString(); }

    FailingLoginItem loginItem;
    std::shared_ptr<SparkleModel> model = makeUpdates();
    std::unique_ptr<SettingsView> view;
};

TEST_F(SettingsViewTest, WritesNothingUnaskedAndKeepsAChoiceThatTheDesktopCannotFollow) {
    defaults.set("_confimQuitOnExit", std::string("often")); // of another type: as if unset
    open();
    EXPECT_TRUE(button("Confirm quit on exit")->isChecked());
    EXPECT_EQ(defaults.value("_startAtLogin"), std::nullopt);
    click("Start Tidewell at login");
    EXPECT_EQ(defaults.value("_startAtLogin"), DefaultsValue(true));
    EXPECT_TRUE(button("Start Tidewell at login")->isChecked());
}

TEST_F(SettingsViewTest, MovesThePollingIntervalInStepsBetweenItsEnds) {
    open();
    auto* const slider = view->findChild<QSlider*>();
    click("Poll less often");
    EXPECT_EQ(defaults.value("_pollingInterval"), std::nullopt) << "there is no slower";
    EXPECT_EQ(pollingText(), "Polling interval: 5 secs");
    for (const double seconds : {4, 3, 2, 1, 1}) {
        click("Poll more often");
        EXPECT_EQ(defaults.value("_pollingInterval"), DefaultsValue(seconds));
        EXPECT_EQ(slider->value(), seconds);
    }
    EXPECT_EQ(pollingText(), "Polling interval: 1 sec");
    QTest::mousePress(slider, Qt::LeftButton, {}, {10, slider->height() / 2});
    QTest::mouseMove(slider, slider->rect().center());
    EXPECT_EQ(pollingText(), "Polling interval: 3 secs") << "already while dragging";
}

TEST_F(SettingsViewTest, ShowsAnyStoredIntervalAndChangesItOnlyWhenAsked) {
    for (const auto& [stored, text, position] :
         {std::tuple{2.5, "Polling interval: 2 secs", 3},
          std::tuple{-7.9, "Polling interval: -7 sec", 1},
          std::tuple{1e300, "Polling interval: 9223372036854775807 secs", 5},
          std::tuple{std::nan(""), "Polling interval: 0 sec", 1}}) {
        defaults.set("_pollingInterval", stored);
        const int writes = defaults.writes;
        open();
        EXPECT_EQ(defaults.writes, writes);
        EXPECT_EQ(pollingText(), text);
        EXPECT_EQ(view->findChild<QSlider*>()->value(), position);
    }
}

TEST_F(SettingsViewTest, TakesOverTheUpdatersChoicesAndHandsBackTheUsers) {
    updater->checks = updater->downloads = true;
    updater->interval = 604800;
    open();
    auto* const check = button("Automatically check for updates");
    auto* const download = button("Automatically download updates");
    auto* const interval = view->findChild<QComboBox*>();
    auto* const now = button("Check for Updates now");
    EXPECT_TRUE(check->isChecked() && download->isChecked());
    EXPECT_EQ(interval->currentText(), QStringLiteral("Weekly"));
    EXPECT_EQ(updater->starts, 1) << "it checks and was not started";

    QTest::mouseClick(now, Qt::LeftButton);
    EXPECT_EQ(updater->userChecks, 1);
    updater->findNothing();
    QTest::qWait(0);
    QTest::keyClick(interval, Qt::Key_Down);
    EXPECT_EQ(updater->interval, 2592000);
    for (const bool canCheck : {false, true}) { // while one is under way it cannot
        canCheck ? updater->findNothing() : updater->checkForUpdateInformation();
        QTest::qWait(0);
        EXPECT_EQ(interval->isEnabled(), canCheck);
        EXPECT_EQ(now->isEnabled(), canCheck);
    }

    QTest::mouseClick(download, Qt::LeftButton);
    QTest::mouseClick(check, Qt::LeftButton);
    EXPECT_FALSE(updater->checks || updater->downloads || model->canCheckForUpdates());
    EXPECT_FALSE(download->isEnabled() || interval->isEnabled() || now->isEnabled());
    updater->start = failure("no feed");
    QTest::mouseClick(check, Qt::LeftButton);
    EXPECT_EQ(updater->starts, 2);
    EXPECT_TRUE(check->isChecked() && model->canCheckForUpdates()) << "a failure is not shown";
}

TEST_F(SettingsViewTest, DoesWithoutAnUpdater) {
    write(defaults, preferences::updater.automaticallyChecks, true);
    model = makeUpdates(failure("no feed"));
    open();
    EXPECT_FALSE(button("Automatically check for updates")->isChecked());
    EXPECT_FALSE(button("Check for Updates now")->isVisible());
    click("Automatically check for updates");
    EXPECT_TRUE(model->canCheckForUpdates());
}

} // namespace
} // namespace tidewell
