#include "base/text/ByteText.h"
#include "model/memory/DataContainerJson.h"
#include "model/preferences/StoredPreferences.h"
#include "tests/fakes/WatcherSurroundings.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

namespace tidewell {
namespace {

using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::Field;
using testing::IsEmpty;
using testing::SizeIs;

constexpr std::uint64_t physical = 17179869184;
constexpr std::uint64_t gigabyte = physical / 16;

class MemoryWatcherTest : public WatcherSurroundings {
protected:
    void start() {
        watcher->startPeriodicTask();
        settle();
    }

    void useSwap(std::uint64_t used) {
        probes.swap = SwapUsage{.total = used + 100, .used = used, .free = 100};
    }

    std::optional<Data> saved() const { return stored(defaults, preferences::dataContainer); }
};

TEST_F(MemoryWatcherTest, StartsWithSwapAndASampleAtOnceAndTheFirstSwapWorkSoonAfter) {
    useSwap(100);
    start();
    EXPECT_THAT(watcher->memoryPressureArray(), ElementsAre(MemoryPressureItem{40, 1000.5}));
    EXPECT_THAT(watcher->swapUsedArray(),
                ElementsAre(SwapItem{100, 1000.5}, SwapItem{100, 1000.5}));
    EXPECT_EQ(watcher->warningLevel(), WarningLevel::low) << "classified by the first swap work";
    EXPECT_THAT(log.takeLines(), Contains("info file readData(): No data available yet..."));

    pass(3600); // the machine slept through many
    EXPECT_THAT(watcher->swapUsedArray(), SizeIs(3));
    EXPECT_THAT(watcher->memoryPressureArray(),
                ElementsAre(testing::_, MemoryPressureItem{40, 4600.5}));
}

TEST_F(MemoryWatcherTest, ReadsThePollingIntervalAnewBeforeEveryPause) {
    start();
    std::size_t samples = 1;
    constexpr double none = std::numeric_limits<double>::quiet_NaN();
    for (const auto& [stored, pause] :
         {std::pair{10.0, 1.0}, {0.2, 10.0}, {none, 1.0}, {1.5, 1.0}, {1.5, 1.5}}) {
        defaults.set("_pollingInterval", stored); // the pause was begun before
        pass(pause - 0.01);
        EXPECT_THAT(watcher->memoryPressureArray(), SizeIs(samples)) << pause;
        pass(0.01);
        EXPECT_THAT(watcher->memoryPressureArray(), SizeIs(++samples)) << pause;
    }
}

TEST_F(MemoryWatcherTest, KeepsTheNewestHundredSamplesOfEachKind) {
    DataContainer container;
    for (std::int64_t i = 0; i < 150; ++i) {
        container.memoryPressureArray.push_back({i, 0.5});
        container.swapUsedArray.push_back({i, 0.25});
    }
    write(defaults, preferences::dataContainer, encodeDataContainer(container).value());
    watcher->readData();
    EXPECT_THAT(watcher->memoryPressureArray(), SizeIs(150)) << "loaded in full";
    start();
    EXPECT_THAT(watcher->swapUsedArray(), SizeIs(100));
    EXPECT_EQ(watcher->swapUsedArray().front().value, 52);
    EXPECT_EQ(watcher->memoryPressureArray().front().value, 51);
}

TEST_F(MemoryWatcherTest, ShowsTheFiguresInOrderWithSwapTotalOnlyWhileSwapIsInUse) {
    const auto shows = [](const char* label, std::uint64_t value) {
        return AllOf(Field(&ShowItem::label, label), Field(&ShowItem::value, value));
    };
    probes.counters = MemoryCounters{4096, 786432, 0, 262144, 524288, 1310720};
    start();
    EXPECT_EQ(watcher->usedMemoryPercentage(), 62.5);
    EXPECT_THAT(watcher->showItems(),
                ElementsAre(shows("Physical Memory", physical), shows("Memory Used", 10 * gigabyte),
                            shows("App Memory", 3 * gigabyte), shows("Wired Memory", 2 * gigabyte),
                            shows("Compressed", 5 * gigabyte), shows("Free Memory", 6 * gigabyte),
                            shows("Cached Files", gigabyte), shows("Swap Used", 0)));
    useSwap(100);
    probes.physical = 8 * gigabyte;
    start();
    EXPECT_EQ(watcher->usedMemoryPercentage(), 125.0);
    ASSERT_THAT(watcher->showItems(), SizeIs(9));
    EXPECT_THAT(watcher->showItems()[5], shows("Free Memory", 0)) << "more is used than there is";
    EXPECT_THAT(watcher->showItems()[8], shows("Swap Total", 200));
}

TEST_F(MemoryWatcherTest, TakesOverPhysicalMemoryThatChangesOrIsReadOnlyLater) {
    const auto counters = std::exchange(probes.counters, std::nullopt);
    probes.physical = std::nullopt;
    start();
    log.takeLines();
    EXPECT_THAT(watcher->showItems(), IsEmpty());
    probes.counters = counters; // 12 GB in use
    using Case = std::tuple<std::optional<std::uint64_t>, std::uint64_t, double>;
    for (const auto& [read, total, percentage] :
         {Case{{}, 0, 0.0}, Case{physical, physical, 75.0}, Case{2 * physical, 2 * physical, 37.5},
          Case{{}, 2 * physical, 37.5}, Case{12 * gigabyte, 12 * gigabyte, 100.0}}) {
        probes.physical = read;
        pass(1);
        EXPECT_EQ(watcher->showItems().at(0).value, total);
        EXPECT_EQ(watcher->usedMemoryPercentage(), percentage);
    }
    EXPECT_THAT(log.takeLines(), IsEmpty());
    useSwap(12 * gigabyte + 1);
    pass(60);
    EXPECT_EQ(watcher->warningLevel(), WarningLevel::high) << "by the memory there is now";
}

TEST_F(MemoryWatcherTest, KeepsWhatItHasWhereAReadingFails) {
    const std::string error = "error general ";
    probes.physical = std::nullopt;
    start();
    EXPECT_THAT(log.takeLines(),
                Contains(error + "startPeriodicTask(): Failed to retrieve total physical memory."));
    EXPECT_EQ(watcher->usedMemoryPercentage(), 0.0);
    useSwap(physical);
    watcher->updateSwapUsage();
    watcher->checkSwapUsage();
    settle();
    EXPECT_EQ(watcher->warningLevel(), WarningLevel::none) << "of an unknown memory";
    EXPECT_THAT(center.requests, IsEmpty());

    constexpr auto least = std::numeric_limits<std::int64_t>::min(); // has no difference to 100
    for (const auto percentage : {std::optional<std::int64_t>(), std::optional(least)}) {
        probes.freePercentage = percentage;
        ++probes.counters->wiredPages;
        const auto items = watcher->showItems();
        pass(1);
        EXPECT_THAT(watcher->memoryPressureArray(), SizeIs(1));
        EXPECT_NE(watcher->showItems(), items) << "memory use is read nevertheless";
        EXPECT_THAT(log.takeLines(),
                    ElementsAre(error + "performWork(): Cannot read the free memory percentage"));
    }
    probes.counters = std::nullopt;
    probes.freePercentage = 101;
    pass(1);
    EXPECT_EQ(watcher->memoryPressure(), -1);
    EXPECT_THAT(watcher->showItems(), SizeIs(9));
    probes.swap = std::nullopt;
    watcher->updateSwapUsage();
    EXPECT_EQ(watcher->swapTotal() + watcher->swapUsed(), 0U);
    EXPECT_EQ(watcher->swapUsedArray().back().value, 0);
}

TEST_F(MemoryWatcherTest, ReplacesBothLoopsWhenStartedAgainAndIsHeldByThem) {
    start();
    start();
    EXPECT_TRUE(watcher->isRunning()) << "not undone by the end of the loop before";
    EXPECT_THAT(watcher->memoryPressureArray(), SizeIs(1)) << "loaded anew, then sampled";
    EXPECT_EQ(clock.pendingAlarms(), 2U);
    const std::weak_ptr<MemoryWatcher> watched = std::exchange(watcher, nullptr);
    pass(60);
    ASSERT_FALSE(watched.expired()) << "although nobody else holds it";
    EXPECT_THAT(watched.lock()->swapUsedArray(), SizeIs(3));
    clock.dropAlarms();
    EXPECT_TRUE(watched.expired());
}

TEST_F(MemoryWatcherTest, LeavesWhatItSavedAloneWhenItCannotSaveOrRead) {
    start();
    watcher->writeData();
    const auto first = saved();
    watcher->writeData();
    auto last = saved();
    EXPECT_NE(last, first) << "each has an identity of its own";
    log.takeLines();
    startOfTime = std::numeric_limits<double>::quiet_NaN();
    pass(1);
    watcher->writeData();
    EXPECT_THAT(log.takeLines(), ElementsAre("error file writeData(): Could not save data"));
    EXPECT_EQ(saved(), last);

    last->pop_back();
    write(defaults, preferences::dataContainer, *last);
    watcher->readData();
    EXPECT_THAT(watcher->memoryPressureArray(), IsEmpty());
    EXPECT_THAT(log.takeLines(), ElementsAre(testing::StartsWith("error file readData(): ")));
    EXPECT_EQ(saved(), last);
}

TEST_F(MemoryWatcherTest, AlertsByTheTransitionOfTheLevelAtEachSwapWork) {
    using enum WarningLevel;
    using Range = std::tuple<std::uint64_t, WarningLevel, std::string>;
    const std::string warning = "High swap usage";
    const std::string mild = "Swap memory usage";
    const std::vector ranges{
        Range{0, none, ""},        {1, low, mild},
        {physical / 5, low, mild}, {physical / 5 + 1, warn, warning},
        {physical, warn, warning}, {physical + 1, high, "Very high swap usage"}};
    start();
    for (const auto& [earlierUsed, previous, earlierSubtitle] : ranges) {
        for (const auto& [used, level, subtitle] : ranges) {
            useSwap(earlierUsed);
            pass(60);
            center.requests.clear();
            useSwap(used);
            pass(60);
            EXPECT_EQ(watcher->warningLevel(), level) << used;
            const bool silent = level == none || (previous == low && level == low);
            ASSERT_THAT(center.requests, SizeIs(silent ? 0 : 1)) << used;
            EXPECT_TRUE(silent || center.requests[0].subtitle == subtitle) << used;
        }
    }

    center.requests.clear();
    useSwap(physical);
    watcher->updateSwapUsage();
    watcher->checkSwapUsage();
    EXPECT_THAT(center.requests, IsEmpty()) << "posted by a task of its own";
    useSwap(2048);
    watcher->updateSwapUsage();
    settle();
    EXPECT_EQ(center.requests[0].body, "Your computer uses swap memory (" + byteText(2048) + ").")
        << "the amount when the alert is composed";

    clock.dropAlarms(); // of the watcher that goes
    center.requests.clear();
    notificationManager = nullptr;
    watcher = makeWatcher();
    useSwap(physical + 1);
    start();
    EXPECT_EQ(watcher->warningLevel(), high);
    EXPECT_THAT(center.requests, IsEmpty()) << "there is nobody to post it";
}

} // namespace
} // namespace tidewell
