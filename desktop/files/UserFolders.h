#pragma once

#include <filesystem>

namespace tidewell {

/// The user's home folder.
std::filesystem::path homeFolder();

/// The folder of the user's configuration files, whether or not it exists.
std::filesystem::path configurationFolder();

} // namespace tidewell
