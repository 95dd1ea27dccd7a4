#include "model/processes/linux/DesktopEntry.h"

#include "base/text/Words.h"
#include "model/processes/linux/ReadableLine.h"

#include <algorithm>
#include <array>

namespace tidewell {

namespace {

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view blanks = " \t\r";
    text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size()));
    return text.substr(0, text.find_last_not_of(blanks) + 1);
}

std::string unescaped(std::string_view value) {
    std::string result;
    for (std::size_t i = 0; i < value.size(); ++i) {
        if (value[i] != '\\' || i + 1 == value.size()) {
            result += value[i];
            continue;
        }
        switch (value[++i]) {
        case 's':
            result += ' ';
            break;
        case 'n':
            result += '\n';
            break;
        case 't':
            result += '\t';
            break;
        case 'r':
            result += '\r';
            break;
        case '\\':
            result += '\\';
            break;
        default:
            (result += '\\') += value[i]; // `Exec` has escapes of its own
        }
    }
    return result;
}

/// An icon's name in the theme, or an absolute path. Some entries give the name an extension.
std::string iconOf(std::string value) {
    if (!value.starts_with('/')) {
        for (const std::string_view extension : {".png", ".svg", ".xpm"}) {
            if (value.ends_with(extension)) {
                value.resize(value.size() - extension.size());
            }
        }
    }
    return value;
}

/// The values of the keys that are used, in the first group of their name.
struct Values {
    std::string_view type;
    std::string_view name;
    std::size_t nameRank = 0; // the lower, the better the language
    std::string_view icon;
    std::string_view exec;
    std::string_view tryExec;
    std::string_view windowClass;
    std::string_view hidden;
    std::string_view noDisplay;
    std::string_view categories;
};

struct Key {
    std::string_view name;
    std::string_view Values::* value;
};

constexpr std::array keys{
    Key{"Type", &Values::type},
    Key{"Icon", &Values::icon},
    Key{"Exec", &Values::exec},
    Key{"TryExec", &Values::tryExec},
    Key{"StartupWMClass", &Values::windowClass},
    Key{"Hidden", &Values::hidden},
    Key{"NoDisplay", &Values::noDisplay},
    Key{"Categories", &Values::categories},
};

/// How good a name is that stands under `key`, "Name" or "Name[LANGUAGE]"; empty for other keys.
std::optional<std::size_t> rankOfName(std::string_view key,
                                      const std::vector<std::string>& languages) {
    if (key == "Name") {
        return languages.size();
    }
    if (!key.starts_with("Name[") || !key.ends_with(']')) {
        return std::nullopt;
    }
    const auto language = std::ranges::find(languages, key.substr(5, key.size() - 6));
    return language == languages.end()
               ? std::nullopt
               : std::optional(static_cast<std::size_t>(language - languages.begin()));
}

std::optional<Values> readValues(std::string_view text, const std::vector<std::string>& languages) {
    while (trimmed(takeLine(text)) != "[Desktop Entry]") {
        if (text.empty()) {
            return std::nullopt;
        }
    }
    Values values;
    values.nameRank = languages.size() + 1;
    while (!text.empty()) {
        const std::string_view line = trimmed(takeLine(text));
        if (line.starts_with('[')) {
            break;
        }
        const auto equals = line.find('=');
        if (line.starts_with('#') || equals == std::string_view::npos) {
            continue;
        }
        const std::string_view key = trimmed(line.substr(0, equals));
        const std::string_view value = trimmed(line.substr(equals + 1));
        if (const auto rank = rankOfName(key, languages)) {
            if (*rank < values.nameRank && !value.empty()) {
                values.name = value;
                values.nameRank = *rank;
            }
        } else if (const auto* known = std::ranges::find(keys, key, &Key::name);
                   known != keys.end()) {
            values.*known->value = value;
        }
    }
    return values;
}

} // namespace

std::vector<std::string> entryLanguages(std::string_view locale) {
    const auto at = locale.find('@');
    const std::string modifier(at == std::string_view::npos ? "" : locale.substr(at));
    const std::string_view plain = locale.substr(0, at).substr(0, locale.find('.'));
    const std::string country(plain);
    const std::string language(plain.substr(0, plain.find('_')));
    if (language.empty() || language == "C" || language == "POSIX") {
        return {};
    }
    std::vector<std::string> languages;
    for (const std::string& place : {country, language}) {
        languages.push_back(place + modifier);
        if (!modifier.empty()) {
            // lang_COUNTRY@MODIFIER, lang_COUNTRY, lang@MODIFIER, lang.
            languages.push_back(place);
        }
    }
    return languages;
}

std::optional<DesktopEntry> parseDesktopEntry(std::string_view text,
                                              const std::vector<std::string>& languages) {
    const auto values = readValues(text, languages);
    if (!values || (!values->type.empty() && values->type != "Application")) {
        return std::nullopt;
    }
    DesktopEntry entry;
    if (auto name = readableLine(unescaped(values->name)); !name.empty()) {
        entry.name = std::move(name);
    }
    if (!values->icon.empty()) {
        entry.icon = ThemeIcon(iconOf(unescaped(values->icon)));
    }
    entry.program = programOfCommand(splitCommand(unescaped(values->exec)));
    entry.tryProgram = unescaped(values->tryExec);
    entry.windowClass = unescaped(values->windowClass);
    entry.isHidden = values->hidden == "true";
    entry.isShown = values->noDisplay != "true";
    entry.isTerminal = values->categories.find("TerminalEmulator") != std::string_view::npos;
    return entry;
}

} // namespace tidewell
