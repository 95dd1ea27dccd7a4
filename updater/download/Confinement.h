#pragma once

#include <string>
#include <vector>

namespace tidewell {

/// Confines this process for good to what fetching needs, by no_new_privs, Landlock, seccomp and
/// resource limits: no new privileges, no writing to files, no reading outside of `readable`, no
/// exec, fork or ptrace, nothing done to another process, and little memory, processor time and few
/// file descriptors. To be called before the first thread is started. Gives the names of those that
/// this kernel lacks, empty where it has all.
std::string confine(const std::vector<std::string>& readable);

} // namespace tidewell
