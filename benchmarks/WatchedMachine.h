#pragma once

#include "benchmarks/Measuring.h"
#include "model/memory/MemoryWatcher.h"
#include "tests/fakes/ManualClock.h"
#include "tests/fakes/ManualExecutor.h"
#include "tests/fakes/MemoryUserDefaults.h"

namespace tidewell {

/// A watcher that samples in virtual time, once a second. `probes` must outlive it.
struct WatchedMachine {
    explicit WatchedMachine(SystemProbes& probes)
        : watcher(std::make_shared<MemoryWatcher>(
              MemoryWatcher::Environment{.probes = probes,
                                         .defaults = defaults,
                                         .mainThread = mainThread,
                                         .schedulerThread = schedulerThread,
                                         .clock = clock,
                                         .log = log,
                                         .secondsSince1970 = [this] { return timestamp += 1; }},
              nullptr)) {
        watcher->startPeriodicTask();
        settle(mainThread, schedulerThread);
    }
    WatchedMachine(const WatchedMachine&) = delete;
    WatchedMachine& operator=(const WatchedMachine&) = delete;

    void step(int count = 1) {
        for (int i = 0; i < count; ++i) {
            clock.advance(1);
            settle(mainThread, schedulerThread);
        }
    }

    SilentLog log;
    MemoryUserDefaults defaults;
    ManualExecutor mainThread;
    ManualExecutor schedulerThread;
    ManualClock clock;
    double timestamp = 0;
    std::shared_ptr<MemoryWatcher> watcher;
};

} // namespace tidewell
