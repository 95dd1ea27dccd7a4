#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tidewell {

// The kernel's files on one process, read from their texts. Pure.

/// What "stat" tells of a process, as far as it is used here.
struct ProcessStat {
    std::string commandName; ///< any bytes, as the program chose them; at most 15 as a rule
    char state = 0;
    std::int32_t parent = 0;
    std::int32_t terminal = 0; ///< the controlling terminal's device number; 0 for none
    std::uint64_t minorFaults =
        0;                       ///< pages that it got without reading a disk, copies on write too
    std::uint64_t startTime = 0; ///< since the machine's start, in clock ticks
    bool isKernelThread = false;

    bool operator==(const ProcessStat&) const = default;
};

/// Empty for a text without these fields.
std::optional<ProcessStat> parseProcessStat(std::string_view text);

/// What "statm" tells; in pages.
struct ProcessPages {
    std::uint64_t resident;
    std::uint64_t mapped; ///< those of them that come from files and shared memory
    std::uint64_t code;   ///< the size of the program's own; another program's is hardly the same

    bool operator==(const ProcessPages&) const = default;
};

/// Empty for a text without these fields, and for a process without memory of its own: one that has
/// ended, or a kernel thread.
std::optional<ProcessPages> parseProcessPages(std::string_view statm);

/// The bytes behind a key such as "Pss:" of "smaps_rollup", or "VmSwap:" of "status".
std::optional<std::uint64_t> bytesBehind(std::string_view key, std::string_view text);

/// The words of "cmdline", no more than `limit` of them.
std::vector<std::string> commandWords(std::string_view commandLine, std::size_t limit);

/// The value of a variable in "environ"; empty where it is not set.
std::string_view environmentVariable(std::string_view name, std::string_view environment);

} // namespace tidewell
