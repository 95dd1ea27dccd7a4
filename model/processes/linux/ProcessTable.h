#pragma once

#include "model/processes/ApplicationSource.h"
#include "model/processes/linux/ApplicationUnit.h"
#include "model/processes/linux/DesktopEntries.h"
#include "model/processes/linux/ProcessFiles.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tidewell {

struct ResidentMemory {
    ProcessIdentifier process;
    std::uint64_t bytes;
};

/// The user's processes with their names and icons, kept from one look to the next. One thread.
///
/// A process is known again by its number in the folder of processes: the kernel makes a new one
/// for every process, and may make one anew for an old process that it has not been asked about
/// for long, which is then known by its start time. So a look at what has not changed costs the
/// list of the folder, and the one small file of each that tells its memory.
class ProcessTable {
public:
    /// `processes` is the open folder of the kernel's processes, which must outlive the table;
    /// `user` whose processes are wanted.
    ProcessTable(int processes, std::uint32_t user, std::unique_ptr<DesktopEntries> entries);

    struct Look {
        /// What runs now, in the order of the process numbers. The same list again when that is
        /// the same as before.
        ApplicationList applications;
        /// Of those whose memory can be read, in the same order.
        std::vector<ResidentMemory> memory;
    };
    Look look();

private:
    struct Listed {
        ProcessIdentifier id;
        std::uint64_t fileNumber;
    };
    struct Process {
        ProcessIdentifier id = 0;
        std::uint64_t fileNumber = 0;
        std::uint64_t startTime = 0;
        bool isSettled = false; // too old to be about to become another program
        bool isWanted = false;  // the user's own; nothing more is known of others
        ProcessIdentifier parent = 0;
        std::string commandName;
        RunProgram program;
        std::optional<ApplicationUnit> unit;
        const DesktopEntry* entry = nullptr;
        bool isByUnit = false; // how the entry was found
    };

    std::vector<Listed> list() const;
    bool update(const std::vector<Listed>& listed);
    static bool isStill(const Process& known, const ProcessStat& stat, bool isSettled);
    Process learn(const Listed& listed, const ProcessStat& stat, bool isSettled) const;
    void learnProgram(Process& process) const;
    void findEntry(Process& process) const;
    const Process* find(ProcessIdentifier id) const;
    bool hasLeadingAncestor(const Process& process) const;
    std::vector<bool> findLeaders() const;
    ApplicationList makeList() const;
    std::vector<ResidentMemory> readMemory() const;

    int processes_;
    std::uint32_t user_;
    std::unique_ptr<DesktopEntries> entries_;
    std::uint64_t ticksASecond_;
    std::uint64_t pageSize_;
    ThemeIcon executable_{ThemeIcon::executable};
    std::vector<Process> known_; // by id
    ApplicationList list_;
};

} // namespace tidewell
