#include "updater/download/UpdateFile.h"

#include "updater/UpdateProblem.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QTemporaryFile>

#include <cerrno>
#include <cstdio>
#include <functional>

#include <sys/stat.h>
#include <unistd.h>

namespace tidewell {

namespace {

constexpr qint64 pieceSize = qint64{1} << 20;

tl::unexpected<Error> systemFailure(UpdateProblem problem) {
    return failure(std::generic_category().message(errno), problem);
}

/// Reads a file through a digest, handing each piece on; fails as `use` does.
Result<> readVerified(const QString& path, const AppcastItem& item, const PublicKey& key,
                      const std::stop_token& stop,
                      const std::function<Result<>(const QByteArray&)>& use) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered)) {
        return failure(file.errorString().toStdString(), UpdateProblem::cannotStore);
    }
    FileDigest digest;
    // One byte more than there may be shows that the file is too long.
    while (digest.length() <= item.length) {
        if (stop.stop_requested()) {
            return failure("it was called off", UpdateProblem::broken);
        }
        const QByteArray piece = file.read(std::min(pieceSize, item.length + 1 - digest.length()));
        if (piece.isEmpty()) {
            break;
        }
        digest.add(piece);
        if (auto used = use(piece); !used) {
            return used;
        }
    }
    return verify(digest, item, key);
}

/// Even a file that is signed as one may be none, by mistake.
bool isAppImage(QIODevice& file) {
    constexpr qsizetype length = 11; // of the ELF header, whose padding holds an AppImage's magic
    const QByteArray start = file.seek(0) ? file.read(length) : QByteArray();
    return start.startsWith("\x7f"
                            "ELF") &&
           start.endsWith("AI\x02") && start.size() == length;
}

} // namespace

Result<> makePrivateFolder(const QString& folder) {
    const QByteArray path = QFile::encodeName(folder);
    if (!QDir().mkpath(QFileInfo(folder).path())) {
        return failure((QStringLiteral("cannot create the folder of %1").arg(folder)).toStdString(),
                       UpdateProblem::cannotStore);
    }
    if (::mkdir(path.constData(), S_IRWXU) != 0 && errno != EEXIST) {
        return systemFailure(UpdateProblem::cannotStore);
    }
    struct stat status{};
    if (::lstat(path.constData(), &status) != 0) {
        return systemFailure(UpdateProblem::cannotStore);
    }
    if (!S_ISDIR(status.st_mode) || status.st_uid != ::geteuid()) {
        return failure(
            (QStringLiteral("%1 is not a folder of this user").arg(folder)).toStdString(),
            UpdateProblem::cannotStore);
    }
    if (::chmod(path.constData(), S_IRWXU) != 0) {
        return systemFailure(UpdateProblem::cannotStore);
    }
    return {};
}

QString fileNameOf(const AppcastItem& item) {
    constexpr qsizetype longest = 100;
    static const QRegularExpression unusual(QStringLiteral("[^A-Za-z0-9._+-]"));
    QString name = item.address.fileName().right(longest).remove(unusual);
    while (name.startsWith(u'.') || name.startsWith(u'-')) {
        name.remove(0, 1);
    }
    return name.isEmpty() ? QStringLiteral("update") : name;
}

Result<> verify(const FileDigest& digest, const AppcastItem& item, const PublicKey& key) {
    if (digest.length() != item.length) {
        return failure("the file has not the length that the feed says",
                       UpdateProblem::wrongLength);
    }
    if (!isSigned(key, item.signature, signedText(item, digest))) {
        return failure("the signature does not fit the file", UpdateProblem::wrongSignature);
    }
    return {};
}

Result<> verifyFile(const QString& path, const AppcastItem& item, const PublicKey& key,
                    const std::stop_token& stop) {
    return readVerified(path, item, key, stop, [](const QByteArray&) { return Result<>(); });
}

std::optional<FileIdentity> identityOf(const QString& path) {
    struct stat status{};
    if (::stat(QFile::encodeName(path).constData(), &status) != 0) {
        return std::nullopt;
    }
    constexpr qint64 second = 1000000000;
    return FileIdentity{status.st_dev, status.st_ino, status.st_size,
                        status.st_mtim.tv_sec * second + status.st_mtim.tv_nsec};
}

Result<> replaceAppImage(const QString& appImage, const QString& file, const AppcastItem& item,
                         const PublicKey& key, const std::stop_token& stop) {
    const QFileInfo place(QFileInfo(appImage).canonicalFilePath());
    if (!place.isFile()) {
        return failure((QStringLiteral("%1 is no file").arg(appImage)).toStdString(),
                       UpdateProblem::cannotReplace);
    }
    QTemporaryFile replacement(place.path() + QStringLiteral("/.tidewell-XXXXXX"));
    if (!replacement.open()) {
        return failure(replacement.errorString().toStdString(), UpdateProblem::cannotReplace);
    }
    const auto copyFailure = [&replacement] {
        return failure(replacement.errorString().toStdString(), UpdateProblem::cannotReplace);
    };
    auto copied = readVerified(file, item, key, stop, [&](const QByteArray& piece) -> Result<> {
        if (replacement.write(piece) != piece.size()) {
            return copyFailure();
        }
        return {};
    });
    if (!copied) {
        return copied;
    }
    if (!isAppImage(replacement)) {
        return failure((QStringLiteral("%1 is no AppImage").arg(file)).toStdString(),
                       UpdateProblem::cannotReplace);
    }
    if (!replacement.flush()) {
        return copyFailure();
    }
    // What others may do with it stays as it was. Synchronised, since the name may reach the disk
    // before the content would: a crash must not leave half a program.
    struct stat status{};
    if (::stat(QFile::encodeName(place.filePath()).constData(), &status) != 0 ||
        ::fchmod(replacement.handle(), (status.st_mode & ACCESSPERMS) | S_IRUSR | S_IXUSR) != 0 ||
        ::fsync(replacement.handle()) != 0 ||
        std::rename(QFile::encodeName(replacement.fileName()).constData(),
                    QFile::encodeName(place.filePath()).constData()) != 0) {
        return systemFailure(UpdateProblem::cannotReplace);
    }
    replacement.setAutoRemove(false);
    return {};
}

} // namespace tidewell
