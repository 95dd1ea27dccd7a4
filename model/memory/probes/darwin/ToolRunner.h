#pragma once

#include <string>
#include <variant>

namespace tidewell {

/// What a tool left behind when it exited.
struct ToolResult {
    int status;                 ///< its exit status, or the number of the signal that ended it
    std::string standardOutput; ///< bytes, of any encoding; empty when they could not be read
    std::string standardError;  ///< likewise
};

/// Why a tool could not be run, in words for the log.
struct ToolFailure {
    std::string description;
};

/// Runs one program, without arguments, in this program's environment.
class ToolRunner {
public:
    explicit ToolRunner(std::string path)
        : path_(std::move(path)) {}

    /// Starts the tool and blocks until it has exited, however long that takes; any amount of
    /// output is taken in meanwhile. What the tool leaves running with its output open is not
    /// waited for. Any thread; the process must not ignore SIGCHLD, or there is no exit status.
    std::variant<ToolResult, ToolFailure> run() const;

private:
    std::string path_;
};

} // namespace tidewell
