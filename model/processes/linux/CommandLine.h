#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tidewell {

/// The program that a command is about, which is not always the one that it starts first.
struct Program {
    std::string name; ///< or path; empty for none that tells one application from another
    /// A script that an interpreter is given. Files of the same name are many then (`main.py`).
    bool isScript = false;
    bool hasArguments = false; ///< more than the files that a user may open with it
    /// Does nothing but start another and wait for it: `env`, `bwrap`, `sh -c` and the like.
    bool isWrapper = false;

    bool operator==(const Program&) const = default;
};

/// Splits the `Exec` line of a desktop entry into words, quotation marks resolved; codes for files
/// and the like are left out. What is not closed ends with the line.
std::vector<std::string> splitCommand(std::string_view command);

/// The program of a command as it is written: behind `env` and the like, in what a shell is told to
/// run, or the script that an interpreter is given.
Program programOfCommand(std::vector<std::string> words);

/// The program that a process runs, from its words, the first of which is the executable.
Program programOfProcess(std::span<const std::string> words);

} // namespace tidewell
