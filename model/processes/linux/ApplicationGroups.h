#pragma once

#include "model/processes/linux/Process.h"

#include <span>
#include <vector>

namespace tidewell {

/// The processes of one application.
struct ApplicationGroup {
    Process* leader = nullptr; ///< gives the name where there is no entry
    const DesktopEntry* entry = nullptr;
    std::vector<Process*> members; ///< by number
};

/// Puts the wanted ones of `processes`, which are sorted by number, into the applications that they
/// belong to; these come in the order of their leaders' numbers. What decides, the first that
/// applies:
///
/// 1. a sandbox (Flatpak, Snap, AppImage) holds nothing but its application;
/// 2. the systemd unit that the desktop made for an application, except for programs with a desktop
///    entry of their own and for what was started in a terminal;
/// 3. the desktop entry that names the program, or by which GIO started it;
/// 4. the parent: its application, if it runs the same program or has a desktop entry that is no
///    terminal's, and if the process stayed in the parent's unit and terminal.
///
/// What is left is an application of its own. A wrapper belongs to what it waits for.
std::vector<ApplicationGroup> groupByApplication(std::span<Process> processes);

} // namespace tidewell
