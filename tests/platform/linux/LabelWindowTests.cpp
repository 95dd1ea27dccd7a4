#include "platform/linux/LabelWindowStatusItem.h"
#include "tests/platform/linux/PrivateBus.h"

#include <QApplication>
#include <QScreen>
#include <QWidget>

namespace tidewell {
namespace {

TEST(LabelWindow, StaysInItsCornerAsItsTextChangesAndWorksByKeyboard) {
    std::vector<StatusItemActivation> activations;
    DesktopAppearance appearance(QDBusConnection(u"none"_s), {});
    LabelWindowStatusItem item(
        appearance,
        {"tidewell", "Tidewell", [&](const auto& where) { activations.push_back(where); }, {}});
    QWidget* const window = QApplication::topLevelWidgets().value(0);
    ASSERT_NE(window, nullptr);
    for (const auto& text : {u"No Swap"_s, u"1.36 GB of 8 GB"_s}) {
        item.setContent({"circle.fill", colours::systemRed, text.toStdString()});
        EXPECT_EQ(window->geometry().right(), window->screen()->availableGeometry().right() - 8);
        EXPECT_EQ(window->accessibleDescription(), text);
    }
    QTest::keyClick(window, Qt::Key_Space);
    EXPECT_TRUE(activations.empty()) << "not from within the window's own events";
    EXPECT_TRUE(comesTrue([&] { return activations.size() == 1; }));
    EXPECT_EQ(activations[0].item, window->geometry());
}

} // namespace
} // namespace tidewell
