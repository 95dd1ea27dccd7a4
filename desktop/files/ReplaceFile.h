#pragma once

#include "base/values/Result.h"

#include <filesystem>
#include <string_view>

namespace tidewell {

/// Replaces `file`, or creates it, with mode 0600; missing folders are created with mode 0700.
/// Whatever fails or is interrupted, a reader finds either what was there before or all of
/// `content`, which has reached the disk when this succeeds. Uses the name of `file` with ".new"
/// appended for the time being, so one program at a time. Any thread. Does not follow a symbolic
/// link: it would be replaced.
Result<> replaceFile(const std::filesystem::path& file, std::string_view content);

} // namespace tidewell
