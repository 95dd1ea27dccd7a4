#include "shell/PanelWindow.h"
#include "shell/SceneWindows.h"

#include <QApplication>
#include <QLabel>
#include <QTest>

#include <gtest/gtest.h>

namespace tidewell {
namespace {

TEST(SceneWindows, OpensEachWindowOnceAndBringsItBackToTheFront) {
    int made = 0;
    SceneWindows windows;
    windows.add(windowScenes("Tidewell")[0], [&made] {
        ++made;
        return std::make_unique<QLabel>();
    });
    windows.openWindow("nothing of the kind");
    windows.dismissWindow("about");
    windows.openWindow("about");
    QWidget* const first = windows.window("about");
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(first->objectName().toStdString(), "about");
    EXPECT_EQ(first->size(), QSize(400, 160));
    EXPECT_TRUE(first->windowFlags().testFlag(Qt::FramelessWindowHint));
    first->showMinimized();
    windows.openWindow("about");
    EXPECT_EQ(windows.window("about"), first);
    EXPECT_FALSE(first->isMinimized());
    EXPECT_EQ(made, 1);

    windows.dismissWindow("about");
    ASSERT_TRUE(QTest::qWaitFor([&windows] { return windows.window("about") == nullptr; }));
    windows.openWindow("about");
    EXPECT_EQ(made, 2) << "content is made anew with each opening";
}

class Panel : public testing::Test {
protected:
    int made = 0;
    PanelWindow panel{[this] {
        ++made;
        return std::make_unique<QLabel>();
    }};
    const StatusItemActivation click{QPoint(700, 5), std::nullopt};
};

TEST_F(Panel, MakesItsContentWhenFirstOpenedAndLiesWhollyOnTheScreen) {
    EXPECT_EQ(made, 0);
    panel.toggle(click);
    EXPECT_TRUE(panel.isVisible());
    EXPECT_TRUE(panel.screen()->availableGeometry().contains(panel.geometry()));
    panel.toggle(click);
    EXPECT_FALSE(panel.isVisible());
    panel.toggle({});
    EXPECT_TRUE(panel.isVisible());
    EXPECT_EQ(made, 1);
}

TEST_F(Panel, ScrollsContentThatIsTooHighForTheScreen) {
    class Tall final : public QWidget {
    public:
        QSize minimumSizeHint() const override { return {100, 5000}; }
    };
    QWidget* content = nullptr;
    PanelWindow tall([&content] {
        auto owned = std::make_unique<Tall>();
        content = owned.get();
        return owned;
    });
    tall.open({});
    EXPECT_TRUE(tall.screen()->availableGeometry().contains(tall.geometry()));
    EXPECT_EQ(content->height(), 5000);
    QTest::keyClick(content, Qt::Key_Escape);
    EXPECT_FALSE(tall.isVisible());
}

TEST_F(Panel, ClosesWithTheActivationOfAnotherProgramAndStaysClosedOnTheSameClick) {
    panel.toggle(click);
    Q_EMIT qApp->applicationStateChanged(Qt::ApplicationInactive);
    EXPECT_FALSE(panel.isVisible());
    panel.toggle(click);
    EXPECT_FALSE(panel.isVisible()) << "the click that took the activation away was the second";
    panel.toggle(click);
    EXPECT_TRUE(panel.isVisible());
}

} // namespace
} // namespace tidewell
