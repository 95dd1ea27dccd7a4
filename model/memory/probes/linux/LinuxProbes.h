#pragma once

#include "base/ports/Log.h"
#include "base/values/Result.h"
#include "model/memory/probes/SystemProbes.h"
#include "model/memory/probes/linux/MemInfo.h"

#include <string>

namespace tidewell {

/// The readings of a Linux machine, from /proc/meminfo and, for ZFS and zram, files beside it.
/// MemInfo.cpp defines what counts as what. Why the file cannot be read is logged once, until it
/// can be read again; of the parts that claim to be larger than memory, the first.
///
/// getFreeMemoryPercentage() reads the files, and so begins a sampling step: physical memory and
/// the counters are then those of the same moment, until it is called again. Where it read nothing,
/// they are read when asked for.
///
/// The kernel has the contents of these files at hand: reading them does not block. But nobody
/// reads the figures of a zram device that is being reset until all its memory is free, which may
/// take seconds; such a device, of size 0 by then, is left out.
class LinuxProbes final : public SystemProbes {
public:
    /// `proc` and `sys` are the directories where the kernel's files are mounted, "/proc" and
    /// "/sys" on a real machine. `log` must outlive the probes.
    LinuxProbes(const std::string& proc, const std::string& sys, Log& log);

    std::optional<std::int64_t> getFreeMemoryPercentage() override;
    /// Logs one error line when the figures cannot be had.
    std::optional<SwapUsage> getSwapUsage() override;
    std::optional<std::uint64_t> getPhysicalMemory() override;
    std::optional<MemoryCounters> getMemoryCounters() override;

private:
    /// What a sampling step reads.
    struct Reading {
        MemInfo info;
        UnlistedMemory unlisted;
    };

    Result<MemInfo> readMemInfo();
    UnlistedMemory readUnlistedMemory() const;
    std::optional<Reading> read();
    std::uint64_t readZram() const;

    std::string memInfoPath_;
    std::string arcStatsPath_;
    std::string zramControlPath_;
    std::string blockPath_;
    std::uint64_t pageSize_;
    Log& log_;
    std::optional<Reading> step_;
    bool isUnreadable_ = false; // the file, at the last attempt
    bool hasToldOfTooLarge_ = false;
};

} // namespace tidewell
