#pragma once

#include "base/values/Result.h"

#include <QByteArrayView>
#include <QString>
#include <QUrl>

#include <chrono>
#include <functional>
#include <stop_token>
#include <string>

namespace tidewell {

/// What fetches files for the updater, and for how long it is waited for.
struct FetchSettings {
    QString program;     ///< the path of tidewell-fetch
    QString authorities; ///< certificates to trust besides the system's, a PEM file; may be empty
    std::chrono::milliseconds silence{std::chrono::seconds(20)}; ///< longest without a byte
    std::chrono::milliseconds feedLimit{std::chrono::minutes(1)};
    std::chrono::milliseconds fileLimit{std::chrono::hours(6)};
};

/// Fetches what is at an address, in a process of its own that ends with this call, and hands it to
/// `take` piece by piece. Blocks; any thread. Ends early when that fails, after `limit`, and once
/// `stop` is requested. Gives what the program had to remark, mostly nothing. The cause of a
/// failure is an `UpdateProblem`.
Result<std::string> fetch(const FetchSettings& settings, const QUrl& address,
                          std::chrono::milliseconds limit, const std::stop_token& stop,
                          const std::function<Result<>(QByteArrayView piece)>& take);

} // namespace tidewell
