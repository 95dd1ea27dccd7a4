#pragma once

#include "base/values/ThemeIcon.h"
#include "model/processes/linux/CommandLine.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tidewell {

/// What a desktop entry tells of its application, as far as it is used here.
struct DesktopEntry {
    std::optional<std::string> name; ///< in the user's language, if it has that; one line
    std::optional<ThemeIcon> icon;
    Program program;         ///< of `Exec`
    std::string tryProgram;  ///< `TryExec`: a name or a path
    std::string windowClass; ///< `StartupWMClass`
    bool isHidden = false;   ///< `Hidden`: counts as deleted
    bool isShown = true;     ///< in menus: no `NoDisplay`
    bool isTerminal = false; ///< a terminal emulator, by `Categories`
};

/// The languages in which entries may be written for a locale "lang_COUNTRY.ENCODING@MODIFIER",
/// the best first; none for locales without a language.
std::vector<std::string> entryLanguages(std::string_view locale);

/// Reads the text of a desktop entry. Empty when it is none, or none of an application.
std::optional<DesktopEntry> parseDesktopEntry(std::string_view text,
                                              const std::vector<std::string>& languages);

} // namespace tidewell
