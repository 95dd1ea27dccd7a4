#pragma once

#include <filesystem>

namespace tidewell {

/// The executable of this process; empty where /proc is missing. Any thread.
std::filesystem::path runningProgram();

/// Whether that lies below the folder which a variable of the environment names with an absolute
/// path. Programs inherit such variables from whatever started them.
bool runsBelow(const char* variable);

/// The AppImage that this program runs from, an absolute path; empty where it runs from none. An
/// AppImage that merely started this program does not count.
std::filesystem::path runningAppImage();

/// The file to start this program from next time: the AppImage that it runs from, or its own
/// executable. An AppImage's executable lies in a mount that goes with the process.
std::filesystem::path installedProgram();

} // namespace tidewell
