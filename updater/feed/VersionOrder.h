#pragma once

#include <compare>
#include <string_view>

namespace tidewell {

/// Compares two versions. A version is numbers separated by full stops, then perhaps a pre-release,
/// as in Semantic Versioning, but with any count of numbers:
///
///   1.9 < 1.10-beta.2 < 1.10-beta.11 < 1.10-rc < 1.10 = 1.10.0 = 1.10+build7 < 1.10.1
///
/// Missing numbers count as 0, and numbers may have any length. In a pre-release, numbers are less
/// than words, and a shorter one that the longer begins with is less. Build metadata, from the plus
/// sign on, is ignored. Any two texts can be compared: one without a leading digit counts as a
/// pre-release of 0. Pure.
std::weak_ordering compareVersions(std::string_view left, std::string_view right);

/// Whether a text has the form of the versions that are released: at most 64 ASCII letters, digits,
/// full stops, hyphens and plus signs, beginning with a digit.
bool isVersion(std::string_view text);

} // namespace tidewell
