#include "updater/download/UpdateFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QTemporaryFile>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <functional>

#include <sys/stat.h>
#include <unistd.h>

namespace tidewell {

namespace {

constexpr qint64 pieceSize = qint64{1} << 20;

UpdateFailure systemFailure(UpdateProblem problem) {
    return {problem, QString::fromLocal8Bit(std::strerror(errno))}; // NOLINT(concurrency-mt-unsafe)
}

/// Reads a file through a digest, handing each piece on; what is wrong with it or with `use`.
std::optional<UpdateFailure>
readVerified(const QString& path, const AppcastItem& item, const PublicKey& key,
             const std::atomic<bool>& stop,
             const std::function<std::optional<UpdateFailure>(const QByteArray&)>& use) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered)) {
        return UpdateFailure{UpdateProblem::cannotStore, file.errorString()};
    }
    FileDigest digest;
    // One byte more than there may be shows that the file is too long.
    while (digest.length() <= item.length) {
        if (stop) {
            return UpdateFailure{UpdateProblem::broken, QStringLiteral("it was called off")};
        }
        const QByteArray piece = file.read(std::min(pieceSize, item.length + 1 - digest.length()));
        if (piece.isEmpty()) {
            break;
        }
        digest.add(piece);
        if (const auto failure = use(piece)) {
            return failure;
        }
    }
    return verify(digest, item, key);
}

/// Even a file that is signed as one may be none, by mistake.
bool isAppImage(QIODevice& file) {
    constexpr qsizetype length = 11; // a program's mark, what it is like, and the mark of these
    const QByteArray start = file.seek(0) ? file.read(length) : QByteArray();
    return start.startsWith("\x7f"
                            "ELF") &&
           start.endsWith("AI\x02") && start.size() == length;
}

} // namespace

std::optional<UpdateFailure> makePrivateFolder(const QString& folder) {
    const QByteArray path = QFile::encodeName(folder);
    if (!QDir().mkpath(QFileInfo(folder).path())) {
        return UpdateFailure{UpdateProblem::cannotStore,
                             QStringLiteral("cannot create the folder of %1").arg(folder)};
    }
    if (::mkdir(path.constData(), S_IRWXU) != 0 && errno != EEXIST) {
        return systemFailure(UpdateProblem::cannotStore);
    }
    struct stat status{};
    if (::lstat(path.constData(), &status) != 0) {
        return systemFailure(UpdateProblem::cannotStore);
    }
    if (!S_ISDIR(status.st_mode) || status.st_uid != ::geteuid()) {
        return UpdateFailure{UpdateProblem::cannotStore,
                             QStringLiteral("%1 is not a folder of this user").arg(folder)};
    }
    if (::chmod(path.constData(), S_IRWXU) != 0) {
        return systemFailure(UpdateProblem::cannotStore);
    }
    return std::nullopt;
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

std::optional<UpdateFailure> verify(const FileDigest& digest, const AppcastItem& item,
                                    const PublicKey& key) {
    if (digest.length() != item.length) {
        return UpdateFailure{UpdateProblem::wrongLength,
                             QStringLiteral("the file has not the length that the feed says")};
    }
    if (!isSigned(key, item.signature, signedText(item, digest))) {
        return UpdateFailure{UpdateProblem::wrongSignature,
                             QStringLiteral("the signature does not fit the file")};
    }
    return std::nullopt;
}

std::optional<UpdateFailure> verifyFile(const QString& path, const AppcastItem& item,
                                        const PublicKey& key, const std::atomic<bool>& stop) {
    return readVerified(path, item, key, stop, [](const QByteArray&) { return std::nullopt; });
}

std::optional<UpdateFailure> replaceAppImage(const QString& appImage, const QString& file,
                                             const AppcastItem& item, const PublicKey& key,
                                             const std::atomic<bool>& stop) {
    const QFileInfo place(QFileInfo(appImage).canonicalFilePath());
    if (!place.isFile()) {
        return UpdateFailure{UpdateProblem::cannotReplace,
                             QStringLiteral("%1 is no file").arg(appImage)};
    }
    QTemporaryFile replacement(place.path() + QStringLiteral("/.tidewell-XXXXXX"));
    if (!replacement.open()) {
        return UpdateFailure{UpdateProblem::cannotReplace, replacement.errorString()};
    }
    const auto copyFailure = [&replacement] {
        return UpdateFailure{UpdateProblem::cannotReplace, replacement.errorString()};
    };
    auto failure = readVerified(file, item, key, stop,
                                [&](const QByteArray& piece) -> std::optional<UpdateFailure> {
                                    if (replacement.write(piece) != piece.size()) {
                                        return copyFailure();
                                    }
                                    return std::nullopt;
                                });
    if (failure) {
        return failure;
    }
    if (!isAppImage(replacement)) {
        return UpdateFailure{UpdateProblem::cannotReplace,
                             QStringLiteral("%1 is no AppImage").arg(file)};
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
    return std::nullopt;
}

} // namespace tidewell
