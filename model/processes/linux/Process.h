#pragma once

#include "model/processes/linux/ApplicationUnit.h"
#include "model/processes/linux/DesktopEntries.h"
#include "model/processes/linux/ProcessFolder.h"

#include <cstdint>
#include <optional>
#include <string>

namespace tidewell {

/// The memory of a process in bytes: what is read at every survey, and the shares as they were when
/// they were last read.
struct ProcessMemory {
    std::optional<std::uint64_t> resident; ///< RSS; empty once it has ended
    std::uint64_t mapped = 0;              ///< the part of it from files and shared memory
    std::uint64_t codePages = 0;

    std::uint64_t readAt = 0; ///< the number of the survey that read what follows; 0: none
    std::optional<std::uint64_t> proportional; ///< PSS; empty where it cannot be had
    std::uint64_t swapped = 0;
    std::uint64_t residentThen = 0;
    std::uint64_t mappedThen = 0;
    std::uint64_t copiable = 0; ///< shared, but to be copied when it is written to
    std::uint64_t faultsThen = 0;
    /// What others of the application began or ceased to share since, divided by all who share with
    /// them: so much this one's share may have changed.
    std::uint64_t othersMoved = 0;

    /// What it has to itself, and its part of what it shares: the PSS, as the RSS has moved since.
    std::uint64_t estimate() const;
    /// How much of it is counted elsewhere.
    std::uint64_t shared() const { return resident.value_or(0) - estimate(); }
};

/// What is known of a process.
struct Process {
    ProcessIdentifier id = 0;
    std::uint64_t inode = 0;
    std::uint64_t startTime = 0;
    std::uint32_t user = 0;
    ProcessIdentifier parent = 0;
    std::string commandName;
    std::size_t commandHash = 0; ///< of the command line
    bool isSettled = false;      ///< old enough to have called exec() and to be in its unit
    bool isWanted = false;       ///< by the survey; what follows is known of these only

    std::string name;        ///< for the user to read; empty if it has none that can be seen
    std::string commandLine; ///< the same, cut when long
    std::string executable;  ///< path; empty when it cannot be told
    RunProgram program;
    bool isScript = false;
    bool isWrapper = false; ///< only waits for the program that it started
    std::int32_t terminal = 0;
    std::string unitName;
    std::optional<ApplicationUnit> unit;
    // From variables that GIO sets where it starts an application, and that children inherit.
    std::string launchedEntry;             ///< identifier of the entry that was started
    ProcessIdentifier launchedProcess = 0; ///< which was this one or an ancestor
    std::string appImage;                  ///< path of the AppImage that it runs out of
    const DesktopEntry* unitEntry = nullptr;
    const DesktopEntry* ownEntry = nullptr; ///< of the program that it runs
    const DesktopEntry* launchEntry = nullptr;

    ProcessIdentifier leader = 0; ///< of the application that it was last found in; 0: none yet
    ProcessMemory memory;

    void findEntries(const DesktopEntries& entries);
};

/// Reads all that is known of a process but its memory and entries. Empty when it has ended. Only
/// those of `user` that run an executable are wanted. `upTime` is in seconds.
std::optional<Process> learnProcess(ProcessFolder& folder, const ProcessFolder::Listed& listed,
                                    std::uint32_t user, std::optional<std::uint64_t> upTime);

/// Whether a process still has the user, the name and the command line that are known of it.
bool isUnchanged(ProcessFolder& folder, const Process& process);

} // namespace tidewell
