#include "model/processes/linux/ProcessFiles.h"

#include "base/text/Words.h"

#include <algorithm>
#include <array>

namespace tidewell {

namespace {

/// Takes the next string off the front of a list of strings that end with a NUL byte each.
std::string_view takeString(std::string_view& list) {
    const auto string = list.substr(0, list.find('\0'));
    list.remove_prefix(std::min(string.size() + 1, list.size()));
    return string;
}

} // namespace

std::optional<ProcessStat> parseProcessStat(std::string_view text) {
    // "PID (NAME) STATE PPID ...": the name may hold blanks, brackets and line feeds, and nothing
    // after it holds a bracket.
    const auto open = text.find('(');
    const auto close = text.rfind(')');
    if (open == std::string_view::npos || close == std::string_view::npos || close < open) {
        return std::nullopt;
    }
    std::string_view rest = text.substr(close + 1);
    std::array<std::string_view, 20> fields; // from the third of the file on
    for (auto& field : fields) {
        field = takeWord(rest);
    }
    const auto parent = number<std::int32_t>(fields[1]);
    const auto terminal = number<std::int32_t>(fields[4]);
    const auto flags = number<std::uint32_t>(fields[6]);
    const auto minorFaults = number<std::uint64_t>(fields[7]);
    const auto startTime = number<std::uint64_t>(fields[19]);
    if (fields[0].size() != 1 || !parent || !terminal || !flags || !minorFaults || !startTime) {
        return std::nullopt;
    }
    constexpr std::uint32_t kernelThread = 0x00200000; // PF_KTHREAD
    return ProcessStat{.commandName = std::string(text.substr(open + 1, close - open - 1)),
                       .state = fields[0].front(),
                       .parent = *parent,
                       .terminal = *terminal,
                       .minorFaults = *minorFaults,
                       .startTime = *startTime,
                       .isKernelThread = (*flags & kernelThread) != 0};
}

std::optional<ProcessPages> parseProcessPages(std::string_view statm) {
    const auto size = number<std::uint64_t>(takeWord(statm));
    const auto resident = number<std::uint64_t>(takeWord(statm));
    const auto mapped = number<std::uint64_t>(takeWord(statm));
    const auto code = number<std::uint64_t>(takeWord(statm));
    if (!size || *size == 0 || !resident || !mapped || !code) {
        return std::nullopt;
    }
    return ProcessPages{.resident = *resident, .mapped = *mapped, .code = *code};
}

std::optional<std::uint64_t> bytesBehind(std::string_view key, std::string_view text) {
    while (!text.empty()) {
        std::string_view line = takeLine(text);
        if (takeWord(line) == key) {
            const auto kilobytes = number<std::uint64_t>(takeWord(line));
            constexpr std::uint64_t most = ~std::uint64_t{0} / 1024;
            return kilobytes && *kilobytes <= most ? std::optional(*kilobytes * 1024)
                                                   : std::nullopt;
        }
    }
    return std::nullopt;
}

std::vector<std::string> commandWords(std::string_view commandLine, std::size_t limit) {
    std::vector<std::string> words;
    while (!commandLine.empty() && words.size() < limit) {
        words.emplace_back(takeString(commandLine));
    }
    return words;
}

std::string_view environmentVariable(std::string_view name, std::string_view environment) {
    while (!environment.empty()) {
        const auto setting = takeString(environment);
        if (setting.starts_with(name) && setting.substr(name.size()).starts_with('=')) {
            return setting.substr(name.size() + 1);
        }
    }
    return {};
}

} // namespace tidewell
