#include "processes/linux/LinuxApplicationSource.h"

#include "platform/runtime/Waiting.h"
#include "processes/linux/ProcessTable.h"
#include "support/UserLocale.h"

#include <array>
#include <charconv>
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
    ProcessTable table; // the worker's
};

LinuxApplicationSource::Settings LinuxApplicationSource::usualSettings() {
    return {.dataFolders = usualDataFolders(),
            .locale = userLocale(LocaleCategory::messages),
            .user = geteuid()};
}

LinuxApplicationSource::LinuxApplicationSource(const Settings& settings, Executor& worker, Log& log)
    : knowledge_(std::make_shared<Knowledge>(settings, log))
    , worker_(worker)
    , pageSize_(static_cast<std::uint64_t>(sysconf(_SC_PAGESIZE))) {}

Task<ApplicationList> LinuxApplicationSource::runningApplications() {
    return look(knowledge_, &worker_);
}

Task<ApplicationList> LinuxApplicationSource::look(std::shared_ptr<Knowledge> knowledge,
                                                   Executor* worker) {
    ApplicationList applications;
    auto work =
        runOn(*worker, [knowledge, &applications] { applications = knowledge->table.look(); });
    co_await work;
    co_return applications;
}

std::optional<std::uint64_t> LinuxApplicationSource::residentMemory(ProcessIdentifier process) {
    constexpr std::string_view file = "/statm";
    std::array<char, 32> path{};
    char* const end = std::to_chars(path.data(), path.data() + 16, process).ptr;
    file.copy(end, file.size());

    const FileDescriptor statm(
        openat(knowledge_->processes.get(), path.data(), O_RDONLY | O_CLOEXEC));
    std::array<char, 256> text;
    const auto size = read(statm.get(), text.data(), text.size());
    if (size <= 0) {
        return std::nullopt;
    }
    const auto pages = residentPages({text.data(), static_cast<std::size_t>(size)});
    return pages ? std::optional(*pages * pageSize_) : std::nullopt;
}

} // namespace tidewell
