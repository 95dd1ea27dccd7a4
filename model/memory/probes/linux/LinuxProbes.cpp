#include "model/memory/probes/linux/LinuxProbes.h"

#include "base/values/OpenFolder.h"
#include "base/values/ReadFile.h"

#include <array>
#include <fcntl.h>
#include <span>
#include <unistd.h>
#include <utility>

namespace tidewell {

namespace {

/// Twice the size of the largest of these files, ZFS's arcstats. Left uninitialised: clearing it
/// would take some percent of a sampling step.
using Buffer = std::array<char, 16384>;

/// The text of a kernel file, in `buffer`; of one that does not fit, its whole lines that do, since
/// a number cut short would be a wrong one.
Result<std::string_view> readText(int directory, const char* path, std::span<char> buffer) {
    auto text = readStart(directory, path, buffer);
    if (text && text->size() == buffer.size()) {
        text = text->substr(0, text->rfind('\n') + 1);
    }
    return text;
}

} // namespace

LinuxProbes::LinuxProbes(const std::string& proc, const std::string& sys, Log& log)
    : memInfoPath_(proc + "/meminfo")
    , arcStatsPath_(proc + "/spl/kstat/zfs/arcstats")
    , zramControlPath_(sys + "/class/zram-control")
    , blockPath_(sys + "/block")
    , pageSize_(static_cast<std::uint64_t>(sysconf(_SC_PAGESIZE)))
    , log_(log) {}

std::optional<std::int64_t> LinuxProbes::getFreeMemoryPercentage() {
    // Writing /proc/meminfo is the kernel's largest part of a step, so it is asked for once.
    step_ = read();
    return step_ ? freeMemoryPercentage(step_->info, step_->unlisted) : std::nullopt;
}

std::optional<SwapUsage> LinuxProbes::getSwapUsage() {
    const auto info = readMemInfo();
    if (!info) {
        logError(log_,
                 "Error getting swap usage (errno: " + std::to_string(info.error().cause.value()) +
                     ")",
                 "getSwapUsage()");
        return std::nullopt;
    }
    const auto usage = swapUsage(*info);
    if (!usage) {
        logError(log_, "Error: Could not find the swap totals in " + memInfoPath_,
                 "getSwapUsage()");
    }
    return usage;
}

std::optional<std::uint64_t> LinuxProbes::getPhysicalMemory() {
    const auto info = step_ ? Result<MemInfo>(step_->info) : readMemInfo();
    if (!info || !info->total) {
        return std::nullopt;
    }
    return *info->total * 1024;
}

std::optional<MemoryCounters> LinuxProbes::getMemoryCounters() {
    const auto reading = step_ ? step_ : read();
    return reading ? memoryCounters(reading->info, reading->unlisted, pageSize_) : std::nullopt;
}

std::optional<LinuxProbes::Reading> LinuxProbes::read() {
    const auto info = readMemInfo();
    return info ? std::optional(Reading{*info, readUnlistedMemory()}) : std::nullopt;
}

Result<MemInfo> LinuxProbes::readMemInfo() {
    Buffer buffer;
    auto info = readText(AT_FDCWD, memInfoPath_.c_str(), buffer).map(parseMemInfo);
    if (!std::exchange(isUnreadable_, !info.has_value()) && !info) {
        logError(log_, info.error().description(), "readMemInfo()");
    }
    if (info && !info->tooLarge.empty() && !std::exchange(hasToldOfTooLarge_, true)) {
        logError(log_,
                 std::string(info->tooLarge) + " in " + memInfoPath_ +
                     " is larger than MemTotal and left out",
                 "readMemInfo()");
    }
    return info;
}

UnlistedMemory LinuxProbes::readUnlistedMemory() const {
    Buffer buffer;
    UnlistedMemory unlisted;
    if (const auto text = readText(AT_FDCWD, arcStatsPath_.c_str(), buffer)) {
        unlisted.evictableZfs = evictableZfsKilobytes(*text);
    }
    // Most machines do not have the driver: there, one access() (1.5 us) saves the listing.
    if (access(zramControlPath_.c_str(), F_OK) == 0) {
        unlisted.zram = readZram();
    }
    return unlisted;
}

std::uint64_t LinuxProbes::readZram() const {
    // Devices come and go, so each step lists /sys/block.
    const OpenFolder directory(opendir(blockPath_.c_str()));
    if (!directory) {
        return 0;
    }
    std::array<char, 256> buffer{};
    std::uint64_t kilobytes = 0;
    while (const dirent* entry = readdir(directory.get())) {
        const std::string_view name(entry->d_name);
        if (!name.starts_with("zram")) {
            continue;
        }
        const auto read = [&](const char* file) {
            const std::string path = std::string(name) + file;
            return readText(dirfd(directory.get()), path.c_str(), buffer);
        };
        // One that is being reset keeps the readers of mm_stat waiting, but not those of its size.
        if (const auto size = read("/size"); size && *size == "0\n") {
            continue;
        }
        if (const auto text = read("/mm_stat")) {
            kilobytes += zramKilobytes(*text);
        }
    }
    return kilobytes;
}

} // namespace tidewell
