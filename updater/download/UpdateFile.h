#pragma once

#include "base/values/Result.h"
#include "updater/feed/Appcast.h"

#include <optional>
#include <stop_token>

namespace tidewell {

// What is done with the files of updates. These functions block for as long as the disk does;
// any thread. The causes of failures are `UpdateProblem`s.

/// Sees to it that a folder is there, is this user's and that nobody else gets in.
Result<> makePrivateFolder(const QString& folder);

/// What the file of a release is called: the last part of its address, without anything that would
/// mean something to a shell or a file system.
QString fileNameOf(const AppcastItem& item);

/// Whether `digest` is that of the file that the developers signed.
Result<> verify(const FileDigest& digest, const AppcastItem& item, const PublicKey& key);

/// The same of a file on the disk. Ends early, as a failure, once `stop` is requested.
Result<> verifyFile(const QString& path, const AppcastItem& item, const PublicKey& key,
                    const std::stop_token& stop);

/// Tells whether a path still leads to the same file with the same content.
struct FileIdentity {
    quint64 device;
    quint64 inode;
    qint64 length;
    qint64 changed; ///< nanoseconds
    bool operator==(const FileIdentity&) const = default;
};
std::optional<FileIdentity> identityOf(const QString& path);

/// Puts `file` in the place of `appImage`, or of what that links to, at once and as a whole: it is
/// copied into the same folder, verified again while that is done, and renamed. What fails, is no
/// AppImage or is stopped leaves everything as it was.
Result<> replaceAppImage(const QString& appImage, const QString& file, const AppcastItem& item,
                         const PublicKey& key, const std::stop_token& stop);

} // namespace tidewell
