#pragma once

#include "updater/download/Fetch.h"
#include "updater/feed/Appcast.h"

#include <atomic>

namespace tidewell {

/// Brings the file of one release into `folder`, which is used by nobody else, and gives its path.
/// It gets its own name only once it was verified. Everything else in that folder is removed first,
/// and of a download that fails or is called off nothing stays behind. A file that is there
/// already, and is the right one, is not fetched again. Blocks; any thread. `received` says how
/// many bytes there are so far. The cause of a failure is an `UpdateProblem`.
Result<QString> download(const FetchSettings& settings, const QString& folder,
                         const AppcastItem& item, const PublicKey& key,
                         std::atomic<qint64>& received, const std::stop_token& stop);

/// Whether a download was cut off there when its program was killed. Reads one inode.
bool hasUnverified(const QString& folder);
/// Removes what was left of it. Blocks; any thread, while nothing is downloaded there.
void removeUnverified(const QString& folder);

} // namespace tidewell
