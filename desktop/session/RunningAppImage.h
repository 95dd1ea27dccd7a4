#pragma once

#include <filesystem>

namespace tidewell {

/// The AppImage that this program runs from, an absolute path; empty where it runs from none. An
/// AppImage that merely started this program does not count.
std::filesystem::path runningAppImage();

} // namespace tidewell
