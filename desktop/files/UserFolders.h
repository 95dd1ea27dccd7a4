#pragma once

#include <filesystem>
#include <string_view>

namespace tidewell {

/// The path of a file in a local folder that only this user can enter, for what goes with the
/// session: $XDG_RUNTIME_DIR, or else /tmp/tidewell-UID, which is made if need be. Empty where
/// neither is a folder of the user's with mode 0700.
std::filesystem::path runtimeFile(std::string_view name);

/// The folder of the user's configuration files, whether or not it exists.
std::filesystem::path configurationFolder();

} // namespace tidewell
