#pragma once

#include "base/values/Result.h"

#include <string>

namespace tidewell {

/// What a tool left behind when it exited.
struct ToolResult {
    int status;                 ///< its exit status, or the number of the signal that ended it
    std::string standardOutput; ///< bytes, of any encoding; empty when they could not be read
    std::string standardError;  ///< likewise
};

/// Runs one program, without arguments, in this program's environment.
class ToolRunner {
public:
    explicit ToolRunner(std::string path)
        : path_(std::move(path)) {}

    /// Starts the tool with posix_spawn and blocks until it has exited, however long that takes and
    /// however much it writes. Child processes that it leaves behind with the pipes open are not
    /// waited for. Any thread; the process must not ignore SIGCHLD, or there is no exit status.
    Result<ToolResult> run() const;

private:
    std::string path_;
};

} // namespace tidewell
