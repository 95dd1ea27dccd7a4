#pragma once

#include "base/runtime/SerialExecutor.h"
#include "updater/download/Fetch.h"
#include "updater/download/UpdateFile.h"

#include <QFile>

#include <optional>
#include <variant>

namespace tidewell {

/// Brings the file of one release into a private folder, where it gets its own name only once it
/// was verified. Everything else in that folder is removed first, and of a download that fails or
/// is called off nothing stays behind. A file that is there already, and is the right one, is not
/// fetched again. Main thread: what comes is written and hashed there, in pieces no larger than
/// what a pipe holds; nothing else blocks.
class Download final {
public:
    struct Observer {
        std::function<void(qint64 received)> progress;
        /// Last, and once: the path of the verified file, or what went wrong. Neither of the two
        /// is called from within the constructor, and both may destroy the download.
        std::function<void(const std::variant<QString, UpdateFailure>& result)> ended;
    };

    /// `folder` is used by nobody else. `mainThread` must outlive the download.
    Download(FetchSettings settings, QString folder, AppcastItem item, const PublicKey& key,
             Executor& mainThread, Observer observer);
    Download(const Download&) = delete;
    Download& operator=(const Download&) = delete;
    /// Calls it off, unless it has ended.
    ~Download();

    const AppcastItem& item() const { return item_; }
    qint64 received() const { return digest_.length(); }

private:
    void lookForFile();
    void fetch();
    void store(const QByteArray& bytes);
    void finish(FetchOutcome outcome, const QString& reason);
    void removePart();
    void end(const std::variant<QString, UpdateFailure>& result);

    FetchSettings settings_;
    QString folder_;
    AppcastItem item_;
    PublicKey key_;
    Executor& mainThread_;
    Observer observer_;
    QFile part_;
    bool hasPart_ = false;
    FileDigest digest_;
    std::unique_ptr<Fetch> fetch_;
    std::shared_ptr<std::atomic<bool>> isCalledOff_ = std::make_shared<std::atomic<bool>>(false);
    std::optional<SerialExecutor> worker_; // last: it ends before what its jobs use
};

/// What it means for an update that fetching ended like that; not for `complete`.
UpdateFailure updateFailure(FetchOutcome outcome, const QString& reason);

} // namespace tidewell
