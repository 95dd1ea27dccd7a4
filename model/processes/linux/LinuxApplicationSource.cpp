#include "model/processes/linux/LinuxApplicationSource.h"

#include "base/runtime/Waiting.h"
#include "base/text/UserLocale.h"
#include "base/values/ReadFile.h"
#include "model/processes/linux/ApplicationGroups.h"
#include "model/processes/linux/MemoryShares.h"
#include "model/processes/linux/ProcessFiles.h"

#include <cstdint>
#include <limits>
#include <map>
#include <unordered_map>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

namespace tidewell {

/// The user's processes with their names and icons, kept from one look to the next. One thread.
///
/// A process is known again by the inode of its folder in /proc; the kernel may make a new one for
/// an old process, which is then known by its start time. So a look at what has not changed costs
/// the list of the folder, and one small file of each process. What a process has become meanwhile
/// by exec() is seen at once by the size of its code, or else within `turns` looks.
class LinuxApplicationSource::ProcessTable {
public:
    /// `user` whose processes are wanted.
    ProcessTable(const std::string& processFolder, std::uint32_t user,
                 std::unique_ptr<DesktopEntries> entries);

    /// The applications that run now.
    ApplicationList look();

    /// Forgets all processes: the next look sees them as they are then.
    void forget();

private:
    static constexpr std::uint64_t turns = 5;

    void update();
    bool readMemory(Process& process);
    bool isStill(Process& process, const ProcessFolder::Listed& listed);
    RunningApplication describe(const ApplicationGroup& group);
    ThemeIcon withContent(const ThemeIcon& icon);

    ProcessFolder folder_;
    std::uint32_t user_;
    std::unique_ptr<DesktopEntries> entries_;
    std::uint64_t pageSize_;
    ThemeIcon executable_{ThemeIcon::executable};
    std::unordered_map<std::string, ThemeIcon> iconFiles_; // by path
    std::vector<Process> known_;                           // by id
    std::map<ProcessIdentifier, std::uint64_t> departed_; // by leader: what those that ended shared
    MemoryShares shares_;
    std::uint64_t look_ = 0; // numbers them
};

LinuxApplicationSource::Settings LinuxApplicationSource::usualSettings() {
    return {.dataFolders = usualDataFolders(),
            .locale = userLocale(LocaleCategory::messages),
            .user = geteuid()};
}

LinuxApplicationSource::LinuxApplicationSource(const Settings& settings, Executor& worker, Log& log)
    : table_(std::make_shared<ProcessTable>(
          settings.processFolder, settings.user,
          std::make_unique<DesktopEntries>(settings.dataFolders, entryLanguages(settings.locale),
                                           log)))
    , worker_(worker) {}

Task<ApplicationList> LinuxApplicationSource::runningApplications() {
    return look(table_, &worker_);
}

Task<ApplicationList> LinuxApplicationSource::look(std::shared_ptr<ProcessTable> table,
                                                   Executor* worker) {
    ApplicationList applications;
    auto work = runOn(*worker, [table, &applications](const std::stop_token& stop) {
        if (!stop.stop_requested()) { // while others were looked at
            applications = table->look();
        }
    });
    co_await work;
    co_return applications;
}

void LinuxApplicationSource::rest() {
    worker_.post([table = table_] { table->forget(); });
}

LinuxApplicationSource::ProcessTable::ProcessTable(const std::string& processFolder,
                                                   std::uint32_t user,
                                                   std::unique_ptr<DesktopEntries> entries)
    : folder_(processFolder)
    , user_(user)
    , entries_(std::move(entries))
    , pageSize_(static_cast<std::uint64_t>(sysconf(_SC_PAGESIZE))) {}

void LinuxApplicationSource::ProcessTable::forget() {
    known_ = {};
    shares_ = {};
    iconFiles_.clear();
}

ApplicationList LinuxApplicationSource::ProcessTable::look() {
    ++look_;
    if (entries_->refresh()) {
        iconFiles_.clear();
        for (Process& process : known_) {
            process.findEntries(*entries_);
        }
    }
    update();
    const auto groups = groupByApplication(known_);
    shares_.refresh(folder_, known_, groups, departed_);
    ApplicationList applications;
    applications.reserve(groups.size());
    for (const ApplicationGroup& group : groups) {
        applications.push_back(describe(group));
    }
    return applications;
}

/// Takes up what is new or has changed, and lets go of what has ended.
void LinuxApplicationSource::ProcessTable::update() {
    const auto listed = folder_.list();
    const auto upTime = folder_.upTime();
    departed_.clear();
    std::vector<Process> now;
    now.reserve(listed.size());
    auto next = known_.begin();
    const auto letGoBefore = [&](ProcessIdentifier id) {
        for (; next != known_.end() && next->id < id; ++next) {
            departed_[next->leader] += next->memory.shared();
        }
    };
    for (const auto& process : listed) {
        letGoBefore(process.id);
        Process* const old = next != known_.end() && next->id == process.id ? &*next : nullptr;
        if (old != nullptr && isStill(*old, process)) {
            now.push_back(std::move(*next++));
        } else if (auto learnt = learnProcess(folder_, process, user_, upTime)) {
            if (old != nullptr && old->startTime == learnt->startTime &&
                old->executable == learnt->executable && old->commandHash == learnt->commandHash) {
                learnt->memory = old->memory;
                learnt->leader = old->leader;
                ++next;
            }
            if (learnt->isWanted) {
                learnt->findEntries(*entries_);
                readMemory(*learnt);
            }
            now.push_back(*std::move(learnt));
        }
    }
    letGoBefore(std::numeric_limits<ProcessIdentifier>::max());
    known_ = std::move(now);
}

/// Returns whether it runs the same code as before.
bool LinuxApplicationSource::ProcessTable::readMemory(Process& process) {
    const auto text = folder_.read(process.id, "statm");
    const auto pages = text ? parseProcessPages(*text) : std::nullopt;
    process.memory.resident = pages ? std::optional(pages->resident * pageSize_) : std::nullopt;
    process.memory.mapped = pages ? pages->mapped * pageSize_ : 0;
    const std::uint64_t code = pages ? pages->code : 0;
    return std::exchange(process.memory.codePages, code) == code;
}

bool LinuxApplicationSource::ProcessTable::isStill(Process& process,
                                                   const ProcessFolder::Listed& listed) {
    const bool isDue = static_cast<std::uint64_t>(process.id) % turns == look_ % turns;
    return process.inode == listed.inode && process.isSettled &&
           (!process.isWanted || readMemory(process)) && (!isDue || isUnchanged(folder_, process));
}

RunningApplication LinuxApplicationSource::ProcessTable::describe(const ApplicationGroup& group) {
    auto usage = std::make_shared<ApplicationUsage>();
    usage->leader = group.leader->id;
    std::optional<std::uint64_t> memory;
    std::uint64_t largest = 0;
    bool isShareKnown = false;
    for (const Process* process : group.members) {
        const ProcessMemory& its = process->memory;
        if (!its.resident) {
            continue;
        }
        const std::uint64_t estimate = its.estimate();
        memory = memory.value_or(0) + estimate;
        ++usage->processes;
        usage->resident += *its.resident;
        usage->swapped += its.swapped;
        if (usage->processes == 1 || estimate > largest) {
            largest = estimate;
            usage->largest = process->id;
            usage->largestCommand = process->commandLine;
        }
        isShareKnown = isShareKnown || its.proportional;
    }
    usage->proportional = isShareKnown ? memory : std::nullopt;
    const DesktopEntry* const entry = group.entry;
    const std::string& own = group.leader->name;
    return {.localizedName = entry != nullptr && entry->name ? entry->name
                             : own.empty()                   ? std::nullopt
                                                             : std::optional(own),
            .icon = entry != nullptr && entry->icon ? withContent(*entry->icon) : executable_,
            .memory = memory,
            .usage = std::move(usage)};
}

/// Read here, where a file system that hangs keeps nobody else waiting.
ThemeIcon LinuxApplicationSource::ProcessTable::withContent(const ThemeIcon& icon) {
    constexpr std::size_t largest = std::size_t{1} << 20U;
    if (!icon.isFile()) {
        return icon;
    }
    const auto [known, isNew] = iconFiles_.try_emplace(icon.name(), icon);
    if (isNew) {
        if (auto content = readFile(AT_FDCWD, icon.name().c_str(), largest)) {
            known->second = ThemeIcon(icon.name(), *std::move(content));
        }
    }
    return known->second;
}

} // namespace tidewell
