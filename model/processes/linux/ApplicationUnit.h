#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tidewell {

/// The systemd unit in which a desktop, Flatpak or Snap started an application.
struct ApplicationUnit {
    std::string name; ///< the same for all processes of one start of the application
    /// What the application's desktop entry may be called, likelier names first. More than one,
    /// because desktops leave out the launcher, and some put identifiers in as they are.
    std::vector<std::string> identifiers;
    bool isSandbox = false; ///< what runs in it is a part of the application, whatever its name

    bool operator==(const ApplicationUnit&) const = default;
};

/// Reads a unit's name: "app-LAUNCHER-ID-RANDOM.scope" or "app-LAUNCHER-ID@RANDOM.service", the
/// launcher and the service's random part optional, or "snap.NAME.APP-UUID.scope". Empty for any
/// other unit.
std::optional<ApplicationUnit> parseApplicationUnit(std::string_view name);

/// The name of the innermost scope or service in the text of a process's "cgroup" file; empty for
/// none. Where that is no application's, the process is no part of one that is further out.
std::string_view innermostUnit(std::string_view cgroupFile);

} // namespace tidewell
