#include "updater/download/DownloadFolder.h"

#include "base/values/OpenFolder.h"
#include "updater/UpdateProblem.h"

#include <QFile>
#include <QFileInfo>

#include <array>
#include <cerrno>
#include <string_view>
#include <utility>

#include <fcntl.h>
#include <grp.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tidewell {

namespace {

tl::unexpected<Error> systemFailure(const QString& path) {
    const int error = errno;
    return failure(path.toStdString() + ": " + std::generic_category().message(error),
                   UpdateProblem::cannotStore);
}

/// Whether a group is nobody else's: many systems give each user one of their own name, and some
/// have their folders writable for it.
bool isOwnGroup(gid_t number) {
    std::array<char, 16384> names{};
    std::array<char, 16384> groupNames{};
    passwd user{};
    passwd* known = nullptr;
    group owners{};
    group* knownOwners = nullptr;
    if (::getpwuid_r(::geteuid(), &user, names.data(), names.size(), &known) != 0 ||
        ::getgrgid_r(number, &owners, groupNames.data(), groupNames.size(), &knownOwners) != 0 ||
        known == nullptr || knownOwners == nullptr) {
        return false;
    }
    const std::string_view name = user.pw_name;
    bool isShared = false;
    for (char** member = owners.gr_mem; *member != nullptr; ++member) {
        isShared = isShared || *member != name;
    }
    return owners.gr_name == name && !isShared;
}

/// Whether others can put something else in the place of what is in a folder.
bool isOthersToChange(const struct stat& folder) {
    const bool isForOthers =
        (folder.st_mode & S_IWGRP) != 0 && folder.st_gid != 0 && !isOwnGroup(folder.st_gid);
    return (folder.st_uid != 0 && folder.st_uid != ::geteuid()) ||
           ((isForOthers || (folder.st_mode & S_IWOTH) != 0) && (folder.st_mode & S_ISVTX) == 0);
}

/// Whether nobody but this user and root can put something else in a folder's place.
bool isSafeBelow(const QString& folder) {
    for (QString path = folder;; path = QFileInfo(path).path()) {
        struct stat status{};
        if (::stat(QFile::encodeName(path).constData(), &status) != 0 || isOthersToChange(status)) {
            return false;
        }
        if (path == QStringLiteral("/")) {
            return true;
        }
    }
}

/// Makes a folder, and those above it, where they are not there: this user's alone, as everything
/// below is, whatever the umask says.
bool makePrivately(const QString& folder) {
    const QFileInfo wanted(folder);
    return wanted.isDir() ||
           (makePrivately(wanted.path()) &&
            (::mkdir(QFile::encodeName(folder).constData(), S_IRWXU) == 0 || wanted.isDir()));
}

} // namespace

Result<DownloadFolder> DownloadFolder::open(const QString& path) {
    const QString above = QFileInfo(path).path();
    if (!makePrivately(above)) {
        return systemFailure(above);
    }
    const QString parent = QFileInfo(above).canonicalFilePath();
    if (!isSafeBelow(parent)) {
        return failure("others can change a folder above " + path.toStdString(),
                       UpdateProblem::cannotStore);
    }
    const QString real = parent + u'/' + QFileInfo(path).fileName();
    const QByteArray name = QFile::encodeName(real);
    if (::mkdir(name.constData(), S_IRWXU) != 0 && errno != EEXIST) {
        return systemFailure(real);
    }
    FileDescriptor folder(
        ::open(name.constData(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    struct stat status{};
    if (!folder.isOpen() || ::fstat(folder.get(), &status) != 0) {
        return systemFailure(real);
    }
    if (status.st_uid != ::geteuid()) {
        return failure(real.toStdString() + " is not this user's", UpdateProblem::cannotStore);
    }
    if (::fchmod(folder.get(), S_IRWXU) != 0) {
        return systemFailure(real);
    }
    return DownloadFolder(real, std::move(folder));
}

Result<FileDescriptor> DownloadFolder::file(const QString& name, int flags) const {
    // A pipe that somebody put here is not waited for.
    FileDescriptor file(::openat(descriptor_.get(), QFile::encodeName(name).constData(),
                                 flags | O_NOFOLLOW | O_CLOEXEC | O_NONBLOCK, S_IRUSR | S_IWUSR));
    struct stat status{};
    if (!file.isOpen() || ::fstat(file.get(), &status) != 0) {
        return systemFailure(pathOf(name));
    }
    if (!S_ISREG(status.st_mode)) {
        return failure(pathOf(name).toStdString() + " is no file", UpdateProblem::cannotStore);
    }
    return file;
}

Result<> DownloadFolder::rename(const QString& from, const QString& to) const {
    return ::renameat(descriptor_.get(), QFile::encodeName(from).constData(), descriptor_.get(),
                      QFile::encodeName(to).constData()) == 0
               ? Result<>()
               : systemFailure(pathOf(to));
}

void DownloadFolder::remove(const QString& name) const {
    ::unlinkat(descriptor_.get(), QFile::encodeName(name).constData(), 0);
}

void DownloadFolder::clear(const QString& kept) const {
    // By a descriptor of its own: reading moves the position that both copies of one have.
    const int again = ::openat(descriptor_.get(), ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    const OpenFolder entries(::fdopendir(again));
    if (!entries) {
        ::close(again);
        return;
    }
    while (const dirent* entry = ::readdir(entries.get())) { // NOLINT(concurrency-mt-unsafe)
        if (QFile::decodeName(entry->d_name) != kept &&
            ::unlinkat(descriptor_.get(), entry->d_name, 0) != 0) {
            ::unlinkat(descriptor_.get(), entry->d_name, AT_REMOVEDIR); // none of ours
        }
    }
}

} // namespace tidewell
