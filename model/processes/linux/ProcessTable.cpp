#include "model/processes/linux/ProcessTable.h"

#include "base/text/Words.h"
#include "base/values/OpenFolder.h"
#include "base/values/ReadFile.h"
#include "model/processes/linux/ReadableLine.h"

#include <algorithm>
#include <array>
#include <fcntl.h>
#include <limits>
#include <tuple>
#include <unordered_map>

namespace tidewell {

namespace {

// More than a line of such a file takes, and enough of a command to know a script by.
constexpr std::size_t fileLimit = 4096;
constexpr std::size_t wordLimit = 32;
/// Seconds in which a process that was just made becomes the program that it is to run, and its
/// desktop gives it a unit. Until then it looks like its parent.
constexpr std::uint64_t settlingTime = 3;
/// Steps from a process to the one that has no parent; more than there are, so that a process
/// that takes another's place during the look cannot close a circle.
constexpr int mostAncestors = 64;

std::optional<std::string> readFileOf(int processes, ProcessIdentifier id, const char* name) {
    std::array<char, fileLimit> buffer;
    const auto text = readStart(processes, (std::to_string(id) + name).c_str(), buffer);
    return text ? std::optional<std::string>(*text) : std::nullopt;
}

std::string executableOf(int processes, ProcessIdentifier id) {
    std::array<char, fileLimit> buffer{};
    const auto path = std::to_string(id) + "/exe";
    const auto size = readlinkat(processes, path.c_str(), buffer.data(), buffer.size());
    std::string_view target(buffer.data(), static_cast<std::size_t>(std::max<ssize_t>(size, 0)));
    constexpr std::string_view deleted = " (deleted)"; // replaced by an update
    if (target.ends_with(deleted)) {
        target.remove_suffix(deleted.size());
    }
    return std::string(target);
}

/// Without allocating memory: this is what a survey's time goes to.
std::optional<std::uint64_t> readResidentPages(int processes, ProcessIdentifier id) {
    constexpr std::string_view name = "/statm";
    std::array<char, 32> path{};
    char* const end = std::to_chars(path.data(), path.data() + 16, id).ptr;
    name.copy(end, name.size());

    std::array<char, 256> buffer;
    const auto text = readStart(processes, path.data(), buffer);
    return text ? residentPages(*text) : std::nullopt;
}

/// Whole seconds since the machine's start.
std::optional<std::uint64_t> readUpTime(int processes) {
    std::array<char, 64> buffer;
    const auto text = readStart(processes, "uptime", buffer);
    return text ? number<std::uint64_t>(text->substr(0, text->find('.'))) : std::nullopt;
}

} // namespace

ProcessTable::ProcessTable(int processes, std::uint32_t user,
                           std::unique_ptr<DesktopEntries> entries)
    : processes_(processes)
    , user_(user)
    , entries_(std::move(entries))
    , ticksASecond_(static_cast<std::uint64_t>(sysconf(_SC_CLK_TCK)))
    , pageSize_(static_cast<std::uint64_t>(sysconf(_SC_PAGESIZE))) {}

ProcessTable::Look ProcessTable::look() {
    const bool entriesChanged = entries_->refresh();
    if (entriesChanged) {
        for (Process& process : known_) {
            findEntry(process);
        }
    }
    const bool processesChanged = update(list());
    if (entriesChanged || processesChanged) {
        list_ = makeList();
    }
    return {.applications = list_, .memory = readMemory()};
}

std::vector<ProcessTable::Listed> ProcessTable::list() const {
    std::vector<Listed> listed;
    const int folder = openat(processes_, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    const OpenFolder directory(folder < 0 ? nullptr : fdopendir(folder));
    if (!directory) {
        return listed;
    }
    listed.reserve(known_.size() + 16);
    while (const dirent* file = readdir(directory.get())) {
        if (const auto id = number<ProcessIdentifier>(file->d_name); id && *id > 0) {
            listed.push_back({.id = *id, .fileNumber = file->d_ino});
        }
    }
    std::ranges::sort(listed, {}, &Listed::id); // as the kernel gives them
    return listed;
}

/// Takes up what is new and lets go of what has ended. Returns whether the wanted ones changed.
bool ProcessTable::update(const std::vector<Listed>& listed) {
    const auto upTime = readUpTime(processes_);
    bool changed = false;
    std::vector<Process> now;
    now.reserve(listed.size());
    auto next = known_.begin();
    const auto letGoBefore = [&](ProcessIdentifier id) {
        for (; next != known_.end() && next->id < id; ++next) {
            changed = changed || next->isWanted;
        }
    };
    for (const Listed& process : listed) {
        letGoBefore(process.id);
        Process* const old = next != known_.end() && next->id == process.id ? &*next++ : nullptr;
        if (old != nullptr && old->isSettled && old->fileNumber == process.fileNumber) {
            now.push_back(std::move(*old));
            continue;
        }
        const auto text = readFileOf(processes_, process.id, "/stat");
        const auto stat = text ? parseProcessStat(*text) : std::nullopt;
        const bool isSettled =
            stat && (!upTime || stat->startTime / ticksASecond_ + settlingTime <= *upTime ||
                     stat->startTime / ticksASecond_ > *upTime); // another machine's up time
        if (stat && old != nullptr && isStill(*old, *stat, isSettled)) {
            old->fileNumber = process.fileNumber;
            now.push_back(std::move(*old));
            continue;
        }
        changed = changed || (old != nullptr && old->isWanted);
        if (stat) { // or it has ended meanwhile
            now.push_back(learn(process, *stat, isSettled));
            changed = changed || now.back().isWanted;
        }
    }
    letGoBefore(std::numeric_limits<ProcessIdentifier>::max());
    known_ = std::move(now);
    return changed;
}

/// Whether what is known of a process holds. Once it has settled, it is learnt for the last time.
bool ProcessTable::isStill(const Process& known, const ProcessStat& stat, bool isSettled) {
    return known.startTime == stat.startTime &&
           (known.isSettled || (!isSettled && known.commandName == stat.commandName));
}

ProcessTable::Process ProcessTable::learn(const Listed& listed, const ProcessStat& stat,
                                          bool isSettled) const {
    Process process;
    process.id = listed.id;
    process.fileNumber = listed.fileNumber;
    process.startTime = stat.startTime;
    process.parent = stat.parent;
    process.commandName = stat.commandName;
    const bool hasEnded = stat.state == 'Z' || stat.state == 'X';
    process.isSettled = isSettled || hasEnded || stat.isKernelThread;
    if (hasEnded || stat.isKernelThread) {
        return process;
    }
    const auto status = readFileOf(processes_, listed.id, "/status");
    process.isWanted = status && effectiveUser(*status) == user_;
    if (process.isWanted) {
        learnProgram(process);
        if (const auto groups = readFileOf(processes_, listed.id, "/cgroup")) {
            process.unit = applicationUnitOf(*groups);
        }
        findEntry(process);
    }
    return process;
}

void ProcessTable::learnProgram(Process& process) const {
    const auto commandLine = readFileOf(processes_, process.id, "/cmdline");
    auto words = commandWords(commandLine.value_or(""), wordLimit);
    const std::string calledAs(words.empty() ? "" : lastComponent(words.front()));
    const std::string executable = executableOf(processes_, process.id);
    if (!executable.empty()) {
        words.resize(std::max<std::size_t>(words.size(), 1));
        words.front() = executable;
    }

    const Program program = programOfProcess(words);
    process.program.path = program.name.starts_with('/') ? program.name : "";
    auto& names = process.program.names;
    if (!program.name.empty()) {
        names.emplace_back(lastComponent(program.name));
    }
    // What a process calls itself is often the link that it was started by. An interpreter's own
    // name does not tell what it runs.
    const std::string& own = process.commandName;
    const bool isInterpreters = program.isScript && (lastComponent(executable).starts_with(own) ||
                                                     calledAs.starts_with(own));
    if (!own.empty() && !isInterpreters) {
        constexpr std::size_t longestName = 15; // the kernel cuts the rest off
        const bool isCut = own.size() == longestName && calledAs.starts_with(own);
        names.push_back(isCut ? calledAs : own);
    }
}

void ProcessTable::findEntry(Process& process) const {
    process.entry = nullptr;
    if (!process.isWanted) {
        return;
    }
    if (process.unit) {
        for (const std::string& identifier : process.unit->identifiers) {
            process.entry = entries_->withIdentifier(identifier);
            process.isByUnit = process.entry != nullptr;
            if (process.isByUnit) {
                return;
            }
        }
    }
    process.entry = entries_->running(process.program);
}

const ProcessTable::Process* ProcessTable::find(ProcessIdentifier id) const {
    const auto found = std::ranges::lower_bound(known_, id, {}, &Process::id);
    return found != known_.end() && found->id == id ? &*found : nullptr;
}

bool ProcessTable::hasLeadingAncestor(const Process& process) const {
    const Process* ancestor = find(process.parent);
    for (int i = 0; i < mostAncestors && ancestor != nullptr; ++i) {
        if (ancestor->entry == process.entry) {
            return true;
        }
        ancestor = find(ancestor->parent);
    }
    return false;
}

/// For each known process, whether it leads its application: in a unit the oldest that runs the
/// program of the entry, or the oldest if none does, and else the one that was not started by
/// another process of the application.
std::vector<bool> ProcessTable::findLeaders() const {
    std::vector<bool> leads(known_.size());
    const auto rank = [this](std::size_t index) {
        const Process& process = known_[index];
        return std::tuple(!isRunBy(*process.entry, process.program), process.startTime, process.id);
    };
    std::unordered_map<std::string_view, std::size_t> leaderOfUnit;
    for (std::size_t i = 0; i < known_.size(); ++i) {
        const Process& process = known_[i];
        if (process.entry == nullptr) {
            continue;
        }
        if (!process.isByUnit) {
            leads[i] = !hasLeadingAncestor(process);
            continue;
        }
        const auto [leader, isFirst] = leaderOfUnit.try_emplace(process.unit->name, i);
        if (!isFirst && rank(i) < rank(leader->second)) {
            leader->second = i;
        }
    }
    for (const auto& [unit, index] : leaderOfUnit) {
        leads[index] = true;
    }
    return leads;
}

ApplicationList ProcessTable::makeList() const {
    const std::vector<bool> leads = findLeaders();
    auto applications = std::make_shared<std::vector<RunningApplication>>();
    for (std::size_t i = 0; i < known_.size(); ++i) {
        const Process& process = known_[i];
        if (!process.isWanted) {
            continue;
        }
        const DesktopEntry* entry = process.entry;
        std::optional<std::string> name;
        if (leads[i] && entry->name) {
            name = entry->name;
        } else if (!process.commandName.empty()) {
            name = readableLine(process.commandName);
        }
        applications->push_back(
            {.processIdentifier = process.id,
             .localizedName = std::move(name),
             .icon = entry != nullptr && entry->icon ? *entry->icon : executable_});
    }
    return applications;
}

std::vector<ResidentMemory> ProcessTable::readMemory() const {
    std::vector<ResidentMemory> memory;
    memory.reserve(list_->size());
    for (const RunningApplication& application : *list_) {
        if (const auto pages = readResidentPages(processes_, application.processIdentifier)) {
            memory.push_back({application.processIdentifier, *pages * pageSize_});
        }
    }
    return memory;
}

} // namespace tidewell
