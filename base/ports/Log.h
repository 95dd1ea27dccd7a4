#pragma once

#include <cstdint>
#include <string_view>

namespace tidewell {

enum class LogLevel {
    info,  ///< normal events
    error, ///< refusals, warnings and failures
};

/// One diagnostic, as `logMessage` hands it to the log. The texts live as long as the call.
struct LogRecord {
    std::string_view category;
    std::string_view file; ///< last component of the source path
    std::string_view function;
    std::int64_t line;
    std::string_view message;
    LogLevel level;
};

/// Where diagnostics go. Any thread; never fails visibly.
class Log {
public:
    Log() = default;
    Log(const Log&) = delete;
    Log& operator=(const Log&) = delete;
    virtual ~Log() = default;

    virtual bool isEnabled(LogLevel level) const = 0;
    /// Called only for enabled levels.
    virtual void write(const LogRecord& record) = 0;
};

/// The one way to log. `file` is the caller's own source path, of which the last component
/// is logged; `function` is the caller's signature as text, for example
/// "show(title:subtitle:body:)"; `line` the caller's own. Does nothing more than asking the log
/// when the level is off. Any thread.
void logMessage(Log& log, std::string_view message, std::string_view category,
                std::string_view file, std::string_view function, std::int64_t line,
                LogLevel level);

} // namespace tidewell
