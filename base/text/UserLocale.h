#pragma once

#include <string>

namespace tidewell {

/// What the user may have chosen a locale of its own for.
enum class LocaleCategory { numbers, time, messages };

/// The name of the user's locale for `category`, as the environment gives it ("de_DE.UTF-8"):
/// LC_ALL, else the category's own variable, else LANG, each only when it may be a locale's name;
/// "POSIX" when there is none. Read anew by every call. Any thread, as long as none changes the
/// environment.
std::string userLocale(LocaleCategory category);

} // namespace tidewell
