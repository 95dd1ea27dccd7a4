#include "model/processes/linux/ProcessFiles.h"

#include "base/text/Words.h"

#include <array>

namespace tidewell {

std::optional<ProcessStat> parseProcessStat(std::string_view text) {
    // "PID (NAME) STATE PARENT ...": the name may hold blanks, brackets and line ends, and nothing
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
    const auto flags = number<std::uint32_t>(fields[6]);
    const auto startTime = number<std::uint64_t>(fields[19]);
    if (fields[0].size() != 1 || !parent || !flags || !startTime) {
        return std::nullopt;
    }
    constexpr std::uint32_t kernelThread = 0x00200000; // PF_KTHREAD
    return ProcessStat{.commandName = std::string(text.substr(open + 1, close - open - 1)),
                       .state = fields[0].front(),
                       .parent = *parent,
                       .startTime = *startTime,
                       .isKernelThread = (*flags & kernelThread) != 0};
}

std::optional<std::uint64_t> residentPages(std::string_view statm) {
    const auto size = number<std::uint64_t>(takeWord(statm));
    return size && *size != 0 ? number<std::uint64_t>(takeWord(statm)) : std::nullopt;
}

std::optional<std::uint32_t> effectiveUser(std::string_view status) {
    while (!status.empty()) {
        std::string_view line = takeLine(status);
        if (line.starts_with("Uid:")) {
            takeWord(line);
            takeWord(line); // the real user
            return number<std::uint32_t>(takeWord(line));
        }
    }
    return std::nullopt;
}

std::vector<std::string> commandWords(std::string_view commandLine, std::size_t limit) {
    std::vector<std::string> words;
    while (!commandLine.empty() && words.size() < limit) {
        const auto word = commandLine.substr(0, commandLine.find('\0'));
        words.emplace_back(word);
        commandLine.remove_prefix(std::min(word.size() + 1, commandLine.size()));
    }
    return words;
}

} // namespace tidewell
