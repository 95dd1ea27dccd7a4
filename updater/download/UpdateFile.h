#pragma once

#include "updater/download/UpdateFailure.h"
#include "updater/feed/Appcast.h"

#include <atomic>
#include <optional>

namespace tidewell {

// What is done with the files of updates. These functions block for as long as the disk does;
// any thread.

/// Sees to it that a folder is there, is this user's and that nobody else gets in.
std::optional<UpdateFailure> makePrivateFolder(const QString& folder);

/// What the file of a release is called: the last part of its address, without anything that would
/// mean something to a shell or a file system.
QString fileNameOf(const AppcastItem& item);

/// Whether `digest` is that of the file that the developers signed.
std::optional<UpdateFailure> verify(const FileDigest& digest, const AppcastItem& item,
                                    const PublicKey& key);

/// The same of a file on the disk. Ends early, as a failure, once `stop` is set.
std::optional<UpdateFailure> verifyFile(const QString& path, const AppcastItem& item,
                                        const PublicKey& key, const std::atomic<bool>& stop);

/// Puts `file` in the place of `appImage`, or of what that links to, at once and as a whole: it is
/// copied into the same folder, verified again while that is done, and renamed. What fails, is no
/// AppImage or is stopped leaves everything as it was.
std::optional<UpdateFailure> replaceAppImage(const QString& appImage, const QString& file,
                                             const AppcastItem& item, const PublicKey& key,
                                             const std::atomic<bool>& stop);

} // namespace tidewell
