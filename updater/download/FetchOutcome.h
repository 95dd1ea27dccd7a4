#pragma once

namespace tidewell {

/// How fetching an address ended: what `tidewell-fetch` says with its exit status. The numbers keep
/// clear of those that shells and the loader use.
enum class FetchOutcome {
    complete = 0,
    misused = 10,     ///< the program was started wrongly
    unreachable = 11, ///< no such machine, no connection, or it broke off
    untrusted = 12,   ///< the server could not prove to be the one that was asked
    refused = 13,     ///< the server answered, but not with the file
    badRedirect = 14, ///< sent on too often, or to somewhere less safe
    timedOut = 15,    ///< nothing came for too long, or too little altogether
    tooLarge = 16,    ///< more came than was allowed
    crashed = 17,     ///< the fetching program did not start, or broke down
};

} // namespace tidewell
