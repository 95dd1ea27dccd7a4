#include "model/processes/MemoryManager.h"

#include "model/preferences/StoredPreferences.h"

#include <algorithm>
#include <string>
#include <utility>

namespace tidewell {

MemoryManager::MemoryManager(Environment environment)
    : environment_(environment) {}

void MemoryManager::startPeriodicTask() {
    stopPeriodicTask();
    logInfo(environment_.log, "MemoryManager started", "startPeriodicTask()");
    periodicTask_ = OwnedTask(environment_.mainThread, survey(shared_from_this()));
}

void MemoryManager::stopPeriodicTask() {
    if (!allProcesses().empty()) {
        logInfo(environment_.log,
                "MemoryManager reset [" + std::to_string(allProcesses().size()) + "]",
                "stopPeriodicTask()");
    }
    periodicTask_.cancel();
    environment_.applications.rest();
    allProcesses_ = std::vector<DisplayContainer>();
}

Task<void> MemoryManager::survey(Self self) {
    for (;;) {
        co_await getAllProcessesMemoryUsage(self);
        co_await sleepFor(self->environment_.clock,
                          pollingIntervalForLoops(self->environment_.defaults));
    }
}

Task<void> MemoryManager::getAllProcessesMemoryUsage() {
    return getAllProcessesMemoryUsage(shared_from_this());
}

Task<void> MemoryManager::getAllProcessesMemoryUsage(Self self) {
    ApplicationList applications = co_await self->environment_.applications.runningApplications();

    // Pointers are sorted, which are moved faster than rows.
    std::vector<RunningApplication*> readable;
    for (RunningApplication& application : applications) {
        if (!application.icon) {
            logInfo(self->environment_.log,
                    "No icon available for " + application.localizedName.value_or(""),
                    "getAllProcessesMemoryUsage()");
        }
        if (application.memory) {
            readable.push_back(&application);
        }
    }
    std::ranges::stable_sort(readable, std::greater(), &RunningApplication::memory);

    std::vector<DisplayContainer> rows;
    rows.reserve(readable.size());
    for (RunningApplication* const application : readable) {
        rows.push_back({.showItem = {.label = std::move(application->localizedName)
                                                  .value_or("No localize name available"),
                                     .value = *application->memory,
                                     .color = colours::primary},
                        .image = std::move(application->icon),
                        .usage = std::move(application->usage)});
    }
    self->allProcesses_ = std::move(rows);
}

} // namespace tidewell
