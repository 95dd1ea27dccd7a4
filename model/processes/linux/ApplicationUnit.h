#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tidewell {

/// The unit of the service manager in which a desktop started an application.
struct ApplicationUnit {
    /// The unit's name, the same for all processes of one start of the application.
    std::string name;
    /// What the application's desktop entry may be called, likelier names first. More than one,
    /// because desktops leave out the launcher, and some put identifiers in as they are.
    std::vector<std::string> identifiers;

    bool operator==(const ApplicationUnit&) const = default;
};

/// Reads a unit's name, "app-LAUNCHER-ID-RANDOM.scope" or "app-LAUNCHER-ID@RANDOM.service", the
/// launcher and the service's random part optional. Empty for any other unit.
std::optional<ApplicationUnit> parseApplicationUnit(std::string_view name);

/// The innermost such unit in the text of a process's cgroup file.
std::optional<ApplicationUnit> applicationUnitOf(std::string_view cgroupFile);

} // namespace tidewell
