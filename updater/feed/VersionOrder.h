#pragma once

#include <compare>
#include <string_view>

namespace tidewell {

/// How two versions of the program stand to each other. A version is numbers between full stops,
/// of any length, then perhaps a pre-release:
///
///   1.9 < 1.10-beta.2 < 1.10-beta.11 < 1.10-rc < 1.10 = 1.10.0 = 1.10+build7 < 1.10.1
///
/// Missing numbers count as 0. Of pre-releases, numbers are less than words, and a beginning less
/// than the whole. What follows a plus sign does not count. Any two texts can be compared; what
/// does not begin with a digit is less than what does, unless that is a pre-release of 0. Pure.
std::weak_ordering compareVersions(std::string_view left, std::string_view right);

/// Whether a text has the form of a version that we give out: at most 64 letters, digits, full
/// stops, hyphens and plus signs, the first a digit.
bool isVersion(std::string_view text);

} // namespace tidewell
