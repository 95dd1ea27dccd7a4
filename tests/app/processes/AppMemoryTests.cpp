#include "app/lists/ShowItemList.h"
#include "app/panel/AnchorPoint.h"
#include "app/processes/AppMemoryPlacement.h"
#include "app/processes/AppMemoryView.h"
#include "tests/fakes/FakeApplicationSource.h"
#include "tests/fakes/WatcherSurroundings.h"
#include "ui/TitledBox.h"

#include <QCoreApplication>
#include <QLabel>

#include <gtest/gtest.h>

namespace tidewell {
namespace {

TEST(AnchorPoint, IsStoredAsTheShortestJsonArrayOfTwoNumbers) {
    for (const auto& [point, text] : {std::pair{QPointF(812, 640.5), "[812,640.5]"},
                                      {QPointF(-0.0, -1280), "[0,-1280]"},
                                      {QPointF(0.1, 1e300), "[0.1,1e+300]"}}) {
        const Data data = encodePoint(point).value();
        EXPECT_EQ(std::string(data.begin(), data.end()), text);
        EXPECT_EQ(decodePoint(data), point);
    }
    EXPECT_EQ(encodePoint({0, std::numeric_limits<double>::infinity()}), std::nullopt);
    for (const std::string text : {"", "[1]", "[1,\"2\"]", "{\"x\":1}", "[1,1e999]"}) {
        EXPECT_FALSE(decodePoint(Data(text.begin(), text.end()))) << text;
    }
}

TEST(AppMemoryPlacement, IsLeftOfThePanelWhereItIsWholeThereAndOnItsScreenInAnyCase) {
    const QRect main(0, 0, 1440, 900);
    const QRect below(100, 900, 1440, 900);
    const QRect right(1440, 0, 1440, 900);
    const QRect narrow(0, 0, 600, 900);
    const auto place = [](QPointF anchor, const QList<QRect>& screens) {
        return appMemoryPosition(anchor, QSize(400, 380), 350, screens);
    };
    EXPECT_EQ(place({1000, 100}, {main}), QPoint(576, 291));
    EXPECT_EQ(place({424, 100}, {main}), QPoint(0, 291)) << "just whole";
    EXPECT_EQ(place({423, 100}, {main}), QPoint(797, 291)) << "right of the panel";
    EXPECT_EQ(place({0, 0}, {main}), QPoint(374, 391));
    EXPECT_EQ(place({1000, -50}, {main}), QPoint(576, 441));
    EXPECT_EQ(place({1000, 600}, {main}), QPoint(576, 0)) << "no higher than the screen";
    EXPECT_EQ(place({1000, 100}, {main.translated(1440, 100), main}), QPoint(2016, 391));
    EXPECT_EQ(place({1440, 100}, {main, right}), QPoint(1016, 291)) << "whole on the other screen";
    EXPECT_EQ(place({1500, 100}, {main, right}), QPoint(1874, 291)) << "across the edge of both";
    EXPECT_EQ(place({1000, -500}, {main, below}), QPoint(576, 900)) << "below the main screen";
    EXPECT_EQ(place({200, 0}, {narrow}), QPoint(0, 391)) << "too narrow for both";
    EXPECT_EQ(place({1e300, -1e300}, {main, below}), QPoint(1040, 520)) << "far from everything";
    EXPECT_EQ(place({0, 0}, {}), QPoint());
}

TEST_F(WatcherSurroundings, TheProcessWindowCountsItsRowsAndRemarksOnWhoIsInSwap) {
    const auto usage = [](ProcessIdentifier leader, std::uint64_t swapped) {
        auto made = std::make_shared<ApplicationUsage>();
        made->leader = leader;
        made->swapped = swapped;
        return made;
    };
    FakeApplicationSource source{worker};
    source.applications = {{"out", std::nullopt, 30, usage(1, 410)},
                           {"in", std::nullopt, 20, usage(2, 409)},
                           {"gone", std::nullopt, std::nullopt, usage(3, 4096)}};
    const auto manager = std::make_shared<MemoryManager>(
        MemoryManager::Environment{source, defaults, mainThread, clock, log});
    probes.swap = SwapUsage{.total = 8192, .used = 4096, .free = 4096};
    watcher->updateSwapUsage();
    const auto environment = [&](bool processesAreHidden) {
        return AppMemoryView::Environment{manager, watcher, defaults,
                                          [] {},   350,     processesAreHidden};
    };
    AppMemoryView view(environment(false));
    const auto title = [&view] {
        for (const QWidget* widget : view.findChildren<QWidget*>()) {
            if (const auto* const box = dynamic_cast<const TitledBox*>(widget)) {
                return box->accessibleName().toStdString();
            }
        }
        return std::string();
    };
    const auto* const list = view.findChild<ShowItemList*>();
    view.show();
    EXPECT_EQ(title(), "Processes Real Mem [0]");
    settle();
    QCoreApplication::processEvents();
    EXPECT_EQ(title(), "Processes Real Mem [2]");
    EXPECT_TRUE(list->itemText(0).endsWith(QStringLiteral(", Swap 410 bytes"))) << "over a tenth";
    EXPECT_FALSE(list->itemText(1).contains(QStringLiteral("Swap")));
    view.hide();
    EXPECT_FALSE(manager->isRunning());

    AppMemoryView inSandbox(environment(true));
    inSandbox.show();
    EXPECT_FALSE(manager->isRunning());
    EXPECT_EQ(inSandbox.findChild<ShowItemList*>(), nullptr);
    EXPECT_TRUE(inSandbox.findChild<QLabel*>()->text().contains(QLatin1String("sandbox")));
}

} // namespace
} // namespace tidewell
