#pragma once

#include <string>
#include <vector>

namespace tidewell {

/// Confines this process for good to what fetching needs, by no_new_privs, Landlock, seccomp and
/// resource limits: no new privileges, no writing to files, no reading outside of `readable`, no
/// exec, fork or ptrace, nothing done to another process, and little memory, processor time and few
/// file descriptors. To be called before the first thread is started. `readable` may name links,
/// and what is not there. Gives the names of those means that lack, empty where none does: kernels
/// have Landlock since 5.13, and seccomp's list is one for 64-bit Arm and Intel processors.
std::string confine(const std::vector<std::string>& readable);

} // namespace tidewell
