#pragma once

#include "base/values/Interface.h"

#include <cstdint>
#include <source_location>
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
class Log : public Interface {
public:
    virtual bool isEnabled(LogLevel level) const = 0;
    /// Called only for enabled levels.
    virtual void write(const LogRecord& record) = 0;
};

/// Logs a message. Of `file`, a source path, the last component is logged. `function` is what the
/// line calls its caller: a name and the names of the arguments, "show(title:subtitle:body:)". When
/// the level is off, nothing is made of all this. Any thread.
void logMessage(Log& log, std::string_view message, std::string_view category,
                std::string_view file, std::string_view function, std::int64_t line,
                LogLevel level);

// The same with the file and the line of the call.

inline void logInfo(Log& log, std::string_view message, std::string_view function,
                    std::string_view category = "general",
                    std::source_location call = std::source_location::current()) {
    logMessage(log, message, category, call.file_name(), function, call.line(), LogLevel::info);
}
inline void logError(Log& log, std::string_view message, std::string_view function,
                     std::string_view category = "general",
                     std::source_location call = std::source_location::current()) {
    logMessage(log, message, category, call.file_name(), function, call.line(), LogLevel::error);
}

} // namespace tidewell
