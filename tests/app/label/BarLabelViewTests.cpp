#include "app/label/BarLabelView.h"
#include "base/text/ByteText.h"
#include "tests/fakes/WatcherSurroundings.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tidewell {
namespace {

using testing::ElementsAre;

constexpr std::uint64_t gigabyte = 1U << 30U;

struct FakeStatusItem final : public StatusItem {
    void setContent(const StatusItemContent& content) override { shown.push_back(content); }

    std::vector<StatusItemContent> shown;
};

class BarLabelViewTest : public WatcherSurroundings {
protected:
    BarLabelViewTest() {
        watcher->startPeriodicTask();
        mainThread.drain();
    }

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
        const auto text =
            used == 0 ? "No Swap" : byteText(static_cast<std::int64_t>(used)) + " of 20 GB";
        const auto* const level = used == 0 ? "" : used > gigabyte ? ", High" : ", Low";
        return {symbol, colour, text, text + level};
    }

    std::shared_ptr<SparkleModel> updates = makeUpdates();
    FakeStatusItem item;
    std::optional<BarLabelView> label{std::in_place, updates.get(), *watcher, mainThread, item};
};

TEST_F(BarLabelViewTest, KeepsTheTextColourUntilTheLevelChangesForTheFirstTime) {
    useSwap(gigabyte);
    label->appear();
    EXPECT_THAT(takeShown(), ElementsAre(content("circle.fill", colours::primary, gigabyte)))
        << "the level was there before";
    for (const auto& [used, colour] : {std::pair(19 * gigabyte, colours::systemRed),
                                       std::pair(gigabyte, colours::systemGreen)}) {
        useSwap(used);
        watcher->updateMemoryUsage();
        EXPECT_THAT(item.shown, ElementsAre());
        EXPECT_THAT(takeShown(), ElementsAre(content("circle.fill", colour, used)))
            << "once for all changes";
    }
    useSwap(0);
    EXPECT_THAT(takeShown(), ElementsAre(content("circle.dotted", colours::lightGray, 0)));
    useSwap(gigabyte);
    label.reset();
    EXPECT_THAT(takeShown(), ElementsAre());
}

TEST_F(BarLabelViewTest, AsksForUpdatesAndShowsTheirMarkInTheTextColour) {
    ASSERT_TRUE(updater->startUpdater());
    label->appear();
    EXPECT_EQ(updater->silentChecks, 1);
    useSwap(19 * gigabyte);
    updater->find("2.0");
    const auto mark = content("exclamationmark.triangle", colours::primary, 19 * gigabyte);
    EXPECT_THAT(takeShown(), ElementsAre(testing::_, mark));
    updater->findNothing();
    const auto plain = content("circle.fill", colours::systemRed, 19 * gigabyte);
    EXPECT_THAT(takeShown(), ElementsAre(plain));
}

} // namespace
} // namespace tidewell
