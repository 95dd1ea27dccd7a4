#include "platform/ui/Symbols.h"
#include "shell/BarLabelView.h"
#include "support/ByteText.h"
#include "support/LevelColours.h"
#include "tests/fakes/FakeProbes.h"
#include "tests/fakes/ManualClock.h"
#include "tests/fakes/ManualExecutor.h"
#include "tests/fakes/MemoryUserDefaults.h"
#include "tests/fakes/RecordingLog.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tidewell {

void PrintTo(const StatusItemContent& content, std::ostream* out) {
    *out << content.symbolName << " " << std::hex << content.colour.light << " " << content.text;
}

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::uint64_t gigabyte = 1U << 30U;

TEST(BarLabel, TellsOfSwapInUse) {
    EXPECT_EQ(symbolName(0), "circle.dotted");
    EXPECT_EQ(symbolName(1), "circle.fill");
    EXPECT_EQ(labelText(0, 0), "No Swap");
    EXPECT_EQ(labelText(0, 8 * gigabyte), "No Swap");
    EXPECT_EQ(labelText(1, 8 * gigabyte), byteText(1) + " of " + byteText(8 * gigabyte));
}

TEST(BarLabel, FallsBackToAPlainCircleWithoutAnyMark) {
    const auto knowsAll = [](std::string_view) { return true; };
    const auto knowsNoDisc = [](std::string_view name) { return name != "circle.fill"; };
    for (const std::uint64_t used : {std::uint64_t{0}, gigabyte}) {
        EXPECT_EQ(labelSymbol(used, false, knowsAll).name, symbolName(used));
        EXPECT_TRUE(labelSymbol(used, false, knowsAll).takesWarningColor);
        EXPECT_EQ(labelSymbol(used, true, knowsAll).name, "exclamationmark.triangle");
        EXPECT_FALSE(labelSymbol(used, true, knowsAll).takesWarningColor);
        EXPECT_TRUE(hasSymbol(symbolName(used)));
    }
    for (const bool isUpdateAvailable : {false, true}) {
        EXPECT_EQ(labelSymbol(gigabyte, isUpdateAvailable, knowsNoDisc).name, "circle");
        EXPECT_FALSE(labelSymbol(gigabyte, isUpdateAvailable, knowsNoDisc).takesWarningColor);
    }
}

class FakeStatusItem final : public StatusItem {
public:
    void setContent(const StatusItemContent& content) override { shown.push_back(content); }
    std::vector<StatusItemContent> take() { return std::exchange(shown, {}); }

    std::vector<StatusItemContent> shown;
};

class FakeUpdateModel final : public UpdateModel {
public:
    bool isUpdateAvailable() const override { return isUpdateAvailable_.get(); }
    void scheduleUpdateChecks() override { ++checks; }
    void setUpdateAvailable(bool available) { isUpdateAvailable_ = available; }

    int checks = 0;

private:
    Published<bool> isUpdateAvailable_{*this};
};

class BarLabelViewTest : public testing::Test {
protected:
    /// Lets the watcher find that much swap in use; 16 GB of memory make 1 GB low and 19 GB high.
    void useSwap(std::uint64_t used) {
        probes.swap = SwapUsage{.total = 20 * gigabyte, .used = used, .free = 0};
        watcher->updateSwapUsage();
        watcher->checkSwapUsage();
    }

    static StatusItemContent content(const char* symbol, Colour colour, std::uint64_t used) {
        return {symbol, colour, labelText(used, 20 * gigabyte)};
    }

    FakeProbes probes;
    MemoryUserDefaults defaults;
    RecordingLog log;
    ManualExecutor mainThread;
    ManualExecutor schedulerThread;
    ManualClock clock;
    std::shared_ptr<MemoryWatcher> watcher = std::make_shared<MemoryWatcher>(
        MemoryWatcher::Environment{probes, defaults, mainThread, schedulerThread, clock, log,
                                   [] { return 0.0; }},
        nullptr);
    FakeUpdateModel updates;
    FakeStatusItem item;
    BarLabelView label{&updates, *watcher, colours::primary, mainThread, item};
};

TEST_F(BarLabelViewTest, KeepsTheTextColourUntilTheLevelChangesForTheFirstTime) {
    label.appear();
    EXPECT_THAT(item.take(), ElementsAre(content("circle.dotted", colours::primary, 0)));
    spawn(mainThread, watcher->startPeriodicTask());
    mainThread.drain();
    EXPECT_EQ(item.take().back(), content("circle.dotted", colours::primary, 0))
        << "the level is still none";

    const auto shownAt = [this](std::uint64_t used) {
        useSwap(used);
        mainThread.drain();
        return item.take();
    };
    EXPECT_THAT(shownAt(gigabyte),
                ElementsAre(content("circle.fill", colours::systemGreen, gigabyte)));
    EXPECT_THAT(shownAt(19 * gigabyte),
                ElementsAre(content("circle.fill", colours::systemRed, 19 * gigabyte)));
    EXPECT_THAT(shownAt(gigabyte),
                ElementsAre(content("circle.fill", colours::systemGreen, gigabyte)));
    EXPECT_THAT(shownAt(0), ElementsAre(content("circle.dotted", colours::lightGray, 0)));
}

TEST_F(BarLabelViewTest, StartsInTheTextColourAtALevelThatWasThereBefore) {
    spawn(mainThread, watcher->startPeriodicTask());
    mainThread.drain();
    useSwap(gigabyte);
    label.appear();
    EXPECT_EQ(item.take().back(), content("circle.fill", colours::primary, gigabyte));
    EXPECT_EQ(label.warningColor(), colours::primary);
}

TEST_F(BarLabelViewTest, DrawsOnceForAllChangesOfOnePass) {
    label.appear();
    item.take();
    for (int i = 0; i < 10; ++i) {
        watcher->updateMemoryUsage();
    }
    useSwap(gigabyte);
    EXPECT_THAT(item.take(), IsEmpty());
    EXPECT_EQ(mainThread.drain(), 1U);
    EXPECT_THAT(item.take(), ElementsAre(content("circle.fill", colours::primary, gigabyte)));
}

TEST_F(BarLabelViewTest, ShowsTheUpdateMarkInTheTextColourAndAsksForChecksWhenItAppears) {
    EXPECT_EQ(updates.checks, 0);
    spawn(mainThread, watcher->startPeriodicTask());
    mainThread.drain();
    label.appear();
    EXPECT_EQ(updates.checks, 1);
    useSwap(gigabyte);
    updates.setUpdateAvailable(true);
    mainThread.drain();
    EXPECT_EQ(item.take().back(), content("exclamationmark.triangle", colours::primary, gigabyte));
    updates.setUpdateAvailable(false);
    mainThread.drain();
    EXPECT_EQ(item.take().back(), content("circle.fill", colours::systemGreen, gigabyte));
}

TEST_F(BarLabelViewTest, MayGoWhileADrawingIsQueued) {
    auto shortLived =
        std::make_unique<BarLabelView>(nullptr, *watcher, colours::primary, mainThread, item);
    shortLived->appear();
    useSwap(gigabyte);
    shortLived.reset();
    item.take();
    mainThread.drain();
    EXPECT_THAT(item.take(), IsEmpty());
}

} // namespace
} // namespace tidewell
