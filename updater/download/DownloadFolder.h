#pragma once

#include "base/values/FileDescriptor.h"
#include "base/values/Result.h"

#include <QString>

namespace tidewell {

/// The private folder that updates are downloaded into, held by its descriptor: whatever becomes of
/// its path meanwhile, nothing outside of it is read, written or removed. Blocks; any thread. The
/// cause of a failure is `UpdateProblem::cannotStore`.
class DownloadFolder {
public:
    /// Makes the folder if it is not there, and sees to it that nobody else gets in: it has to be
    /// this user's, and no folder above it may be another's to change.
    static Result<DownloadFolder> open(const QString& path);

    /// `flags` as for open(2). Neither follows a link nor opens what is no file.
    Result<FileDescriptor> file(const QString& name, int flags) const;
    Result<> rename(const QString& from, const QString& to) const;
    void remove(const QString& name) const;
    /// Removes everything but one file.
    void clear(const QString& kept) const;

    /// Where a file of this folder is, for other programs.
    QString pathOf(const QString& name) const { return path_ + u'/' + name; }

private:
    DownloadFolder(QString path, FileDescriptor descriptor)
        : path_(std::move(path))
        , descriptor_(std::move(descriptor)) {}

    QString path_;
    FileDescriptor descriptor_;
};

} // namespace tidewell
