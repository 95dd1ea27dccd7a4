#include "base/text/UserLocale.h"

#include <cstdlib>

namespace tidewell {

// ICU's own default follows LC_MESSAGES alone, which would show English numbers and times
// to everyone who keeps the texts English and the formats those of home.
std::string userLocale(LocaleCategory category) {
    const char* own = category == LocaleCategory::numbers ? "LC_NUMERIC"
                      : category == LocaleCategory::time  ? "LC_TIME"
                                                          : "LC_MESSAGES";
    for (const char* variable : {"LC_ALL", own, "LANG"}) {
        const char* name = std::getenv(variable);
        if (name != nullptr && *name != '\0') {
            return name;
        }
    }
    return "POSIX";
}

} // namespace tidewell
