#include "base/text/UserLocale.h"

#include <cstdlib>
#include <string_view>

namespace tidewell {

namespace {

/// Whether it may be handed on: ICU takes a name with a slash for a file, and crashes.
bool isName(std::string_view text) {
    constexpr std::size_t longest = 100;
    return !text.empty() && text.size() <= longest &&
           text.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789"
                                  "_-.@=;,") == std::string_view::npos;
}

} // namespace

// ICU's own default follows LC_MESSAGES alone, which would show English numbers and times
// to everyone who keeps the texts English and the formats those of home.
std::string userLocale(LocaleCategory category) {
    const char* own = category == LocaleCategory::numbers ? "LC_NUMERIC"
                      : category == LocaleCategory::time  ? "LC_TIME"
                                                          : "LC_MESSAGES";
    for (const char* variable : {"LC_ALL", own, "LANG"}) {
        const char* name = std::getenv(variable);
        if (name != nullptr && isName(name)) {
            return name;
        }
    }
    return "POSIX";
}

} // namespace tidewell
