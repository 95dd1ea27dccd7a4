#include "model/processes/linux/MemoryShares.h"

#include "base/values/Difference.h"
#include "model/processes/linux/ProcessFiles.h"

#include <algorithm>
#include <vector>

namespace tidewell {

namespace {

// Of memory, and of credit: so many bytes' pages are walked.
constexpr std::uint64_t mebibyte = std::uint64_t{1} << 20;
constexpr std::int64_t creditASurvey = std::int64_t{2} << 30;  // some 20 ms
constexpr std::int64_t creditInTurn = std::int64_t{256} << 20; // 3 ms
constexpr std::uint64_t costOfAny = 16 * mebibyte;             // as much as 0.2 ms would walk
constexpr std::uint64_t largestWalk = 16384 * mebibyte; // some 0.2 s, which nothing can cut short

constexpr std::uint64_t muchShared = 16 * mebibyte;
constexpr std::uint64_t pageSize = 4096; // of the smallest page that can be copied on a write

std::uint64_t distance(std::uint64_t one, std::uint64_t other) {
    return std::max(one, other) - std::min(one, other);
}

std::uint64_t faultsOf(ProcessFolder& folder, const Process& process) {
    const auto text = folder.read(process.id, "stat");
    const auto stat = text ? parseProcessStat(*text) : std::nullopt;
    return stat ? stat->minorFaults : 0;
}

/// How far the figure of a process may be from the truth, in bytes; 0 for what does not matter.
/// Private memory that was added since the last reading is in the figure already.
std::uint64_t doubtOf(ProcessFolder& folder, const Process& process) {
    const ProcessMemory& memory = process.memory;
    const std::uint64_t now = memory.resident.value_or(0);
    if (memory.readAt == 0) {
        return now;
    }
    if (!memory.proportional) {
        return 0; // the RSS is all that is to be had
    }
    std::uint64_t doubt = distance(memory.mapped, memory.mappedThen) +
                          differenceOrZero(memory.residentThen, now) + memory.othersMoved;
    if (memory.copiable > muchShared) {
        // Each fault that did not add a page may have copied a shared one.
        const auto faults = distance(faultsOf(folder, process), memory.faultsThen) * pageSize;
        doubt += differenceOrZero(faults, differenceOrZero(now, memory.residentThen));
    }
    doubt = std::min(doubt, std::max(now, memory.residentThen));
    return doubt > std::max(mebibyte / 4, memory.estimate() / 32) ? doubt : 0;
}

/// What one process began or ceased to share, the others share more or less of, all together.
std::uint64_t partOf(std::uint64_t bytes, const ApplicationGroup& application) {
    return bytes / std::max<std::size_t>(application.members.size() - 1, 1);
}

/// Arrivals and departures change the shares of those who stay.
void noteMoves(const ApplicationGroup& application,
               const std::map<ProcessIdentifier, std::uint64_t>& departed) {
    std::uint64_t arrived = 0;
    for (const Process* process : application.members) {
        arrived += process->leader == 0 ? process->memory.resident.value_or(0) : 0;
    }
    for (Process* const process : application.members) {
        const auto gone = departed.find(process->leader);
        process->memory.othersMoved +=
            partOf(arrived + (gone == departed.end() ? 0 : gone->second), application);
        process->leader = application.leader->id;
    }
}

} // namespace

void MemoryShares::refresh(ProcessFolder& folder, std::span<Process> processes,
                           std::span<const ApplicationGroup> applications,
                           const std::map<ProcessIdentifier, std::uint64_t>& departed) {
    ++survey_;
    for (const ApplicationGroup& application : applications) {
        noteMoves(application, departed);
    }
    readDue(folder, applications);
    readInTurn(folder, processes);
    credit_ = std::min(credit_ + creditASurvey, creditASurvey); // a debt is paid off first
}

void MemoryShares::readDue(ProcessFolder& folder, std::span<const ApplicationGroup> applications) {
    std::vector<Due> changed;
    std::vector<Due> fresh;
    for (const ApplicationGroup& application : applications) {
        for (Process* const process : application.members) {
            if (const auto doubt = doubtOf(folder, *process); doubt > 0) {
                (process->memory.readAt == 0 ? fresh : changed)
                    .push_back({doubt, &application, process});
            }
        }
    }
    std::ranges::sort(fresh, std::greater(), &Due::doubt);
    std::ranges::sort(changed, std::greater(), &Due::doubt);
    moved_.clear();
    std::span<const Due> stillChanged(changed);
    spend(folder, stillChanged, credit_ / 2);
    std::span<const Due> stillFresh(fresh);
    spend(folder, stillFresh, creditInTurn);
    spend(folder, stillChanged, creditInTurn);
    // What one of them began or ceased to share, others share more or less of.
    for (const auto& [application, bytes] : moved_) {
        for (Process* const process : application->members) {
            process->memory.othersMoved +=
                process->memory.readAt == survey_ ? 0 : partOf(bytes, *application);
        }
    }
}

void MemoryShares::spend(ProcessFolder& folder, std::span<const Due>& due,
                         std::int64_t creditLeft) {
    for (; !due.empty() && credit_ > creditLeft; due = due.subspan(1)) {
        const auto& [doubt, application, process] = due.front();
        const bool wasKnown = process->memory.readAt != 0;
        const std::uint64_t before = process->memory.estimate();
        credit_ -= read(folder, *process);
        moved_[application] += wasKnown ? distance(before, process->memory.estimate()) : 0;
    }
}

void MemoryShares::readInTurn(ProcessFolder& folder, std::span<Process> processes) {
    std::int64_t left = std::min(creditInTurn, credit_);
    auto next = std::ranges::upper_bound(processes, lastInTurn_, {}, &Process::id);
    for (std::size_t count = 0; left > 0 && count < processes.size(); ++count, ++next) {
        next = next == processes.end() ? processes.begin() : next;
        if (next->isWanted && next->memory.readAt != 0 && next->memory.readAt != survey_) {
            const auto cost = read(folder, *next);
            left -= cost;
            credit_ -= cost;
            lastInTurn_ = next->id;
        }
    }
}

/// Returns what it cost.
std::int64_t MemoryShares::read(ProcessFolder& folder, Process& process) const {
    ProcessMemory& memory = process.memory;
    memory.readAt = survey_;
    memory.othersMoved = 0;
    memory.residentThen = memory.resident.value_or(0);
    memory.mappedThen = memory.mapped;
    const std::uint64_t walk = memory.residentThen + memory.swapped;
    const bool isWalked = walk <= largestWalk;
    const auto text = isWalked ? folder.read(process.id, "smaps_rollup") : std::nullopt;
    memory.proportional = text ? bytesBehind("Pss:", *text) : std::nullopt;
    if (memory.proportional) {
        memory.swapped = bytesBehind("SwapPss:", *text).value_or(0);
        const std::uint64_t anonymous = bytesBehind("Anonymous:", *text).value_or(0);
        const std::uint64_t its = bytesBehind("Pss_Anon:", *text).value_or(0);
        memory.copiable = differenceOrZero(anonymous, its);
        memory.faultsThen = memory.copiable > muchShared ? faultsOf(folder, process) : 0;
    } else if (const auto status = folder.read(process.id, "status")) {
        memory.swapped = bytesBehind("VmSwap:", *status).value_or(0);
    }
    return static_cast<std::int64_t>(costOfAny + (isWalked ? walk : 0));
}

} // namespace tidewell
