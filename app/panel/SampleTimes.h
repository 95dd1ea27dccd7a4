#pragma once

#include <QString>

#include <cstddef>
#include <vector>

namespace tidewell {

// What the times of a history say, oldest first, in seconds. Pure.

/// The samples before which there is a gap: more than three intervals without one, since the
/// machine slept or the program did not run. The interval is the median of those between
/// neighbours.
std::vector<std::size_t> gapsBefore(const std::vector<double>& times);

/// How far the history reaches back, such as "last 1 h 40 min", in the user's language; empty below
/// two samples, and below half a second.
QString spanText(const std::vector<double>& times);

} // namespace tidewell
