#include "model/processes/linux/LinuxApplicationSource.h"

#include "base/runtime/Waiting.h"
#include "base/text/UserLocale.h"
#include "base/values/FileDescriptor.h"
#include "model/processes/linux/ProcessTable.h"

#include <algorithm>
#include <fcntl.h>
#include <unistd.h>

namespace tidewell {

/// Shared with the worker's jobs, one of which may still be running when the source is gone.
struct LinuxApplicationSource::Knowledge {
    Knowledge(const Settings& settings, Log& log)
        : processes(open(settings.processFolder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC))
        , table(processes.get(), settings.user,
                std::make_unique<DesktopEntries>(settings.dataFolders,
                                                 entryLanguages(settings.locale), log)) {}

    FileDescriptor processes;
    ProcessTable table;                 // the worker's
    std::vector<ResidentMemory> memory; // the main thread's
};

LinuxApplicationSource::Settings LinuxApplicationSource::usualSettings() {
    return {.dataFolders = usualDataFolders(),
            .locale = userLocale(LocaleCategory::messages),
            .user = geteuid()};
}

LinuxApplicationSource::LinuxApplicationSource(const Settings& settings, Executor& worker, Log& log)
    : knowledge_(std::make_shared<Knowledge>(settings, log))
    , worker_(worker) {}

Task<ApplicationList> LinuxApplicationSource::runningApplications() {
    return look(knowledge_, &worker_);
}

Task<ApplicationList> LinuxApplicationSource::look(std::shared_ptr<Knowledge> knowledge,
                                                   Executor* worker) {
    ProcessTable::Look result;
    auto work = runOn(*worker, [knowledge, &result] { result = knowledge->table.look(); });
    co_await work;
    knowledge->memory = std::move(result.memory);
    co_return result.applications;
}

std::optional<std::uint64_t> LinuxApplicationSource::residentMemory(ProcessIdentifier process) {
    const auto& memory = knowledge_->memory;
    const auto found = std::ranges::lower_bound(memory, process, {}, &ResidentMemory::process);
    return found != memory.end() && found->process == process ? std::optional(found->bytes)
                                                              : std::nullopt;
}

} // namespace tidewell
