#include "updater/download/Download.h"

#include "updater/UpdateProblem.h"
#include "updater/download/UpdateFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QScopeGuard>

namespace tidewell {

namespace {

// No release's file is called so: fileNameOf() leaves no full stop in front.
constexpr auto partName = QLatin1StringView(".unverified");

/// Removes what lies in the folder from earlier downloads, `kept` aside.
void clear(const QString& folder, const QString& kept) {
    const auto entries = QDir(folder).entryInfoList(QDir::AllEntries | QDir::Hidden | QDir::System |
                                                    QDir::NoDotAndDotDot);
    for (const QFileInfo& entry : entries) {
        if (entry.fileName() == kept) {
            continue;
        }
        if (entry.isDir() && !entry.isSymLink()) {
            QDir(entry.filePath()).removeRecursively();
        } else {
            QFile::remove(entry.filePath());
        }
    }
}

} // namespace

Result<QString> download(const FetchSettings& settings, const QString& folder,
                         const AppcastItem& item, const PublicKey& key,
                         std::atomic<qint64>& received, const std::stop_token& stop) {
    if (const auto made = makePrivateFolder(folder); !made) {
        return tl::unexpected(made.error());
    }
    const QString name = fileNameOf(item);
    const QString path = folder + u'/' + name;
    const bool isThere = QFileInfo::exists(path) && verifyFile(path, item, key, stop);
    clear(folder, isThere ? name : QString());
    if (isThere) {
        return path;
    }
    QFile part(folder + u'/' + partName);
    const auto storeFailure = [&part] {
        return failure(part.errorString().toStdString(), UpdateProblem::cannotStore);
    };
    if (!part.open(QIODevice::WriteOnly | QIODevice::NewOnly | QIODevice::Unbuffered,
                   QFile::ReadOwner | QFile::WriteOwner)) {
        return storeFailure();
    }
    auto removal = qScopeGuard([&part] { part.remove(); });
    FileDigest digest;
    const auto store = [&](QByteArrayView piece) -> Result<> {
        if (digest.length() + piece.size() > item.length) {
            return failure("it is larger than it may be", UpdateProblem::wrongLength);
        }
        if (part.write(piece.data(), piece.size()) != piece.size()) {
            return storeFailure();
        }
        digest.add(piece);
        received = digest.length();
        return {};
    };
    auto stored = fetch(settings, item.address, settings.fileLimit, stop, store).and_then([&] {
        return verify(digest, item, key);
    });
    if (stored && !part.rename(path)) {
        stored = storeFailure();
    }
    if (!stored) {
        return tl::unexpected(stored.error());
    }
    removal.dismiss();
    return path;
}

} // namespace tidewell
