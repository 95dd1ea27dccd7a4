#include "app/SceneWindows.h"
#include "app/panel/PanelWindow.h"

#include <QApplication>
#include <QLabel>
#include <QTest>
#include <QWindow>

#include <gtest/gtest.h>

namespace tidewell {
namespace {

TEST(SceneWindows, OpensEachWindowOnceAndBringsItBackToTheFront) {
    constexpr auto about = SceneIdentifier::about;
    int made = 0;
    SceneWindows windows([](QWidget&) {});
    for (const WindowScene& scene : windowScenes(QStringLiteral("Tidewell"))) {
        windows.add(scene, [&made] {
            ++made;
            return std::make_unique<QLabel>();
        });
    }
    windows.dismissWindow(about);
    windows.openWindow(about);
    QWidget* const first = windows.window(about);
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(first->objectName(), QStringLiteral("about"));
    EXPECT_EQ(first->size(), QSize(400, 160));
    EXPECT_TRUE(first->windowFlags().testFlag(Qt::FramelessWindowHint));
    const auto icon = first->windowIcon().cacheKey();
    first->showMinimized();
    EXPECT_FALSE(first->isMinimized()) << "which no window without a frame is";
    windows.openWindow(about);
    EXPECT_EQ(windows.window(about), first);
    EXPECT_EQ(made, 1);

    constexpr auto settings = SceneIdentifier::settings;
    windows.openWindow(settings);
    windows.window(settings)->showMinimized();
    windows.openWindow(settings);
    EXPECT_FALSE(windows.window(settings)->isMinimized());
    windows.dismissWindow(about);
    ASSERT_TRUE(QTest::qWaitFor([&windows] { return windows.window(about) == nullptr; }));
    windows.openWindow(about);
    EXPECT_EQ(made, 3) << "content is made anew with each opening";
    EXPECT_EQ(windows.window(about)->windowIcon().cacheKey(), icon) << "but the icon is not";
}

TEST(SceneWindows, CloseByKeyboard) {
    constexpr auto about = SceneIdentifier::about;
    SceneWindows windows([](QWidget&) {});
    windows.add(windowScenes(QStringLiteral("Tidewell")).front(),
                [] { return std::make_unique<QLabel>(); });
    for (const auto& [key, modifier] :
         {std::pair(Qt::Key_Escape, Qt::NoModifier), std::pair(Qt::Key_W, Qt::ControlModifier)}) {
        windows.openWindow(about);
        ASSERT_TRUE(QTest::qWaitForWindowActive(windows.window(about)));
        QTest::keyClick(windows.window(about), key, modifier);
        EXPECT_EQ(windows.window(about), nullptr) << key;
    }
}

std::optional<QRect> noPlace() {
    return std::nullopt;
}

TEST(PanelWindow, ScrollsContentThatIsTooHighForTheScreen) {
    QWidget* content = nullptr;
    PanelWindow tall(
        [&content] {
            auto owned = std::make_unique<QLabel>();
            owned->setMinimumHeight(5000);
            content = owned.get();
            return owned;
        },
        noPlace);
    tall.open();
    EXPECT_TRUE(tall.screen()->availableGeometry().contains(tall.geometry()));
    EXPECT_EQ(content->height(), 5000);
}

TEST(PanelWindow, StaysClosedOnTheClickThatTookTheFocus) {
    PanelWindow panel([] { return std::make_unique<QLabel>(); }, noPlace);
    panel.open();
    auto other = std::make_unique<QWindow>();
    other->show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(other.get()));
    Q_EMIT qGuiApp->focusWindowChanged(panel.windowHandle());
    other.reset(); // and nobody has the focus
    EXPECT_TRUE(panel.isVisible());
    Q_EMIT qGuiApp->focusWindowChanged(nullptr);
    ASSERT_TRUE(QTest::qWaitFor([&panel] { return !panel.isVisible(); }));
    for (const bool open : {false, true}) {
        panel.toggle();
        EXPECT_EQ(panel.isVisible(), open);
    }
}

} // namespace
} // namespace tidewell
