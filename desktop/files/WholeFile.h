#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>
#include <variant>

namespace tidewell {

/// The bytes of a regular file of at most `limit` bytes, or why there are none: `EFBIG` when it is
/// larger, `EISDIR` or `ENOTSUP` when it is no regular file. Never waits for a pipe's other end.
std::variant<std::string, std::error_code> readWholeFile(const std::filesystem::path& file,
                                                         std::size_t limit);

/// Replaces `file`, or creates it, with mode 0600; missing folders are created with mode 0700.
/// Whatever fails or is interrupted, a reader finds either what was there before or all of
/// `content`, which has reached the disk when this returns no error. Uses the name of `file` with
/// ".new" appended for the time being, so one program at a time. Does not follow a symbolic link:
/// it would be replaced.
std::error_code replaceFile(const std::filesystem::path& file, std::string_view content);

} // namespace tidewell
