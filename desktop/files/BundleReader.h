#pragma once

#include "base/ports/Bundle.h"
#include "base/ports/Log.h"

#include <filesystem>

namespace tidewell {

/// The information dictionary of the running program. Its place relative to the executable's is
/// decided when the program is configured, ../share/tidewell/Info.json unless the install folders
/// are chosen otherwise, and is the same in the build tree.
std::filesystem::path installedInfoFile();

/// Reads a JSON object of texts; entries of other types are left out. A file that is missing, not
/// to be read or no JSON object gives a bundle without information and one error line.
Bundle readBundle(const std::filesystem::path& infoFile, Log& log);

/// The identifier that the bundle reports, or the one built into the program when it reports none.
std::string bundleIdentifier(const Bundle& bundle);

} // namespace tidewell
