#pragma once

namespace tidewell {

/// How far swapping has gone, in order of severity.
enum class WarningLevel { none, low, warn, high };

} // namespace tidewell
