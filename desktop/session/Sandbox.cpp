#include "desktop/session/Sandbox.h"

#include "desktop/files/RunningProgram.h"

#include <fstream>

namespace tidewell {

namespace {

bool isFile(const std::filesystem::path& path) {
    std::error_code error;
    return std::filesystem::exists(path, error);
}

} // namespace

// Flatpak gives each program process numbers of its own. A Snap sees the files of all processes,
// but may read those of others only where the user allowed it.
Sandbox::Sandbox(const std::filesystem::path& root)
    : isFlatpak_(isFile(root / ".flatpak-info"))
    , isSnap_(runsBelow("SNAP"))
    , hidesProcesses_(isFlatpak_ || (isSnap_ && !std::ifstream(root / "proc/1/stat").is_open())) {}

} // namespace tidewell
