#include "model/processes/linux/ProcessTable.h"

#include "model/processes/linux/ProcessFiles.h"

#include <algorithm>
#include <limits>
#include <unistd.h>
#include <utility>

namespace tidewell {

ProcessTable::ProcessTable(const std::string& processFolder, std::uint32_t user,
                           std::unique_ptr<DesktopEntries> entries)
    : folder_(processFolder)
    , user_(user)
    , entries_(std::move(entries))
    , pageSize_(static_cast<std::uint64_t>(sysconf(_SC_PAGESIZE))) {}

void ProcessTable::forget() {
    known_ = {};
    shares_ = {};
}

ApplicationList ProcessTable::look() {
    ++look_;
    if (entries_->refresh()) {
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
void ProcessTable::update() {
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
bool ProcessTable::readMemory(Process& process) {
    const auto text = folder_.read(process.id, "statm");
    const auto pages = text ? parseProcessPages(*text) : std::nullopt;
    process.memory.resident = pages ? std::optional(pages->resident * pageSize_) : std::nullopt;
    process.memory.mapped = pages ? pages->mapped * pageSize_ : 0;
    const std::uint64_t code = pages ? pages->code : 0;
    return std::exchange(process.memory.codePages, code) == code;
}

bool ProcessTable::isStill(Process& process, const ProcessFolder::Listed& listed) {
    const bool isDue = static_cast<std::uint64_t>(process.id) % turns == look_ % turns;
    return process.inode == listed.inode && process.isSettled &&
           (!process.isWanted || readMemory(process)) && (!isDue || isUnchanged(folder_, process));
}

RunningApplication ProcessTable::describe(const ApplicationGroup& group) const {
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
            .icon = entry != nullptr && entry->icon ? *entry->icon : executable_,
            .memory = memory,
            .usage = std::move(usage)};
}

} // namespace tidewell
