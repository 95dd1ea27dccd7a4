#include "model/processes/linux/ApplicationGroups.h"

#include <algorithm>
#include <map>
#include <ranges>
#include <tuple>

namespace tidewell {

namespace {

bool runsTheSame(const Process& process, const Process& parent) {
    if (process.executable.empty() || process.executable != parent.executable) {
        return false;
    }
    // A shell's scripts are programs of their own; an interpreter that only has a command is a
    // helper, as those of Python's multiprocessing are.
    return process.program.path == parent.program.path ||
           (process.isScript && process.program.path.empty());
}

/// Whether a process of an application's unit is another program all the same.
bool standsAlone(const Process& process) {
    const DesktopEntry* const unit = process.unitEntry;
    if (unit != nullptr && isRunBy(*unit, process.program)) {
        return false;
    }
    const DesktopEntry* const own = process.ownEntry;
    const bool isInTerminal =
        unit != nullptr && (process.terminal != 0 || (unit->isTerminal && !process.isWrapper));
    return isInTerminal || (own != nullptr && own != unit && own->isShown);
}

class Grouping {
public:
    explicit Grouping(std::span<Process> processes)
        : processes_(processes)
        , groupOf_(processes.size(), undecided) {}

    std::vector<ApplicationGroup> make() {
        for (const Process& process : processes_) {
            if (!process.appImage.empty()) {
                byName_.try_emplace(process.appImage, none);
            }
        }
        for (std::size_t i = 0; i < processes_.size(); ++i) {
            if (processes_[i].isWanted) {
                decide(i);
            }
        }
        std::vector<ApplicationGroup> groups(entries_.size());
        for (std::size_t i = 0; i < processes_.size(); ++i) {
            if (processes_[i].isWanted) {
                groups[groupOf_[i]].members.push_back(&processes_[i]);
            }
        }
        giveWrappersAway(groups);
        std::erase_if(groups, [](const auto& group) { return group.members.empty(); });
        for (ApplicationGroup& group : groups) {
            group.entry = entries_[groupOf_[indexOf(*group.members.front())]];
            group.leader = leaderOf(group);
        }
        std::ranges::sort(groups, {}, [](const auto& group) { return group.leader->id; });
        return groups;
    }

private:
    static constexpr std::size_t undecided = ~std::size_t{0};
    static constexpr std::size_t none = undecided - 1;

    std::size_t indexOf(const Process& process) const {
        return static_cast<std::size_t>(&process - processes_.data());
    }

    std::size_t find(ProcessIdentifier id) const {
        const auto found = std::ranges::lower_bound(processes_, id, {}, &Process::id);
        return found != processes_.end() && found->id == id && found->isWanted
                   ? static_cast<std::size_t>(found - processes_.begin())
                   : none;
    }

    std::size_t newGroup(const DesktopEntry* entry) {
        entries_.push_back(entry);
        return entries_.size() - 1;
    }

    std::size_t ofEntry(const DesktopEntry* entry) {
        const auto [group, isNew] = byEntry_.try_emplace(entry, none);
        if (isNew) {
            group->second = newGroup(entry);
        }
        return group->second;
    }

    std::size_t ofName(std::string_view name, const DesktopEntry* entry) {
        if (entry != nullptr) {
            return ofEntry(entry);
        }
        const auto group = byName_.try_emplace(name, none).first;
        if (group->second == none) {
            group->second = newGroup(nullptr);
        }
        return group->second;
    }

    std::size_t decide(std::size_t index) {
        if (groupOf_[index] == undecided) {
            groupOf_[index] = none; // ends a cycle, which reused process numbers can make
            groupOf_[index] = decided(processes_[index]);
        }
        return groupOf_[index];
    }

    std::size_t decided(const Process& process) {
        if (const auto image = byName_.find(process.program.path); image != byName_.end()) {
            return ofName(image->first,
                          process.ownEntry != nullptr ? process.ownEntry : process.unitEntry);
        }
        if (process.unit && (process.unit->isSandbox || !standsAlone(process))) {
            return ofName(process.unit->name, process.unitEntry);
        }
        if (process.ownEntry != nullptr) {
            return ofEntry(process.ownEntry);
        }
        if (process.launchEntry != nullptr &&
            (process.launchedProcess == process.id ||
             (!process.launchEntry->isTerminal && find(process.launchedProcess) == none))) {
            return ofEntry(process.launchEntry);
        }
        const std::size_t parent = find(process.parent);
        if (parent != none && belongsToParent(process, parent)) {
            return groupOf_[parent];
        }
        return newGroup(nullptr);
    }

    bool belongsToParent(const Process& process, std::size_t index) {
        const Process& parent = processes_[index];
        if (parent.startTime > process.startTime || parent.unitName != process.unitName ||
            decide(index) == none) {
            return false;
        }
        const DesktopEntry* const entry = entries_[groupOf_[index]];
        const bool takesHelpers = entry != nullptr && !entry->isTerminal && entry->isShown &&
                                  parent.terminal == process.terminal;
        return takesHelpers || runsTheSame(process, parent);
    }

    /// A group that is nothing but a wrapper goes to that of the first process it started.
    void giveWrappersAway(std::vector<ApplicationGroup>& groups) {
        for (std::size_t child = 0; child < processes_.size(); ++child) {
            const std::size_t parent =
                processes_[child].isWanted ? find(processes_[child].parent) : none;
            if (parent == none || groupOf_[parent] == groupOf_[child]) {
                continue;
            }
            ApplicationGroup& from = groups[groupOf_[parent]];
            if (entries_[groupOf_[parent]] == nullptr &&
                std::ranges::all_of(from.members, &Process::isWrapper)) {
                ApplicationGroup& to = groups[groupOf_[child]];
                for (Process* wrapper : from.members) {
                    groupOf_[indexOf(*wrapper)] = groupOf_[child];
                }
                to.members.insert(to.members.end(), from.members.begin(), from.members.end());
                from.members.clear();
                std::ranges::sort(to.members, {}, &Process::id);
            }
        }
    }

    static Process* leaderOf(const ApplicationGroup& group) {
        return *std::ranges::min_element(group.members, {}, [&group](const Process* process) {
            const bool isItsProgram =
                group.entry != nullptr && isRunBy(*group.entry, process->program);
            return std::tuple(process->isWrapper, !isItsProgram, process->startTime, process->id);
        });
    }

    std::span<Process> processes_;
    std::vector<std::size_t> groupOf_;         // by the index of the process
    std::vector<const DesktopEntry*> entries_; // by the number of the group
    std::map<const DesktopEntry*, std::size_t> byEntry_;
    std::map<std::string_view, std::size_t> byName_; // of units and AppImages without an entry
};

} // namespace

std::vector<ApplicationGroup> groupByApplication(std::span<Process> processes) {
    return Grouping(processes).make();
}

} // namespace tidewell
