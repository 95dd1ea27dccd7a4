#include "updater/download/Download.h"

#include <QDir>
#include <QFileInfo>

#include <utility>

namespace tidewell {

namespace {

// No release's file is called so: fileNameOf() leaves no full stop in front.
constexpr auto partName = QLatin1StringView(".unverified");

/// What lies in the folder from earlier downloads, `kept` aside.
void clear(const QString& folder, const QString& kept) {
    const QDir contents(folder);
    const auto entries = contents.entryInfoList(QDir::AllEntries | QDir::Hidden | QDir::System |
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

Download::Download(FetchSettings settings, QString folder, AppcastItem item, const PublicKey& key,
                   Executor& mainThread, Observer observer)
    : settings_(std::move(settings))
    , folder_(std::move(folder))
    , item_(std::move(item))
    , key_(key)
    , mainThread_(mainThread)
    , observer_(std::move(observer))
    , part_(folder_ + u'/' + partName)
    , worker_(std::in_place) {
    lookForFile();
}

Download::~Download() {
    *isCalledOff_ = true;
    removePart();
}

void Download::removePart() {
    fetch_.reset();
    if (std::exchange(hasPart_, false)) {
        part_.remove();
    }
}

void Download::lookForFile() {
    worker_->post([this, stop = isCalledOff_, &mainThread = mainThread_] {
        // The members that are used here do not change before the job below.
        auto failure = makePrivateFolder(folder_);
        bool isThere = false;
        if (!failure) {
            const QString path = folder_ + u'/' + fileNameOf(item_);
            isThere = QFileInfo::exists(path) && !verifyFile(path, item_, key_, *stop);
            clear(folder_, isThere ? fileNameOf(item_) : QString());
        }
        mainThread.post([this, stop, isThere, failure = std::move(failure)] {
            if (*stop) {
                return;
            }
            if (failure) {
                end(*failure);
            } else if (isThere) {
                end(folder_ + u'/' + fileNameOf(item_));
            } else {
                fetch();
            }
        });
    });
}

void Download::fetch() {
    if (!part_.open(QIODevice::WriteOnly | QIODevice::NewOnly | QIODevice::Unbuffered,
                    QFile::ReadOwner | QFile::WriteOwner)) {
        end(UpdateFailure{UpdateProblem::cannotStore, part_.errorString()});
        return;
    }
    hasPart_ = true;
    fetch_ = std::make_unique<Fetch>(
        settings_, item_.address, Fetch::Limits{item_.length, settings_.fileLimit},
        Fetch::Observer{
            [this](const QByteArray& bytes) { store(bytes); },
            [this](FetchOutcome outcome, const QString& reason) { finish(outcome, reason); }});
}

void Download::store(const QByteArray& bytes) {
    if (part_.write(bytes) != bytes.size()) {
        end(UpdateFailure{UpdateProblem::cannotStore, part_.errorString()});
        return;
    }
    digest_.add(bytes);
    const auto progress = observer_.progress;
    progress(digest_.length());
}

void Download::finish(FetchOutcome outcome, const QString& reason) {
    if (outcome == FetchOutcome::tooLarge) {
        end(UpdateFailure{UpdateProblem::wrongLength, reason});
        return;
    }
    if (outcome != FetchOutcome::complete) {
        end(updateFailure(outcome, reason));
        return;
    }
    if (const auto failure = verify(digest_, item_, key_)) {
        end(*failure);
        return;
    }
    const QString path = folder_ + u'/' + fileNameOf(item_);
    if (part_.rename(path)) {
        hasPart_ = false;
        end(path);
    } else {
        end(UpdateFailure{UpdateProblem::cannotStore, part_.errorString()});
    }
}

void Download::end(const std::variant<QString, UpdateFailure>& result) {
    removePart();
    const auto ended = std::move(observer_.ended);
    ended(result);
}

UpdateFailure updateFailure(FetchOutcome outcome, const QString& reason) {
    switch (outcome) {
    case FetchOutcome::unreachable:
        return {UpdateProblem::unreachable, reason};
    case FetchOutcome::untrusted:
        return {UpdateProblem::untrusted, reason};
    case FetchOutcome::refused:
        return {UpdateProblem::refused, reason};
    case FetchOutcome::badRedirect:
        return {UpdateProblem::badRedirect, reason};
    case FetchOutcome::timedOut:
        return {UpdateProblem::timedOut, reason};
    case FetchOutcome::tooLarge:
        return {UpdateProblem::badFeed, reason};
    case FetchOutcome::complete:
    case FetchOutcome::misused:
    case FetchOutcome::crashed:
        break;
    }
    return {UpdateProblem::broken, reason};
}

} // namespace tidewell
