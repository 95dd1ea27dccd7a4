#include "base/ports/Log.h"

namespace tidewell {

namespace {

/// The last non-empty piece of `path` between slashes, or "Unknown" when there is none.
std::string_view lastComponent(std::string_view path) {
    const auto end = path.find_last_not_of('/');
    if (end == std::string_view::npos) {
        return "Unknown";
    }
    const auto slash = path.rfind('/', end);
    const auto start = slash == std::string_view::npos ? 0 : slash + 1;
    return path.substr(start, end + 1 - start);
}

} // namespace

void logMessage(Log& log, std::string_view message, std::string_view category,
                std::string_view file, std::string_view function, std::int64_t line,
                LogLevel level) {
    if (!log.isEnabled(level)) {
        return;
    }
    log.write({category, lastComponent(file), function, line, message, level});
}

} // namespace tidewell
