#include "model/processes/linux/ApplicationUnit.h"

#include "base/text/Words.h"

#include <charconv>

namespace tidewell {

namespace {

/// Unit names write as \xHH what they may not contain.
std::string unescaped(std::string_view text) {
    std::string result;
    while (!text.empty()) {
        unsigned value = 0;
        if (text.size() >= 4 && text.starts_with("\\x") &&
            std::from_chars(text.data() + 2, text.data() + 4, value, 16).ptr == text.data() + 4) {
            result += static_cast<char>(value);
            text.remove_prefix(4);
        } else {
            result += text.front();
            text.remove_prefix(1);
        }
    }
    return result;
}

/// "snap.NAME.APP-UUID.scope" or "snap.NAME.APP.UUID.scope"; services have no UUID.
std::optional<ApplicationUnit> parseSnapUnit(std::string_view name) {
    std::string_view rest = name.substr(std::string_view("snap.").size());
    rest = rest.substr(0, rest.rfind('.'));
    constexpr std::size_t uuidSize = 36;
    if (name.ends_with(".scope") && rest.size() > uuidSize + 1) {
        rest.remove_suffix(uuidSize + 1);
    }
    const auto dot = rest.find('.');
    if (dot == 0 || dot == std::string_view::npos || dot + 1 == rest.size()) {
        return std::nullopt;
    }
    std::string identifier(rest);
    identifier[dot] = '_';
    return ApplicationUnit{
        .name = std::string(name), .identifiers = {std::move(identifier)}, .isSandbox = true};
}

} // namespace

std::optional<ApplicationUnit> parseApplicationUnit(std::string_view name) {
    const bool isService = name.ends_with(".service");
    if (!isService && !name.ends_with(".scope")) {
        return std::nullopt;
    }
    if (name.starts_with("snap.")) {
        return parseSnapUnit(name);
    }
    constexpr std::string_view prefix = "app-";
    if (!name.starts_with(prefix)) {
        return std::nullopt;
    }
    std::string_view rest = name.substr(prefix.size(), name.rfind('.') - prefix.size());
    // A scope without a random part would be no application's, but an identifier's last part.
    const auto random = isService ? rest.find('@') : rest.rfind('-');
    if (!isService && random == std::string_view::npos) {
        return std::nullopt;
    }
    rest = rest.substr(0, random);
    if (rest.empty()) {
        return std::nullopt;
    }

    // The identifier's own hyphens are escaped, so it is split off before it is unescaped.
    ApplicationUnit unit{.name = std::string(name), .identifiers = {}};
    const auto launcher = rest.find('-');
    if (launcher != std::string_view::npos) {
        unit.isSandbox = rest.substr(0, launcher) == "flatpak";
        unit.identifiers.push_back(unescaped(rest.substr(launcher + 1)));
    }
    unit.identifiers.push_back(unescaped(rest));
    return unit;
}

std::string_view innermostUnit(std::string_view cgroupFile) {
    // A line for each hierarchy, "NUMBER:CONTROLLERS:PATH"; units are in one of them.
    while (!cgroupFile.empty()) {
        std::string_view line = takeLine(cgroupFile);
        for (;;) {
            const auto slash = line.rfind('/');
            if (slash == std::string_view::npos) {
                break;
            }
            const auto name = line.substr(slash + 1);
            if (name.ends_with(".scope") || name.ends_with(".service")) {
                return name;
            }
            line = line.substr(0, slash);
        }
    }
    return {};
}

} // namespace tidewell
