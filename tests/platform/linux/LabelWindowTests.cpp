#include "platform/linux/LabelWindowStatusItem.h"
#include "tests/platform/linux/PrivateBus.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QScreen>
#include <QWidget>

namespace tidewell {
namespace {

class LabelWindowTest : public testing::Test {
protected:
    QWidget* window() const {
        const QWidgetList windows = QApplication::topLevelWidgets();
        return windows.isEmpty() ? nullptr : windows.front();
    }

    std::vector<StatusItemActivation> activations;
    DesktopAppearance appearance{QDBusConnection(QStringLiteral("no such connection")), {}};
    LabelWindowStatusItem item{
        appearance, StatusItemBehaviour{"tidewell",
                                        "Tidewell",
                                        [this](const auto& where) { activations.push_back(where); },
                                        {}}};
};

TEST_F(LabelWindowTest, KeepsToTheTopRightCornerAsItsTextChanges) {
    EXPECT_FALSE(window()->isVisible()) << "nothing to show yet";
    const QRect available = QGuiApplication::primaryScreen()->availableGeometry();
    int width = 0;
    for (const char* text : {"No Swap", "1.36 GB of 8 GB"}) {
        item.setContent({"circle.fill", colours::systemRed, text});
        EXPECT_TRUE(window()->isVisible());
        EXPECT_GT(window()->width(), width);
        EXPECT_EQ(window()->geometry().right(), available.right() - 8);
        EXPECT_EQ(window()->y(), available.y() + 8);
        EXPECT_EQ(window()->accessibleName(), QStringLiteral("Tidewell"));
        EXPECT_EQ(window()->accessibleDescription(), QLatin1String(text));
        width = window()->width();
    }
    EXPECT_TRUE(window()->testAttribute(Qt::WA_ShowWithoutActivating));
    EXPECT_TRUE(window()->windowFlags().testFlag(Qt::WindowStaysOnTopHint));
}

TEST_F(LabelWindowTest, IsActivatedByClickAndKeyboardAndSaysWhereItIs) {
    item.setContent({"circle.fill", colours::systemRed, "a"});
    QTest::mouseClick(window(), Qt::LeftButton);
    QTest::keyClick(window(), Qt::Key_Space);
    QTest::keyClick(window(), Qt::Key_Return);
    EXPECT_TRUE(activations.empty()) << "not from within the window's own events";
    EXPECT_TRUE(comesTrue([&] { return activations.size() == 3; }));
    for (const auto& activation : activations) {
        EXPECT_EQ(activation.item, window()->geometry());
        EXPECT_EQ(activation.click, std::nullopt);
    }
}

TEST_F(LabelWindowTest, DrawsSymbolAndTextOnOneLine) {
    item.setContent({"circle.fill", colours::systemRed, "a"});
    const QImage picture = window()->grab().toImage();
    // The disc: 12 points in the middle of 16, above the padding of 6, after one of 12.
    const QPoint centre(12 + 8, picture.height() - 6 - 8);
    EXPECT_EQ(picture.pixel(centre), 0xffff3b30);
    EXPECT_EQ(picture.pixel(centre + QPoint(0, 4)), 0xffff3b30);
    EXPECT_EQ(picture.pixel(centre + QPoint(0, 6)), 0xfff4f4f6);
    EXPECT_EQ(picture.pixel(12 + 16 + 7, picture.height() / 2), 0xfff4f4f6);
}

} // namespace
} // namespace tidewell
