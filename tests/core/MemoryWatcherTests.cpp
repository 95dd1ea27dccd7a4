#include "core/DataContainerJson.h"
#include "core/MemoryWatcher.h"
#include "support/ByteText.h"
#include "tests/fakes/FakeNotificationCenter.h"
#include "tests/fakes/FakeProbes.h"
#include "tests/fakes/ManualClock.h"
#include "tests/fakes/ManualExecutor.h"
#include "tests/fakes/MemoryUserDefaults.h"
#include "tests/fakes/RecordingLog.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

namespace tidewell {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

constexpr auto historyKey = "_dataContainer";
constexpr std::uint64_t physical = 17179869184;

class MemoryWatcherTest : public testing::Test {
protected:
    std::shared_ptr<MemoryWatcher> make(std::shared_ptr<NotificationManager> notifications) {
        return std::make_shared<MemoryWatcher>(
            MemoryWatcher::Environment{.probes = probes,
                                       .defaults = defaults,
                                       .mainThread = mainThread,
                                       .schedulerThread = schedulerThread,
                                       .clock = clock,
                                       .log = log,
                                       .secondsSince1970 = [this] { return wallClock; }},
            std::move(notifications));
    }

    void settle() {
        while (mainThread.drain() + schedulerThread.drain() > 0) {
        }
    }

    void start() {
        spawn(mainThread, watcher->startPeriodicTask());
        settle();
    }

    void pass(double seconds) {
        wallClock += seconds;
        clock.advance(seconds);
        settle();
    }

    void sampleOnce() {
        spawn(mainThread, watcher->performWork());
        settle();
    }

    void storeHistory(std::size_t count) {
        DataContainer container;
        for (std::size_t i = 0; i < count; ++i) {
            container.memoryPressureArray.push_back({static_cast<std::int64_t>(i), 0.5});
            container.swapUsedArray.push_back({static_cast<std::int64_t>(i) * 10, 0.25});
        }
        defaults.set(historyKey, encodeDataContainer(container).value());
    }

    void useSwap(std::uint64_t used) {
        probes.swap = SwapUsage{.total = used, .used = used, .free = 0};
    }

    std::vector<std::pair<std::string, std::uint64_t>> figures() const {
        std::vector<std::pair<std::string, std::uint64_t>> result;
        for (const auto& item : watcher->showItems()) {
            result.emplace_back(item.label, item.value);
        }
        return result;
    }

    double wallClock = 1000.5;
    FakeProbes probes;
    MemoryUserDefaults defaults;
    RecordingLog log;
    ManualExecutor mainThread;
    ManualExecutor schedulerThread;
    FakeNotificationCenter center{mainThread};
    ManualClock clock; // destroyed first: what waits for it lets go of all the above
    std::shared_ptr<MemoryWatcher> watcher =
        make(std::make_shared<NotificationManager>(center, log));
};

TEST_F(MemoryWatcherTest, StartsWithSwapAndASampleAtOnceAndTheFirstSwapWorkSoonAfter) {
    EXPECT_EQ(watcher->maxArrayLength(), 0);
    EXPECT_FALSE(watcher->isRunning());
    EXPECT_FALSE(watcher->periodicTask().has_value());
    probes.swap = SwapUsage{.total = 300, .used = 100, .free = 200};
    start();
    EXPECT_EQ(watcher->maxArrayLength(), 100);
    EXPECT_TRUE(watcher->isRunning());
    EXPECT_TRUE(watcher->periodicTask().has_value());
    EXPECT_NE(watcher->schedulerWithCallback(), nullptr);
    EXPECT_EQ(watcher->physical(), physical);
    EXPECT_EQ(watcher->memoryPressure(), 40);
    EXPECT_THAT(watcher->memoryPressureArray(), ElementsAre(MemoryPressureItem{40, 1000.5}));
    EXPECT_THAT(watcher->swapUsedArray(),
                ElementsAre(SwapItem{100, 1000.5}, SwapItem{100, 1000.5}));
    EXPECT_EQ(watcher->swapTotal(), 300U);
    EXPECT_EQ(watcher->swapUsed(), 100U);
    EXPECT_EQ(watcher->swapFree(), 200U);
    EXPECT_EQ(watcher->warningLevel(), WarningLevel::low) << "classified by the first swap work";
    EXPECT_EQ(log.takeLines().front(), "info file readData(): No data available yet...");

    pass(59.9);
    EXPECT_THAT(watcher->swapUsedArray(), SizeIs(2));
    pass(0.1);
    EXPECT_THAT(watcher->swapUsedArray(), SizeIs(3));
}

TEST_F(MemoryWatcherTest, ReadsThePollingIntervalAnewBeforeEveryPause) {
    start();
    std::size_t samples = 1;
    const auto expectPause = [&](double seconds) {
        pass(seconds - 0.01);
        EXPECT_THAT(watcher->memoryPressureArray(), SizeIs(samples)) << seconds;
        pass(0.01);
        EXPECT_THAT(watcher->memoryPressureArray(), SizeIs(++samples)) << seconds;
    };
    double running = 1; // nothing stored
    for (const auto& [stored, next] : {std::pair<DefaultsValue, double>{10.0, 10},
                                       {0.2, 1},
                                       {4.0, 4},
                                       {std::numeric_limits<double>::quiet_NaN(), 1},
                                       {std::string("often"), 1}}) {
        defaults.set("_pollingInterval", stored);
        expectPause(running); // begun before the change
        expectPause(next);
        running = next;
    }
}

TEST_F(MemoryWatcherTest, TakesOneSampleAfterTheMachineSlept) {
    start();
    pass(3600);
    EXPECT_THAT(watcher->memoryPressureArray(), SizeIs(2));
    EXPECT_THAT(watcher->swapUsedArray(), SizeIs(3));
    EXPECT_EQ(watcher->memoryPressureArray().back().timestamp, 4600.5);
}

TEST_F(MemoryWatcherTest, KeepsTheNewestHundredSamplesOfEachKind) {
    storeHistory(150);
    watcher->readData();
    EXPECT_THAT(watcher->memoryPressureArray(), SizeIs(150)) << "loaded in full";
    EXPECT_THAT(watcher->swapUsedArray(), SizeIs(150));
    start();
    EXPECT_THAT(watcher->memoryPressureArray(), SizeIs(100));
    EXPECT_EQ(watcher->memoryPressureArray().front(), (MemoryPressureItem{51, 0.5}));
    EXPECT_EQ(watcher->memoryPressureArray().back().value, 40);
    EXPECT_THAT(watcher->swapUsedArray(), SizeIs(100));
    EXPECT_EQ(watcher->swapUsedArray().front(), (SwapItem{520, 0.25}));
    pass(1);
    EXPECT_THAT(watcher->memoryPressureArray(), SizeIs(100));
    EXPECT_EQ(watcher->memoryPressureArray().front(), (MemoryPressureItem{52, 0.5}));
}

TEST_F(MemoryWatcherTest, ShowsTheFiguresInOrderWithSwapTotalOnlyWhileSwapIsInUse) {
    start(); // 12 of 16 GB in use
    EXPECT_EQ(watcher->usedMemoryPercentage(), 75.0);
    const std::vector<std::pair<std::string, std::uint64_t>> expected{
        {"Physical Memory", physical},      {"Memory Used", 12884901888},
        {"App Memory", 4294967296},         {"Wired Memory", 4294967296},
        {"Compressed", 4294967296},         {"Free Memory", 4294967296},
        {"Cached Files", 262144 * 4096ULL}, {"Swap Used", 0}};
    EXPECT_THAT(figures(), testing::ElementsAreArray(expected));
    EXPECT_THAT(watcher->showItems(),
                testing::Each(testing::Field(&ShowItem::color, colours::primary)));

    const auto before = watcher->showItems();
    probes.swap = SwapUsage{.total = 300, .used = 100, .free = 200};
    watcher->updateMemoryUsage();
    EXPECT_EQ(figures().back().first, "Swap Used") << "swap is not read by this step";
    EXPECT_NE(watcher->showItems().front(), before.front()) << "a new identity";
    watcher->updateSwapUsage();
    watcher->updateMemoryUsage();
    EXPECT_THAT(figures(), SizeIs(9));
    EXPECT_EQ(figures()[7].second, 100U);
    EXPECT_EQ(figures()[8], (std::pair<std::string, std::uint64_t>("Swap Total", 300)));
}

TEST_F(MemoryWatcherTest, ShowsNoFreeMemoryWhereMoreIsUsedThanThereIs) {
    probes.physical = 8589934592;
    start();
    EXPECT_EQ(watcher->usedMemoryPercentage(), 150.0);
    EXPECT_EQ(figures()[5].second, 0U);
    probes.physical = std::nullopt;
    watcher = make(nullptr);
    log.takeLines();
    start();
    EXPECT_THAT(log.takeLines(),
                testing::Contains("error general startPeriodicTask(): Failed to retrieve total "
                                  "physical memory."));
    EXPECT_EQ(watcher->usedMemoryPercentage(), 0.0);
    EXPECT_EQ(figures()[0].second, 0U);
    EXPECT_EQ(figures()[5].second, 0U);
}

TEST_F(MemoryWatcherTest, KeepsWhatItHasWhereAReadingFails) {
    useSwap(5);
    start();
    log.takeLines();
    const auto items = watcher->showItems();
    for (const auto percentage :
         {std::optional<std::int64_t>(), std::optional(std::numeric_limits<std::int64_t>::min())}) {
        probes.freePercentage = percentage;
        sampleOnce();
        EXPECT_EQ(watcher->memoryPressure(), 40);
        EXPECT_THAT(watcher->memoryPressureArray(), SizeIs(1));
        EXPECT_NE(watcher->showItems(), items) << "memory use is read nevertheless";
        EXPECT_THAT(log.takeLines(),
                    ElementsAre("error general performWork(): Cannot read the free memory "
                                "percentage"));
    }

    const auto latest = watcher->showItems();
    probes.counters = std::nullopt;
    probes.freePercentage = 101;
    sampleOnce();
    EXPECT_EQ(watcher->memoryPressure(), -1);
    EXPECT_EQ(watcher->showItems(), latest);
    EXPECT_EQ(watcher->usedMemoryPercentage(), 75.0);
    EXPECT_THAT(log.takeLines(), IsEmpty());

    probes.swap = std::nullopt;
    watcher->updateSwapUsage();
    EXPECT_EQ(watcher->swapTotal() + watcher->swapUsed() + watcher->swapFree(), 0U);
    EXPECT_EQ(watcher->swapUsedArray().back().value, 0);
    useSwap(std::numeric_limits<std::uint64_t>::max());
    watcher->updateSwapUsage();
    EXPECT_EQ(watcher->swapUsedArray().back().value, std::numeric_limits<std::int64_t>::max());
}

TEST_F(MemoryWatcherTest, TellsBeforeEveryAssignmentAppendAndTrim) {
    storeHistory(99);
    start();
    std::vector<std::size_t> lengths;
    std::vector<std::int64_t> pressures;
    const auto subscription = watcher->objectWillChange([&] {
        lengths.push_back(watcher->memoryPressureArray().size());
        pressures.push_back(watcher->memoryPressure());
    });
    probes.freePercentage = 10;
    probes.counters = std::nullopt;
    sampleOnce();
    EXPECT_THAT(pressures, ElementsAre(40, 90, 90)) << "value, append, trim; each before it";
    EXPECT_THAT(lengths, ElementsAre(100, 100, 101));
    lengths.clear();
    probes.counters = FakeProbes().counters;
    watcher->updateMemoryUsage();
    EXPECT_THAT(lengths, SizeIs(1 + 1 + 8)) << "percentage, emptied, one by one";
    lengths.clear();
    watcher->updateSwapUsage();
    EXPECT_THAT(lengths, SizeIs(3 + 2)) << "three figures, append, trim";
    lengths.clear();
    watcher->readData();
    EXPECT_THAT(lengths, SizeIs(2));
}

TEST_F(MemoryWatcherTest, StopsSamplingWhenCancelledWhileSwapWorkGoesOn) {
    start();
    TaskHandle sampling = watcher->periodicTask().value();
    sampling.cancel();
    pass(60);
    EXPECT_FALSE(watcher->isRunning());
    EXPECT_THAT(watcher->memoryPressureArray(), SizeIs(1));
    EXPECT_THAT(watcher->swapUsedArray(), SizeIs(3));
}

TEST_F(MemoryWatcherTest, ReplacesBothLoopsWhenStartedAgain) {
    start();
    start();
    EXPECT_TRUE(watcher->isRunning()) << "not undone by the end of the loop before";
    EXPECT_THAT(watcher->memoryPressureArray(), SizeIs(1)) << "loaded anew, then sampled";
    pass(1);
    EXPECT_THAT(watcher->memoryPressureArray(), SizeIs(2));
    pass(59);
    EXPECT_THAT(watcher->swapUsedArray(), SizeIs(3));
    EXPECT_EQ(clock.pendingAlarms(), 2U);
}

TEST_F(MemoryWatcherTest, LivesAsLongAsItsLoopsAndNoLonger) {
    const std::weak_ptr<MemoryWatcher> watched = watcher;
    start();
    watcher.reset();
    pass(60);
    EXPECT_EQ(watched.lock()->swapUsedArray().size(), 3U);
    clock.dropAlarms();
    EXPECT_TRUE(watched.expired());
}

TEST_F(MemoryWatcherTest, LoadsWhatItSavedUnderAnIdentityThatIsNewEachTime) {
    start();
    wallClock = 1753000000.1234567;
    sampleOnce();
    watcher->updateSwapUsage();
    watcher->writeData();
    const auto first = defaults.dataForKey(historyKey).value();
    watcher->writeData();
    const auto second = defaults.dataForKey(historyKey).value();
    constexpr std::ptrdiff_t identityEnd = 7 + 36; // {"id":"..."
    EXPECT_NE(first, second);
    EXPECT_TRUE(std::equal(first.begin() + identityEnd, first.end(), second.begin() + identityEnd,
                           second.end()));

    const auto other = make(nullptr);
    log.takeLines();
    other->readData();
    EXPECT_EQ(other->memoryPressureArray(), watcher->memoryPressureArray());
    EXPECT_EQ(other->swapUsedArray(), watcher->swapUsedArray());
    EXPECT_THAT(other->swapUsedArray(), SizeIs(3));
    EXPECT_THAT(log.takeLines(), IsEmpty());
}

TEST_F(MemoryWatcherTest, StartsEmptyFromAHistoryItCannotReadAndLeavesItStored) {
    storeHistory(3);
    watcher->readData();
    ASSERT_THAT(watcher->swapUsedArray(), SizeIs(3));
    const std::string text = R"({"id":"0188AD5E-0000-4000-8000-00000000ABCD",)"
                             R"("memoryPressureArray":[{"value":1,"timestamp":2}]})";
    const Data damaged(text.begin(), text.end());
    defaults.set(historyKey, damaged);
    watcher->readData();
    EXPECT_THAT(watcher->memoryPressureArray(), IsEmpty());
    EXPECT_THAT(watcher->swapUsedArray(), IsEmpty());
    EXPECT_THAT(log.takeLines(), ElementsAre(testing::StartsWith("error file readData(): ")));
    EXPECT_EQ(defaults.dataForKey(historyKey), damaged);
}

TEST_F(MemoryWatcherTest, LeavesTheSavedHistoryAloneWhenItCannotSave) {
    start();
    watcher->writeData();
    const auto saved = defaults.dataForKey(historyKey);
    wallClock = std::numeric_limits<double>::quiet_NaN();
    sampleOnce();
    log.takeLines();
    watcher->writeData();
    EXPECT_THAT(log.takeLines(), ElementsAre("error file writeData(): Could not save data"));
    EXPECT_EQ(defaults.dataForKey(historyKey), saved);
}

TEST_F(MemoryWatcherTest, AlertsByTheTransitionOfTheLevelAtEachSwapWork) {
    using enum WarningLevel;
    struct Range {
        std::uint64_t used;
        WarningLevel level;
        const char* subtitle;
    };
    const std::vector<Range> ranges{{0, none, nullptr},
                                    {1048576, low, "Swap memory usage"},
                                    {physical / 5 + 1, warn, "High swap usage"},
                                    {physical + 1, high, "Very high swap usage"}};
    start();
    for (const auto& previous : ranges) {
        for (const auto& next : ranges) {
            useSwap(previous.used);
            pass(60);
            ASSERT_EQ(watcher->warningLevel(), previous.level);
            center.requests.clear();
            useSwap(next.used);
            pass(60);
            EXPECT_EQ(watcher->warningLevel(), next.level);
            const bool silent = next.level == none || (previous.level == low && next.level == low);
            ASSERT_THAT(center.requests, SizeIs(silent ? 0 : 1));
            if (!silent) {
                EXPECT_EQ(center.requests[0].title, "Tidewell");
                EXPECT_EQ(center.requests[0].subtitle, next.subtitle);
            }
        }
    }
}

TEST_F(MemoryWatcherTest, ReadsTheAmountOfAnAlertWhenItIsComposed) {
    start();
    useSwap(physical);
    watcher->updateSwapUsage();
    watcher->checkSwapUsage();
    EXPECT_THAT(center.requests, IsEmpty()) << "posted by a task of its own";
    useSwap(2048);
    watcher->updateSwapUsage();
    settle();
    ASSERT_THAT(center.requests, SizeIs(1));
    EXPECT_EQ(center.requests[0].body, "Your computer uses swap memory (" + byteText(2048) + ").");
}

TEST_F(MemoryWatcherTest, PublishesTheLevelAtEachCheckExceptOneThatStaysLow) {
    start();
    int changes = 0;
    const auto subscription = watcher->objectWillChange([&] { ++changes; });
    for (const auto& [used, expected] : {std::pair{std::uint64_t{0}, 1},
                                         {1048576, 1},
                                         {1048576, 0},
                                         {physical, 1},
                                         {physical, 1}}) {
        useSwap(used);
        watcher->updateSwapUsage();
        changes = 0;
        watcher->checkSwapUsage();
        EXPECT_EQ(changes, expected) << used;
    }
}

TEST_F(MemoryWatcherTest, ClassifiesWithoutAManagerAndNotAtAllWithoutPhysicalMemory) {
    watcher = make(nullptr);
    useSwap(physical + 1);
    start();
    EXPECT_EQ(watcher->warningLevel(), WarningLevel::high);
    probes.physical = std::nullopt;
    watcher = make(std::make_shared<NotificationManager>(center, log));
    useSwap(5000000000);
    start();
    EXPECT_EQ(watcher->warningLevel(), WarningLevel::none);
    EXPECT_THAT(center.requests, IsEmpty());
}

} // namespace
} // namespace tidewell
