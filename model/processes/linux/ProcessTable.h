#pragma once

#include "model/processes/ApplicationSource.h"
#include "model/processes/linux/ApplicationGroups.h"
#include "model/processes/linux/MemoryShares.h"

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace tidewell {

/// The user's processes with their names and icons, kept from one look to the next. One thread.
///
/// A process is known again by the inode of its folder in /proc; the kernel may make a new one for
/// an old process, which is then known by its start time. So a look at what has not changed costs
/// the list of the folder, and one small file of each process. What a process has become meanwhile
/// by exec() is seen at once by the size of its code, or else within `turns` looks.
class ProcessTable {
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
    RunningApplication describe(const ApplicationGroup& group) const;

    ProcessFolder folder_;
    std::uint32_t user_;
    std::unique_ptr<DesktopEntries> entries_;
    std::uint64_t pageSize_;
    ThemeIcon executable_{ThemeIcon::executable};
    std::vector<Process> known_;                          // by id
    std::map<ProcessIdentifier, std::uint64_t> departed_; // by leader: what those that ended shared
    MemoryShares shares_;
    std::uint64_t look_ = 0; // numbers them
};

} // namespace tidewell
