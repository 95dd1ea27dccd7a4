#include "base/ports/Log.h"

#include "base/text/Words.h"

namespace tidewell {

void logMessage(Log& log, std::string_view message, std::string_view category,
                std::string_view file, std::string_view function, std::int64_t line,
                LogLevel level) {
    if (log.isEnabled(level)) {
        const auto name = lastComponent(file);
        log.write({category, name.empty() ? "Unknown" : name, function, line, message, level});
    }
}

} // namespace tidewell
