#pragma once

#include <system_error>

namespace tidewell {

/// What an update can fail at: the cause of every error of the updater, and the exit status of
/// `tidewell-fetch`, for which the numbers keep clear of those that shells and the loader use.
enum class UpdateProblem {
    broken = 10, ///< a part of the program is missing, was started wrongly or crashed
    unreachable, ///< no such host, no connection, or it broke off
    untrusted,   ///< the server's certificate was not accepted
    refused,     ///< the server answered, but not with the file
    badRedirect, ///< redirected too often, or to somewhere less safe
    timedOut,    ///< nothing came for too long, or too little altogether
    // From here on not of the fetching program.
    unsignedFeed,   ///< the list of releases is not what the developers signed
    oldFeed,        ///< it has expired, or a newer one was seen before
    badFeed,        ///< what came is no list of releases
    wrongLength,    ///< the file is not as long as the feed says
    wrongSignature, ///< the file is not what the developers signed
    cannotStore,    ///< no place to put the file
    cannotReplace,  ///< the program's own file could not be replaced
    noHandler,      ///< the desktop has nothing to open the file with
    notStarted,     ///< the updater is set up wrongly
};

/// The category of `UpdateProblem`. `SPUStandardUserDriver` has the words for the user.
const std::error_category& updateProblems();

// NOLINTNEXTLINE(readability-identifier-naming): the name that std::error_code looks for
inline std::error_code make_error_code(UpdateProblem problem) {
    return {static_cast<int>(problem), updateProblems()};
}

} // namespace tidewell

template <>
struct std::is_error_code_enum<tidewell::UpdateProblem> : std::true_type {};
