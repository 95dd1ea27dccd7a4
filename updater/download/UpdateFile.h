#pragma once

#include "base/values/Result.h"
#include "updater/download/DownloadFolder.h"
#include "updater/feed/Appcast.h"

#include <stop_token>

namespace tidewell {

// What is done with the files of updates. These functions block for as long as the disk does;
// any thread. The causes of failures are `UpdateProblem`s.

/// What the file of a release is called: after its version, with the extension of its signed type.
QString fileNameOf(const AppcastItem& item);

/// Whether `digest` is that of the file that the developers signed.
Result<> verify(const FileDigest& digest, const AppcastItem& item, const PublicKey& key);

/// The same of the release's file in a folder. Ends early, as a failure, once `stop` is requested.
Result<> verifyFile(const DownloadFolder& folder, const AppcastItem& item, const PublicKey& key,
                    const std::stop_token& stop);

/// Puts the release's file of a folder in the place of `appImage`, or of what that links to, at
/// once and as a whole: it is copied beside it, verified again while that is done, and renamed.
/// What fails, is no AppImage or is stopped leaves everything as it was.
Result<> replaceAppImage(const QString& appImage, const DownloadFolder& folder,
                         const AppcastItem& item, const PublicKey& key,
                         const std::stop_token& stop);

/// What is left beside `appImage` of a replacement during which the program was killed; empty where
/// nothing is.
QString interruptedReplacement(const QString& appImage);

} // namespace tidewell
