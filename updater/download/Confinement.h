#pragma once

#include <string>
#include <vector>

namespace tidewell {

/// Takes from this process what a program that only fetches does not need, for good and for all of
/// its threads: gaining rights, writing to files, reading what is not below one of `readable`,
/// starting programs and processes, looking into others, and more than `memory`, file descriptors
/// and processor time. Before the first thread. Gives what this kernel cannot do of it, empty where
/// it can do all.
std::string confine(const std::vector<std::string>& readable);

} // namespace tidewell
