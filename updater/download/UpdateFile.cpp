#include "updater/download/UpdateFile.h"

#include "updater/UpdateProblem.h"

#include <QFile>
#include <QFileInfo>
#include <QScopeGuard>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <functional>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tidewell {

namespace {

constexpr qint64 pieceSize = qint64{1} << 20;

/// Reads a file through a digest, handing each piece on; fails as `use` does.
Result<> readVerified(const DownloadFolder& folder, const AppcastItem& item, const PublicKey& key,
                      const std::stop_token& stop,
                      const std::function<Result<>(const QByteArray&)>& use) {
    const auto opened = folder.file(fileNameOf(item), O_RDONLY);
    if (!opened) {
        return tl::unexpected(opened.error());
    }
    QFile file;
    file.open(opened->get(), QIODevice::ReadOnly | QIODevice::Unbuffered);
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

/// What the new file is called until it takes the place of the old one.
QString replacementOf(const QFileInfo& place) {
    return place.path() + QStringLiteral("/.") + place.fileName() + QStringLiteral(".new");
}

} // namespace

QString fileNameOf(const AppcastItem& item) {
    const auto* const kind = std::ranges::find(updateFileKinds, item.type, &UpdateFileKind::type);
    return QStringLiteral("Tidewell-") + item.version +
           (kind == updateFileKinds.end() ? QString() : QString(kind->extension));
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

Result<> verifyFile(const DownloadFolder& folder, const AppcastItem& item, const PublicKey& key,
                    const std::stop_token& stop) {
    return readVerified(folder, item, key, stop, [](const QByteArray&) { return Result<>(); });
}

Result<> replaceAppImage(const QString& appImage, const DownloadFolder& folder,
                         const AppcastItem& item, const PublicKey& key,
                         const std::stop_token& stop) {
    const QFileInfo place(QFileInfo(appImage).canonicalFilePath());
    if (!place.isFile()) {
        return failure(appImage.toStdString() + " is no file", UpdateProblem::cannotReplace);
    }
    QFile replacement(replacementOf(place));
    const auto copyFailure = [&replacement] {
        return failure(replacement.errorString().toStdString(), UpdateProblem::cannotReplace);
    };
    replacement.remove(); // left by a program that was killed
    if (!replacement.open(QIODevice::ReadWrite | QIODevice::NewOnly,
                          QFile::ReadOwner | QFile::WriteOwner)) {
        return copyFailure();
    }
    auto removal = qScopeGuard([&replacement] { replacement.remove(); });
    auto copied = readVerified(folder, item, key, stop, [&](const QByteArray& piece) -> Result<> {
        return replacement.write(piece) == piece.size() ? Result<>() : copyFailure();
    });
    if (!copied) {
        return copied;
    }
    if (!isAppImage(replacement)) {
        return failure("the downloaded file is no AppImage", UpdateProblem::cannotReplace);
    }
    if (!replacement.flush()) {
        return copyFailure();
    }
    // What others may do with it stays as it was. Synchronised, since the name may reach the disk
    // before the content would: a crash must not leave half a program.
    struct stat status{};
    struct stat written{};
    struct stat named{}; // another user of the same AppImage may replace it as well
    if (::fstat(replacement.handle(), &written) != 0 ||
        ::lstat(QFile::encodeName(replacement.fileName()).constData(), &named) != 0 ||
        written.st_ino != named.st_ino || written.st_dev != named.st_dev) {
        removal.dismiss(); // the file of that name is theirs
        return failure("somebody else replaces it at the same time", UpdateProblem::cannotReplace);
    }
    if (::stat(QFile::encodeName(place.filePath()).constData(), &status) != 0 ||
        ::fchmod(replacement.handle(), (status.st_mode & ACCESSPERMS) | S_IRUSR | S_IXUSR) != 0 ||
        ::fsync(replacement.handle()) != 0 ||
        std::rename(QFile::encodeName(replacement.fileName()).constData(),
                    QFile::encodeName(place.filePath()).constData()) != 0) {
        return failure(std::generic_category().message(errno), UpdateProblem::cannotReplace);
    }
    removal.dismiss();
    return {};
}

QString interruptedReplacement(const QString& appImage) {
    const QString path = QFileInfo(appImage).canonicalFilePath(); // empty where there is none
    const QString file = path.isEmpty() ? QString() : replacementOf(QFileInfo(path));
    return QFileInfo::exists(file) ? file : QString();
}

} // namespace tidewell
