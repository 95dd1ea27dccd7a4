#pragma once

#include "model/processes/linux/ApplicationGroups.h"

#include <cstdint>
#include <map>
#include <span>

namespace tidewell {

/// Keeps the shares of the memory of all processes true without reading them all the time: the
/// kernel walks a process's page tables for that, which takes it 0.2 ms for a small process and
/// 10 ms for a gigabyte, where the RSS takes microseconds.
///
/// Every survey has a credit of pages to be walked. It goes to those processes first whose figures
/// may be furthest from the truth; half of it at least to new ones, if there are enough. Some are
/// read in turns, whatever is known of them. A process of more than 16 GiB, swap included, is taken
/// by its RSS: of that little is shared, as a rule, and no survey could pay for the walk. One
/// thread.
class MemoryShares {
public:
    /// `departed` has the bytes that processes shared which have ended, by their leaders.
    void refresh(ProcessFolder& folder, std::span<Process> processes,
                 std::span<const ApplicationGroup> applications,
                 const std::map<ProcessIdentifier, std::uint64_t>& departed);

private:
    struct Due {
        std::uint64_t doubt; ///< how far the figure may be from the truth, in bytes
        const ApplicationGroup* application;
        Process* process;
    };
    void readDue(ProcessFolder& folder, std::span<const ApplicationGroup> applications);
    void spend(ProcessFolder& folder, std::span<const Due>& due, std::int64_t creditLeft);
    void readInTurn(ProcessFolder& folder, std::span<Process> processes);
    std::int64_t read(ProcessFolder& folder, Process& process) const;

    // In bytes of memory whose pages are walked. At the first survey nothing is known.
    static constexpr std::int64_t firstCredit = std::int64_t{16} << 30;
    std::int64_t credit_ = firstCredit;
    ProcessIdentifier lastInTurn_ = 0;
    std::uint64_t survey_ = 0;                               // numbers them
    std::map<const ApplicationGroup*, std::uint64_t> moved_; // during a survey
};

} // namespace tidewell
