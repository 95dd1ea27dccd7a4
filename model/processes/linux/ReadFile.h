#pragma once

#include <cstddef>
#include <optional>
#include <string>

namespace tidewell {

/// The first `limit` bytes of the file `path`, which is relative to the open directory
/// `directory`. Empty when it cannot be read or is no regular file, which could make one wait.
std::optional<std::string> readFile(int directory, const char* path, std::size_t limit);

} // namespace tidewell
