#include "shell/BarLabelView.h"
#include "support/ByteText.h"
#include "support/LevelColours.h"
#include "tests/fakes/FakeProbes.h"
#include "tests/fakes/FakeUpdater.h"
#include "tests/fakes/Surroundings.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tidewell {

void PrintTo(const StatusItemContent& content, std::ostream* out) {
    *out << content.symbolName << " " << std::hex << content.colour.light << " " << content.text;
}

namespace {

using testing::ElementsAre;

constexpr std::uint64_t gigabyte = 1U << 30U;

TEST(BarLabel, TellsOfSwapInUseAndFallsBackToAPlainCircleWithoutAnyMark) {
    EXPECT_EQ(labelText(0, 8 * gigabyte), "No Swap");
    EXPECT_EQ(labelText(1, 8 * gigabyte), byteText(1) + " of " + byteText(8 * gigabyte));
    const auto knowsNoDisc = [](std::string_view name) { return name != "circle.fill"; };
    for (const bool isUpdateAvailable : {false, true}) {
        EXPECT_EQ(labelSymbol(gigabyte, isUpdateAvailable, knowsNoDisc).name, "circle");
        EXPECT_FALSE(labelSymbol(gigabyte, isUpdateAvailable, knowsNoDisc).takesWarningColor);
    }
}

struct FakeStatusItem final : public StatusItem {
    void setContent(const StatusItemContent& content) override { shown.push_back(content); }

    std::vector<StatusItemContent> shown;
};

class BarLabelViewTest : public Surroundings {
protected:
    /// Lets the watcher find that much swap in use; 16 GB of memory make 1 GB low and 19 GB high.
    void useSwap(std::uint64_t used) {
        probes.swap = SwapUsage{.total = 20 * gigabyte, .used = used, .free = 0};
        watcher->updateSwapUsage();
        watcher->checkSwapUsage();
    }
    std::vector<StatusItemContent> takeShown() {
        mainThread.drain();
        return std::exchange(item.shown, {});
    }
    static StatusItemContent content(const char* symbol, Colour colour, std::uint64_t used) {
        return {symbol, colour, labelText(used, 20 * gigabyte)};
    }

    FakeProbes probes;
    std::shared_ptr<MemoryWatcher> watcher = std::make_shared<MemoryWatcher>(
        MemoryWatcher::Environment{probes, defaults, mainThread, worker, clock, log,
                                   [] { return 0.0; }},
        nullptr);
    std::shared_ptr<FakeUpdater> updater;
    SparkleModel updates{{defaults, mainThread, clock, log, [this](SPUUpdaterDelegate& delegate) {
                              return updater = std::make_shared<FakeUpdater>(delegate);
                          }}};
    FakeStatusItem item;
    std::optional<BarLabelView> label{std::in_place,    &updates,   *watcher,
                                      colours::primary, mainThread, item};
};

TEST_F(BarLabelViewTest, KeepsTheTextColourUntilTheLevelChangesForTheFirstTime) {
    label->appear();
    spawn(mainThread, watcher->startPeriodicTask());
    EXPECT_EQ(takeShown().back(), content("circle.dotted", colours::primary, 0))
        << "the level is still none";
    for (const auto& [used, colour] :
         {std::pair(gigabyte, colours::systemGreen), std::pair(19 * gigabyte, colours::systemRed),
          std::pair(gigabyte, colours::systemGreen)}) {
        useSwap(used);
        EXPECT_THAT(takeShown(), ElementsAre(content("circle.fill", colour, used)));
    }
    useSwap(0);
    EXPECT_THAT(takeShown(), ElementsAre(content("circle.dotted", colours::lightGray, 0)));
}

TEST_F(BarLabelViewTest, StartsInTheTextColourAndShowsTheUpdateMarkInIt) {
    spawn(mainThread, watcher->startPeriodicTask());
    mainThread.drain();
    useSwap(gigabyte);
    EXPECT_EQ(updater->silentChecks, 0);
    label->appear();
    EXPECT_EQ(updater->silentChecks, 1);
    EXPECT_EQ(takeShown().back(), content("circle.fill", colours::primary, gigabyte))
        << "the level was there before";
    useSwap(19 * gigabyte);
    updater->find("2.0");
    EXPECT_EQ(takeShown().back(),
              content("exclamationmark.triangle", colours::primary, 19 * gigabyte));
    updater->findNothing();
    EXPECT_EQ(takeShown().back(), content("circle.fill", colours::systemRed, 19 * gigabyte));
}

TEST_F(BarLabelViewTest, DrawsOnceForAllChangesOfOnePassAndMayGoBefore) {
    label->appear();
    takeShown();
    watcher->updateMemoryUsage();
    useSwap(gigabyte);
    EXPECT_THAT(item.shown, ElementsAre());
    EXPECT_THAT(takeShown(), ElementsAre(content("circle.fill", colours::primary, gigabyte)));
    useSwap(0);
    label.reset();
    EXPECT_THAT(takeShown(), ElementsAre());
}

} // namespace
} // namespace tidewell
