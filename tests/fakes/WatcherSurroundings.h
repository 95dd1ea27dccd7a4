#pragma once

#include "model/memory/MemoryWatcher.h"
#include "tests/fakes/FakeNotificationCenter.h"
#include "tests/fakes/FakeProbes.h"
#include "tests/fakes/UpdaterSurroundings.h"

namespace tidewell {

/// A watcher of a machine whose figures and clocks the test sets.
class WatcherSurroundings : public UpdaterSurroundings {
protected:
    std::shared_ptr<MemoryWatcher> makeWatcher() {
        return std::make_shared<MemoryWatcher>(
            MemoryWatcher::Environment{
                .probes = probes,
                .defaults = defaults,
                .mainThread = mainThread,
                .schedulerThread = worker,
                .clock = clock,
                .log = log,
                .secondsSince1970 = [this] { return startOfTime + clock.seconds(); }},
            notificationManager);
    }

    double startOfTime = 1000.5; ///< when the virtual clock began, in seconds since 1970
    FakeProbes probes;
    FakeNotificationCenter center{mainThread};
    std::shared_ptr<NotificationManager> notificationManager =
        std::make_shared<NotificationManager>(center, log);
    std::shared_ptr<MemoryWatcher> watcher = makeWatcher();
};

} // namespace tidewell
