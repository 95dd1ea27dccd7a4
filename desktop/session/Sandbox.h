#pragma once

#include <filesystem>

namespace tidewell {

/// What keeps this program from the rest of the system: Flatpak, Snap, or nothing.
class Sandbox {
public:
    /// Looks for it below `root`, the root of the file system, and in the environment.
    explicit Sandbox(const std::filesystem::path& root);

    /// Whether there is one, so that the user's files are out of reach.
    bool isThere() const { return isFlatpak_ || isSnap_; }
    /// Whether /proc tells of this program's own processes only.
    bool hidesProcesses() const { return hidesProcesses_; }

private:
    bool isFlatpak_;
    bool isSnap_;
    bool hidesProcesses_;
};

} // namespace tidewell
