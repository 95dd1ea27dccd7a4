#include "desktop/display/ClickCatcher.h"
#include "desktop/display/ScreenCover.h"

#include <QScreen>
#include <QTest>
#include <QWidget>

#include <gtest/gtest.h>

#include <memory>

namespace tidewell {
namespace {

TEST(ScreenCover, TakesPressesOverAllOfItsScreen) {
    QScreen* const screen = QGuiApplication::primaryScreen();
    const std::unique_ptr<QPointingDevice> finger(QTest::createTouchDevice());
    int clicks = 0;
    const auto count = [&clicks] { ++clicks; };
    ScreenCover cover(*screen, count);
    ClickCatcher catcher(*screen, count);
    for (QWindow* window : {static_cast<QWindow*>(&cover), static_cast<QWindow*>(&catcher)}) {
        clicks = 0;
        EXPECT_EQ(window->geometry(), screen->geometry());
        EXPECT_TRUE(window->isVisible());
        EXPECT_TRUE(window->flags().testFlag(Qt::WindowDoesNotAcceptFocus));
        QTest::mouseMove(window, {5, 5});
        EXPECT_EQ(clicks, 0) << "the pointer on its way";
        QTest::mouseClick(window, Qt::RightButton, {}, {5, 5});
        EXPECT_EQ(clicks, 1);
        QTest::touchEvent(window, finger.get()).press(0, {5, 5});
        QTest::touchEvent(window, finger.get()).release(0, {5, 5});
        EXPECT_EQ(clicks, 2);
    }
    QWidget ours;
    ours.setGeometry(100, 100, 350, 300);
    ours.show();
    EXPECT_FALSE(catcher.mask().contains(QPoint(200, 200))) << "over a window of ours";
    ours.hide();
    EXPECT_TRUE(catcher.mask().contains(QPoint(200, 200)));
}

} // namespace
} // namespace tidewell
