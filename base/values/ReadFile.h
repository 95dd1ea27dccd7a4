#pragma once

#include "base/values/Result.h"

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

namespace tidewell {

// Both take a path relative to the open directory `directory`, or to the working directory where
// that is AT_FDCWD. Any thread.

/// The content of a regular file of at most `limit` bytes, read to its end, whatever size the file
/// system reports: in /proc that is 0. The cause of a failure is EFBIG for a larger file, EISDIR or
/// ENOTSUP for what is no regular file. Never waits for the other end of a FIFO.
Result<std::string> readFile(int directory, const char* path, std::size_t limit);

/// The first bytes of a file, in `buffer`, as many as fit: for the kernel's small files, which are
/// read often. Allocates no memory unless it fails.
Result<std::string_view> readStart(int directory, const char* path, std::span<char> buffer);

} // namespace tidewell
