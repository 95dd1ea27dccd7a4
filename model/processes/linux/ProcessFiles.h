#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tidewell {

/// What the kernel's file "stat" tells of a process, as far as it is used here.
struct ProcessStat {
    std::string commandName; ///< any bytes, as the program chose them; at most 15 as a rule
    char state;
    std::int32_t parent;
    std::uint64_t startTime; ///< since the machine's start, in the kernel's ticks
    bool isKernelThread;

    bool operator==(const ProcessStat&) const = default;
};

/// Empty for a text without these fields.
std::optional<ProcessStat> parseProcessStat(std::string_view text);

/// The resident pages of a process, from the text of its "statm". Empty for a text without them
/// and for a process without memory of its own: one that has ended, or a thread of the kernel.
std::optional<std::uint64_t> residentPages(std::string_view statm);

/// The user with whose rights a process acts, from the text of its "status".
std::optional<std::uint32_t> effectiveUser(std::string_view status);

/// The words of a process's "cmdline", no more than `limit` of them.
std::vector<std::string> commandWords(std::string_view commandLine, std::size_t limit);

} // namespace tidewell
