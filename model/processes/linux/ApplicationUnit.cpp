#include "model/processes/linux/ApplicationUnit.h"

#include "base/text/Words.h"

namespace tidewell {

namespace {

std::optional<unsigned> hexDigit(char character) {
    if (character >= '0' && character <= '9') {
        return character - '0';
    }
    if (character >= 'a' && character <= 'f') {
        return character - 'a' + 10;
    }
    return std::nullopt;
}

/// Unit names write as \xHH what they may not contain.
std::string unescaped(std::string_view text) {
    std::string result;
    while (!text.empty()) {
        if (text.size() >= 4 && text.starts_with("\\x")) {
            const auto high = hexDigit(text[2]);
            const auto low = hexDigit(text[3]);
            if (high && low) {
                result += static_cast<char>(*high * 16 + *low);
                text.remove_prefix(4);
                continue;
            }
        }
        result += text.front();
        text.remove_prefix(1);
    }
    return result;
}

} // namespace

std::optional<ApplicationUnit> parseApplicationUnit(std::string_view name) {
    std::string_view rest = name;
    if (!rest.starts_with("app-")) {
        return std::nullopt;
    }
    rest.remove_prefix(4);
    if (rest.ends_with(".service")) {
        rest = rest.substr(0, rest.size() - 8);
        rest = rest.substr(0, rest.find('@'));
    } else if (rest.ends_with(".scope")) {
        // Without a random part it would be no application's, but an identifier's last part.
        const auto random = rest.rfind('-');
        if (random == std::string_view::npos) {
            return std::nullopt;
        }
        rest = rest.substr(0, random);
    } else {
        return std::nullopt;
    }
    if (rest.empty()) {
        return std::nullopt;
    }

    // The identifier's own hyphens are escaped, so that it is split off before it is unescaped.
    ApplicationUnit unit{.name = std::string(name), .identifiers = {}};
    const auto launcher = rest.find('-');
    if (launcher != std::string_view::npos) {
        unit.identifiers.push_back(unescaped(rest.substr(launcher + 1)));
    }
    unit.identifiers.push_back(unescaped(rest));
    return unit;
}

std::optional<ApplicationUnit> applicationUnitOf(std::string_view cgroupFile) {
    // A line for each hierarchy, "NUMBER:CONTROLLERS:PATH"; units are in one of them.
    while (!cgroupFile.empty()) {
        std::string_view line = takeLine(cgroupFile);
        for (;;) {
            const auto slash = line.rfind('/');
            if (slash == std::string_view::npos) {
                break;
            }
            if (auto unit = parseApplicationUnit(line.substr(slash + 1))) {
                return unit;
            }
            line = line.substr(0, slash);
        }
    }
    return std::nullopt;
}

} // namespace tidewell
