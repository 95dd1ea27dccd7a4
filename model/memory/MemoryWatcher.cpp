#include "model/memory/MemoryWatcher.h"

#include "base/values/Difference.h"
#include "model/memory/DataContainerJson.h"
#include "model/memory/Translatable.h"
#include "model/memory/probes/MemoryBreakdown.h"
#include "model/preferences/StoredPreferences.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace tidewell {

MemoryWatcher::MemoryWatcher(Environment environment,
                             std::shared_ptr<NotificationManager> notificationManager)
    : environment_(std::move(environment))
    , notificationManager_(std::move(notificationManager)) {}

void MemoryWatcher::startPeriodicTask() {
    maxArrayLength_ = 100;
    readData();

    periodicTask_.cancel();

    if (const auto physical = environment_.probes.getPhysicalMemory()) {
        physical_ = *physical;
    } else {
        logError(environment_.log, "Failed to retrieve total physical memory.",
                 "startPeriodicTask()");
    }
    updateSwapUsage();
    startScheduler();

    periodicTask_ = OwnedTask(environment_.mainThread, sample(shared_from_this()));
}

void MemoryWatcher::startScheduler() {
    const auto scheduler =
        std::make_shared<TaskScheduler>(environment_.schedulerThread, environment_.mainThread,
                                        environment_.clock, [self = shared_from_this()] {
                                            self->updateSwapUsage();
                                            self->checkSwapUsage();
                                        });
    schedulerWithCallback_ = scheduler->start();
}

Task<void> MemoryWatcher::sample(Self self) {
    for (;;) {
        self->performWork();
        co_await sleepFor(self->environment_.clock,
                          pollingIntervalForLoops(self->environment_.defaults));
    }
}

void MemoryWatcher::performWork() {
    const auto free = environment_.probes.getFreeMemoryPercentage();
    std::int64_t pressure = 0;
    // A percentage without a difference to 100 is as good as none.
    if (free && !__builtin_sub_overflow(std::int64_t{100}, *free, &pressure)) {
        memoryPressure_ = pressure;
        append(memoryPressureArray_, pressure);
    } else {
        logError(environment_.log, "Cannot read the free memory percentage", "performWork()");
    }
    updateMemoryUsage();
}

void MemoryWatcher::updateMemoryUsage() {
    // Memory is plugged in, balloons grow, and a container's limit is raised.
    physical_ = environment_.probes.getPhysicalMemory().value_or(physical_);
    const auto counters = environment_.probes.getMemoryCounters();
    if (!counters) {
        return;
    }
    const MemoryBreakdown breakdown = breakdownOf(*counters);
    if (physical_ != 0) {
        usedMemoryPercentage_ =
            static_cast<double>(breakdown.usedMemory) / static_cast<double>(physical_) * 100.0;
    }

    // In place: the list's memory serves again and again.
    showItems_.mutate([](auto& items) { items.clear(); });
    const auto show = [this](const char* label, std::uint64_t value) {
        showItems_.mutate([label, value](auto& items) {
            items.push_back({.label = label, .value = value, .color = colours::primary});
        });
    };
    show(translatable("MemoryWatcher", "Physical Memory"), physical_);
    show(translatable("MemoryWatcher", "Memory Used"), breakdown.usedMemory);
    show(translatable("MemoryWatcher", "App Memory"), breakdown.appMemory);
    show(translatable("MemoryWatcher", "Wired Memory"), breakdown.wiredMemory);
    show(translatable("MemoryWatcher", "Compressed"), breakdown.compressedMemory);
    show(translatable("MemoryWatcher", "Free Memory"),
         differenceOrZero(physical_, breakdown.usedMemory));
    show(translatable("MemoryWatcher", "Cached Files"), breakdown.cachedFiles);
    show(translatable("MemoryWatcher", "Swap Used"), swapUsed());
    if (swapUsed() != 0) {
        show(translatable("MemoryWatcher", "Swap Total"), swapTotal());
    }
}

void MemoryWatcher::updateSwapUsage() {
    const SwapUsage usage = environment_.probes.getSwapUsage().value_or(SwapUsage{});
    swapTotal_ = usage.total;
    swapUsed_ = usage.used;
    swapFree_ = usage.free;
    constexpr std::uint64_t largest = std::numeric_limits<std::int64_t>::max();
    append(swapUsedArray_, static_cast<std::int64_t>(std::min(usage.used, largest)));
}

void MemoryWatcher::checkSwapUsage() {
    if (physical_ == 0) {
        return;
    }
    const WarningLevel level = classifySwap(physical_, swapUsed());
    if (level == WarningLevel::low && warningLevel() == WarningLevel::low) {
        return; // the upper levels alert at every check, the low one when it is entered
    }
    warningLevel_ = level;
    if (level != WarningLevel::none) {
        spawn(environment_.mainThread, post(shared_from_this(), level));
    }
}

Task<void> MemoryWatcher::post(Self self, WarningLevel level) {
    const auto manager = self->notificationManager_;
    if (manager == nullptr) {
        co_return;
    }
    SwapAlertText text = textOf(level, self->swapUsed(), self->environment_.translated);
    self.reset(); // not held while the desktop takes its time
    co_await manager->show(std::move(text.title), std::move(text.subtitle), std::move(text.body));
}

void MemoryWatcher::writeData() {
    auto document = encodeDataContainer(
        {.memoryPressureArray = memoryPressureArray(), .swapUsedArray = swapUsedArray()});
    if (!document) {
        logError(environment_.log, "Could not save data", "writeData()", "file");
        return;
    }
    write(environment_.defaults, preferences::dataContainer, std::move(*document));
}

void MemoryWatcher::readData() {
    constexpr auto function = "readData()";
    DataContainer loaded;
    if (const auto document = stored(environment_.defaults, preferences::dataContainer)) {
        auto decoded = decodeDataContainer(*document);
        if (!decoded) {
            logError(environment_.log, decoded.error().description(), function, "file");
        } else {
            loaded = std::move(*decoded);
        }
    } else {
        logInfo(environment_.log, "No data available yet...", function, "file");
    }
    memoryPressureArray_ = std::move(loaded.memoryPressureArray);
    swapUsedArray_ = std::move(loaded.swapUsedArray);
}

template <typename Item>
void MemoryWatcher::append(Published<std::vector<Item>>& history, std::int64_t value) {
    const Item item{value, environment_.secondsSince1970()};
    history.mutate([&item](auto& items) { items.push_back(item); });
    const auto bound = static_cast<std::size_t>(maxArrayLength_);
    if (history.get().size() > bound) {
        history.mutate([bound](auto& items) {
            const auto excess = static_cast<std::ptrdiff_t>(items.size() - bound);
            items.erase(items.begin(), items.begin() + excess);
        });
    }
}

} // namespace tidewell
