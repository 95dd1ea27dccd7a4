#include "platform/ui/Palette.h"
#include "platform/ui/SymbolButton.h"
#include "services/SettingsView.h"
#include "services/StoredPreferences.h"
#include "tests/fakes/FakeUpdater.h"
#include "tests/fakes/ManualClock.h"
#include "tests/fakes/ManualExecutor.h"
#include "tests/fakes/MemoryUserDefaults.h"
#include "tests/fakes/RecordingLog.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QSlider>
#include <QTest>

#include <limits>

namespace tidewell {
namespace {

using testing::ElementsAre;

/// Remembers what it was asked for, and fails each time.
class FailingLoginItem final : public LoginItem {
public:
    std::optional<PlatformError> registerApplication() override { return fail("register"); }
    std::optional<PlatformError> unregisterApplication() override { return fail("unregister"); }
    std::vector<std::string> calls;

private:
    std::optional<PlatformError> fail(const char* call) {
        calls.emplace_back(call);
        return PlatformError{"the disk is full"};
    }
};

class SettingsViewTest : public testing::Test {
protected:
    void open(std::optional<PlatformError> startError = std::nullopt) {
        model = std::make_shared<SparkleModel>(SparkleModel::Environment{
            defaults, mainThread, clock, log, [&](SPUUpdaterDelegate& delegate) {
                updater = std::make_shared<FakeUpdater>(delegate);
                updater->startError = startError;
                updater->checks = checks;
                updater->downloads = true;
                updater->interval = 604800;
                return updater;
            }});
        view = std::make_unique<SettingsView>(SettingsView::Environment{
            defaults, loginItem, "Tidewell", model, [] { return false; }});
        view->setPalette(paletteFor(Appearance::light));
        view->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(view.get()));
    }
    template <typename Control>
    Control* withText(const QString& text) const {
        for (auto* control : view->findChildren<Control*>()) {
            if (control->text() == text) {
                return control;
            }
        }
        return nullptr;
    }
    QCheckBox* toggle(const char* text) const {
        return withText<QCheckBox>(QString::fromUtf8(text));
    }
    QAbstractButton* symbol(const char* name) const {
        for (auto* button : view->findChildren<QAbstractButton*>()) {
            if (button->accessibleName() == QString::fromUtf8(name)) {
                return button;
            }
        }
        return nullptr;
    }
    std::string pollingText() const {
        for (const auto* label : view->findChildren<QLabel*>()) {
            if (label->text().startsWith(QStringLiteral("Polling"))) {
                pollingColour = label->palette().color(label->foregroundRole());
                return label->text().toStdString();
            }
        }
        return "";
    }

    MemoryUserDefaults defaults;
    ManualExecutor mainThread;
    ManualClock clock;
    RecordingLog log;
    FailingLoginItem loginItem;
    bool checks = true;
    std::shared_ptr<FakeUpdater> updater;
    std::shared_ptr<SparkleModel> model;
    std::unique_ptr<SettingsView> view;
    mutable QColor pollingColour;
};

TEST_F(SettingsViewTest, WritesEachChoiceAtOnceAndKeepsItWhenTheDesktopCannotFollow) {
    open();
    EXPECT_EQ(defaults.value("_startAtLogin"), std::nullopt) << "not by showing it";
    EXPECT_THAT(loginItem.calls, ElementsAre());
    auto* const start = toggle("Start Tidewell at login");
    QTest::mouseClick(start, Qt::LeftButton);
    EXPECT_EQ(defaults.value("_startAtLogin"), DefaultsValue(true));
    EXPECT_TRUE(start->isChecked());
    QTest::keyClick(start, Qt::Key_Space);
    EXPECT_THAT(loginItem.calls, ElementsAre("register", "unregister"));

    auto* const confirm = toggle("Confirm quit on exit");
    EXPECT_TRUE(confirm->isChecked());
    QTest::mouseClick(confirm, Qt::LeftButton);
    EXPECT_EQ(defaults.value("_confimQuitOnExit"), DefaultsValue(false));
}

TEST_F(SettingsViewTest, MovesThePollingIntervalInSteps) {
    open();
    auto* const slider = view->findChild<QSlider*>();
    EXPECT_EQ(pollingText(), "Polling interval: 5 secs");
    EXPECT_EQ(slider->value(), 5);
    QTest::mouseClick(symbol("Poll less often"), Qt::LeftButton);
    EXPECT_EQ(defaults.value("_pollingInterval"), std::nullopt) << "there is no slower";
    QTest::mouseClick(symbol("Poll more often"), Qt::LeftButton);
    EXPECT_EQ(defaults.value("_pollingInterval"), DefaultsValue(4.0));
    EXPECT_EQ(slider->value(), 4);
    for (const Qt::Key key : {Qt::Key_Left, Qt::Key_Left, Qt::Key_Left, Qt::Key_Left}) {
        QTest::keyClick(slider, key);
    }
    EXPECT_EQ(pollingText(), "Polling interval: 1 sec");
    QTest::mouseClick(symbol("Poll more often"), Qt::LeftButton);
    EXPECT_EQ(defaults.value("_pollingInterval"), DefaultsValue(1.0));

    const QColor plain = pollingColour;
    const QPoint thumb(10, slider->height() / 2);
    QTest::mousePress(slider, Qt::LeftButton, {}, thumb);
    QTest::mouseMove(slider, {slider->width() / 2, thumb.y()});
    EXPECT_EQ(pollingText(), "Polling interval: 3 secs");
    EXPECT_EQ(pollingColour, QColor(0xc4, 0x27, 0x1d));
    view->setPalette(paletteFor(Appearance::dark));
    pollingText();
    EXPECT_EQ(pollingColour, QColor(0xff, 0x69, 0x61)) << "follows the desktop while dragging";
    view->setPalette(paletteFor(Appearance::light));
    QTest::mouseRelease(slider, Qt::LeftButton);
    pollingText();
    EXPECT_EQ(pollingColour, plain);
}

TEST_F(SettingsViewTest, ShowsAnyStoredIntervalAndChangesItOnlyWhenAsked) {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    for (const auto& [stored, text, position] : {
             std::tuple{2.5, "Polling interval: 2 secs", 3},
             std::tuple{1.5, "Polling interval: 1 secs", 2},
             std::tuple{-7.9, "Polling interval: -7 sec", 1},
             std::tuple{3e9, "Polling interval: 3000000000 secs", 5},
             std::tuple{1e300, "Polling interval: 9223372036854775807 secs", 5},
             std::tuple{-infinity, "Polling interval: -9223372036854775808 sec", 1},
             std::tuple{std::nan(""), "Polling interval: 0 sec", 1},
         }) {
        defaults.set("_pollingInterval", stored);
        int writes = 0;
        const auto watching = defaults.didChange([&](std::string_view) { ++writes; });
        checks = false;
        open();
        EXPECT_EQ(pollingText(), text);
        EXPECT_EQ(view->findChild<QSlider*>()->value(), position);
        EXPECT_EQ(writes, 0);
    }
}

TEST_F(SettingsViewTest, TakesOverTheUpdatersChoicesAndHandsBackTheUsers) {
    open();
    auto* const check = toggle("Automatically check for updates");
    auto* const download = toggle("Automatically download updates");
    auto* const interval = view->findChild<QComboBox*>();
    auto* const now = withText<QPushButton>(QStringLiteral("Check for Updates now"));
    EXPECT_TRUE(check->isChecked() && download->isChecked());
    EXPECT_EQ(interval->currentText(), QStringLiteral("Weekly"));
    EXPECT_TRUE(updater->checks && updater->downloads);
    EXPECT_EQ(updater->interval, 604800);
    EXPECT_EQ(updater->starts, 1) << "it checks and was not started";
    EXPECT_TRUE(model->canCheckForUpdates());

    QTest::mouseClick(now, Qt::LeftButton);
    EXPECT_EQ(updater->userChecks, 1);
    QTest::keyClick(interval, Qt::Key_Down);
    EXPECT_EQ(updater->interval, 2592000);
    updater->setCanCheck(false); // a check is under way
    QTest::qWait(0);
    EXPECT_FALSE(interval->isEnabled() || now->isEnabled());
    updater->setCanCheck(true);
    QTest::qWait(0);
    EXPECT_TRUE(interval->isEnabled() && now->isEnabled());

    QTest::mouseClick(download, Qt::LeftButton);
    QTest::mouseClick(check, Qt::LeftButton);
    EXPECT_FALSE(updater->checks || updater->downloads || model->canCheckForUpdates());
    EXPECT_FALSE(download->isEnabled() || interval->isEnabled() || now->isEnabled());
    updater->startError = PlatformError{"no feed"};
    QTest::mouseClick(check, Qt::LeftButton);
    EXPECT_EQ(updater->starts, 2);
    EXPECT_TRUE(check->isChecked() && model->canCheckForUpdates()) << "a failure is not shown";
}

TEST_F(SettingsViewTest, DoesWithoutAnUpdater) {
    write(defaults, preferences::enableAutomaticChecks, true);
    open(PlatformError{"no feed"});
    ASSERT_EQ(model->updater(), nullptr);
    auto* const check = toggle("Automatically check for updates");
    EXPECT_FALSE(check->isChecked());
    EXPECT_FALSE(withText<QPushButton>(QStringLiteral("Check for Updates now"))->isVisible());
    EXPECT_EQ(view->findChild<QComboBox*>()->currentText(), QStringLiteral("Hourly"));
    check->click();
    EXPECT_TRUE(model->canCheckForUpdates());

    view = std::make_unique<SettingsView>(
        SettingsView::Environment{defaults, loginItem, "Tidewell", nullptr, [] { return false; }});
    view->show();
    EXPECT_EQ(toggle("Automatically check for updates"), nullptr);
}

} // namespace
} // namespace tidewell
