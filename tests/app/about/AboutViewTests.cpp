#include "app/about/AboutView.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <QUrl>

namespace tidewell {
namespace {

TEST(AboutView, ClosesOnAClickAndAfterTheWebSite) {
    const Bundle nothing({});
    std::vector<std::string> actions;
    AboutView view({nothing,
                    [&](const QUrl& url) { actions.push_back(url.toString().toStdString()); },
                    [&] { actions.emplace_back("dismiss"); }});
    view.resize(400, 160);
    view.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&view));
    std::vector<std::string> texts;
    for (auto* label : view.findChildren<QLabel*>()) {
        texts.push_back(label->text().toStdString());
        EXPECT_GE(label->width(), label->sizeHint().width()) << texts.back() << " is cut";
        EXPECT_GE(label->height(), label->fontMetrics().height()) << texts.back() << " is cut";
    }
    EXPECT_THAT(texts, testing::IsSupersetOf({"Unknown", "Version No version (No build)",
                                              "No copyright information found."}));

    QTest::mouseClick(view.findChild<QPushButton*>(), Qt::LeftButton);
    EXPECT_THAT(actions, testing::ElementsAre(TIDEWELL_WEB_SITE, "dismiss"));
    QTest::mouseClick(view.childAt(90, 80), Qt::LeftButton);
    EXPECT_EQ(actions.size(), 3);
    QTest::keyClick(view.findChild<QPushButton*>(), Qt::Key_Return);
    EXPECT_EQ(actions.size(), 5) << "Return presses the button";
}

} // namespace
} // namespace tidewell
