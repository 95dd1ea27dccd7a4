#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tidewell {

/// The program that a command is about, which is not always the one that it starts first.
struct Program {
    std::string name; ///< or path; empty for none that tells one application from another
    /// A script that an interpreter runs: its file name (`main.py`) does not identify it.
    bool isScript = false;
    bool hasArguments = false; ///< more than the files that a user may open with it
    /// Does nothing but start another and wait for it: `env`, `bwrap`, `sh -c` and the like.
    bool isWrapper = false;

    bool operator==(const Program&) const = default;
};

/// Splits the `Exec` line of a desktop entry into words, quotation marks resolved; field codes
/// such as %U are left out. An open quotation ends with the line.
std::vector<std::string> splitCommand(std::string_view command);

/// The program of a command as it is written: behind `env` and the like, in what a shell is told to
/// run, or the script that an interpreter is given.
Program programOfCommand(std::vector<std::string> words);

/// The program that a process runs, from its argv, with the executable in place of argv[0].
Program programOfProcess(std::span<const std::string> words);

} // namespace tidewell
