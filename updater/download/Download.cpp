#include "updater/download/Download.h"

#include "updater/UpdateProblem.h"
#include "updater/download/DownloadFolder.h"
#include "updater/download/UpdateFile.h"

#include <QFile>
#include <QFileInfo>
#include <QScopeGuard>

#include <fcntl.h>

namespace tidewell {

namespace {

// No release's file is called so.
constexpr auto partName = QLatin1StringView(".unverified");

} // namespace

Result<QString> download(const FetchSettings& settings, const QString& folderPath,
                         const AppcastItem& item, const PublicKey& key,
                         std::atomic<qint64>& received, const std::stop_token& stop) {
    auto opened = DownloadFolder::open(folderPath);
    if (!opened) {
        return tl::unexpected(opened.error());
    }
    const DownloadFolder& folder = *opened;
    const QString name = fileNameOf(item);
    const bool isThere = verifyFile(folder, item, key, stop).has_value();
    folder.clear(isThere ? name : QString());
    if (isThere) {
        return folder.pathOf(name);
    }
    auto created = folder.file(partName, O_WRONLY | O_CREAT | O_EXCL);
    if (!created) {
        return tl::unexpected(created.error());
    }
    QFile part;
    part.open(created->get(), QIODevice::WriteOnly | QIODevice::Unbuffered);
    auto removal = qScopeGuard([&folder] { folder.remove(partName); });
    FileDigest digest;
    const auto store = [&](QByteArrayView piece) -> Result<> {
        if (digest.length() + piece.size() > item.length) {
            return failure("it is larger than it may be", UpdateProblem::wrongLength);
        }
        if (part.write(piece.data(), piece.size()) != piece.size()) {
            return failure(part.errorString().toStdString(), UpdateProblem::cannotStore);
        }
        digest.add(piece);
        received = digest.length();
        return {};
    };
    return fetch(settings, item.address, settings.fileLimit, stop, store)
        .and_then([&](const std::string& /*remark*/) { return verify(digest, item, key); })
        .and_then([&] { return folder.rename(partName, name); })
        .map([&] {
            removal.dismiss();
            return folder.pathOf(name);
        });
}

void removeUnverified(const QString& folderPath) {
    if (const auto folder = DownloadFolder::open(folderPath)) {
        folder->remove(partName);
    }
}

bool hasUnverified(const QString& folderPath) {
    return QFileInfo::exists(folderPath + u'/' + partName);
}

} // namespace tidewell
