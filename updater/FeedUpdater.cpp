#include "updater/FeedUpdater.h"

#include "base/runtime/Waiting.h"
#include "updater/UpdateProblem.h"
#include "updater/download/Download.h"
#include "updater/download/UpdateFile.h"
#include "updater/feed/SafeAddress.h"
#include "updater/feed/SignedFeed.h"
#include "updater/feed/VersionOrder.h"

#include <QFile>
#include <QFileInfo>

#include <cmath>
#include <utility>

#include <malloc.h>

namespace tidewell {

namespace {

constexpr qint64 largestFeed = qint64{1} << 20;
constexpr double hour = 3600;
constexpr double largestSerial = 9007199254740992; // 2^53: doubles hold no more

using Choice = SPUStandardUserDriver::Choice;

struct FeedAnswer {
    qint64 serial;
    std::string remark; ///< of the fetching program
    std::optional<AppcastItem> update;
};

/// Fetches the feed and picks the newest release that fits, if there is one. Blocks.
Result<FeedAnswer> newestInFeed(const FetchSettings& settings, const QUrl& address,
                                const PublicKey& key, qint64 highestSerial,
                                const Installation& installation, const std::stop_token& stop) {
    QByteArray published;
    const auto take = [&published](QByteArrayView piece) -> Result<> {
        published += piece;
        return published.size() <= largestFeed
                   ? Result<>()
                   : failure("it is larger than it may be", UpdateProblem::badFeed);
    };
    const auto fetched = fetch(settings, address, settings.feedLimit, stop, take);
    if (!fetched) {
        return tl::unexpected(fetched.error());
    }
    const auto feed = readSignedFeed(published, key);
    if (!feed) {
        return tl::unexpected(feed.error());
    }
    return checkFresh(*feed, QDateTime::currentDateTimeUtc(), highestSerial)
        .and_then([&] { return readAppcast(feed->feed, address); })
        .map([&](const std::vector<AppcastItem>& items) {
            const AppcastItem* update = newestUpdate(items, installation);
            return FeedAnswer{feed->serial, *fetched,
                              update != nullptr ? std::optional(*update) : std::nullopt};
        });
}

} // namespace

FeedUpdater::FeedUpdater(Environment environment, std::shared_ptr<SPUStandardUserDriver> userDriver,
                         SPUUpdaterDelegate& delegate)
    : environment_(std::move(environment))
    , userDriver_(std::move(userDriver))
    , delegate_(delegate) {}

FeedUpdater::~FeedUpdater() {
    // Before the threads that work for them are waited for.
    check_.cancel();
    download_.reset();
    if (session_ == Session::user) {
        userDriver_->close();
    }
}

Result<> FeedUpdater::startUpdater() {
    if (isStarted_) {
        return {};
    }
    const Bundle& bundle = environment_.bundle;
    const auto feed = bundle.infoString("SUFeedURL");
    if (!feed) {
        return failure("the information dictionary names no feed (SUFeedURL)");
    }
    const QUrl address(QString::fromStdString(*feed), QUrl::StrictMode);
    if (!isSafeAddress(address)) {
        return failure("the feed's address (SUFeedURL) is not one of https: " + *feed);
    }
    for (const auto& [name, key] :
         {std::pair("SUFeedPublicEDKey", &feedKey_), {"SUPublicEDKey", &key_}}) {
        const auto text = bundle.infoString(name);
        const auto read = readPublicKey(QByteArray::fromStdString(text.value_or("")));
        if (!read) {
            return failure(std::string(name) + " is not an Ed25519 public key in base64");
        }
        *key = *read;
    }
    const auto installed = bundle.infoString("CFBundleShortVersionString");
    if (!installed || !isVersion(*installed)) {
        return failure("the information dictionary does not tell the installed version");
    }
    if (!QFileInfo(environment_.fetching.program).isExecutable()) {
        return failure("there is no " + environment_.fetching.program.toStdString());
    }
    feed_ = address;
    installation_ = {QString::fromStdString(*installed), environment_.systemVersion,
                     environment_.architecture, !environment_.appImage.isEmpty()};
    appImage_ = identityOf(QFile::encodeName(environment_.appImage).constData());
    isStarted_ = true;
    if (hasUnverified(environment_.downloadFolder)) {
        files_.post([folder = environment_.downloadFolder] { removeUnverified(folder); });
    }
    if (const QString left = interruptedReplacement(environment_.appImage);
        installation_.isAppImage && !left.isEmpty()) {
        files_.post([left] { QFile::remove(left); });
    }
    setCanCheck();
    return {};
}

Subscription FeedUpdater::observeCanCheckForUpdates(std::function<void(bool canCheck)> observer) {
    observer(canCheck_);
    return canCheckObservers_.add(std::move(observer));
}

void FeedUpdater::setCanCheck() {
    const bool canCheck = isStarted_ && session_ == Session::none;
    if (std::exchange(canCheck_, canCheck) != canCheck) {
        canCheckObservers_.tell(canCheck);
    }
}

bool FeedUpdater::automaticallyChecksForUpdates() const {
    return readForView(environment_.defaults, environment_.preferences.automaticallyChecks);
}

void FeedUpdater::setAutomaticallyChecksForUpdates(bool automatically) {
    write(environment_.defaults, environment_.preferences.automaticallyChecks, automatically);
}

bool FeedUpdater::automaticallyDownloadsUpdates() const {
    return readForView(environment_.defaults, environment_.preferences.automaticallyDownloads);
}

void FeedUpdater::setAutomaticallyDownloadsUpdates(bool automatically) {
    write(environment_.defaults, environment_.preferences.automaticallyDownloads, automatically);
}

double FeedUpdater::updateCheckInterval() const {
    const auto& preference = environment_.preferences.checkInterval;
    const double seconds = readForView(environment_.defaults, preference);
    return seconds > 0 && std::isfinite(seconds) ? std::max(seconds, hour) : preference.viewDefault;
}

void FeedUpdater::setUpdateCheckInterval(double seconds) {
    write(environment_.defaults, environment_.preferences.checkInterval, seconds);
}

void FeedUpdater::checkForUpdates() {
    if (session_ == Session::user) {
        userDriver_->raise();
        return;
    }
    if (const auto started = startUpdater(); !started) {
        session_ = Session::user;
        fail("The check for updates failed: ",
             {started.error().description(), UpdateProblem::notStarted});
        return;
    }
    begin(Session::user, checkForUser());
}

void FeedUpdater::checkForUpdateInformation() {
    if (isStarted_ && session_ == Session::none) {
        begin(Session::silent, checkSilently());
    }
}

void FeedUpdater::begin(Session session, Task<void> check) {
    session_ = session;
    check_ = OwnedTask(environment_.mainThread, std::move(check));
    setCanCheck();
}

void FeedUpdater::endSession() {
    check_.cancel();
    if (std::exchange(session_, Session::none) == Session::user) {
        userDriver_->close();
    }
    setCanCheck();
}

Task<void> FeedUpdater::checkSilently() {
    const auto found = co_await lookForUpdate();
    // Over before the delegate is told: it may want to have the next check made.
    endSession();
    if (!found) {
        logError(environment_.log, "The check for updates failed: " + found.error().text,
                 "checkSilently()");
        co_return;
    }
    const auto& update = *found;
    if (!update || stored(environment_.defaults, environment_.preferences.skippedVersion) ==
                       update->version.toStdString()) {
        delegate_.updaterDidNotFindUpdate(*this);
        co_return;
    }
    delegate_.updaterDidFindValidUpdate(*this, {update->version.toStdString()});
    if (automaticallyDownloadsUpdates() && settled_ != update->signature) {
        beginDownload(*update);
    }
}

Task<void> FeedUpdater::checkForUser() {
    const auto over = [this] { endSession(); };
    userDriver_->showChecking(over);
    const auto found = co_await lookForUpdate();
    if (!found) {
        fail("The check for updates failed: ", found.error());
        co_return;
    }
    if (!*found) {
        delegate_.updaterDidNotFindUpdate(*this);
        if (isReplaced_) {
            offerRestart();
        } else {
            userDriver_->showUpToDate(installation_.version, over);
        }
        co_return;
    }
    const AppcastItem& update = **found;
    delegate_.updaterDidFindValidUpdate(*this, {update.version.toStdString()});
    auto question = answerOf<Choice>([this, &update](const std::function<void(Choice)>& take) {
        userDriver_->showFound(update.version, installation_.version, update.notes, take);
    });
    const Choice choice = co_await question;
    if (choice != Choice::install) {
        endSession();
        if (choice == Choice::skip) {
            write(environment_.defaults, environment_.preferences.skippedVersion,
                  update.version.toStdString());
            delegate_.updaterDidNotFindUpdate(*this);
        }
        co_return;
    }

    beginDownload(update);
    userDriver_->showDownload(update.version, update.length, download_->received, [this] {
        download_.reset();
        endSession();
    });
    auto download = answerOf<Result<QString>>([this](std::function<void(Result<QString>)> take) {
        download_->whenDone = std::move(take);
    });
    const auto file = co_await download;
    if (!file) {
        fail("The update could not be installed: ", file.error());
        co_return;
    }

    userDriver_->showInstalling(update.version);
    const auto installed = co_await install(update, *file);
    if (!installed) {
        fail("The update could not be installed: ", installed.error());
        co_return;
    }
    if (!installation_.isAppImage) {
        userDriver_->showHandedOver(update.version, [this] { openFolder(); }, over);
        co_return;
    }
    installation_.version = update.version;
    isReplaced_ = true;
    offerRestart();
}

/// Of the version that has taken the running one's place.
void FeedUpdater::offerRestart() {
    userDriver_->showInstalled(
        installation_.version,
        [this] {
            endSession();
            environment_.restart(environment_.appImage);
        },
        [this] { endSession(); });
}

/// The newest release that fits, if there is one.
Task<Result<std::optional<AppcastItem>>> FeedUpdater::lookForUpdate() {
    // Never backwards: it is what lies on the disk that would be replaced, whatever runs.
    const std::string onDisk = environment_.versionOnDisk();
    if (isVersion(onDisk) && compareVersions(onDisk, installation_.version.toStdString()) > 0) {
        installation_.version = QString::fromStdString(onDisk);
    }
    const auto& preference = environment_.preferences.feedSerial;
    const auto highestSerial = static_cast<qint64>(
        std::clamp(stored(environment_.defaults, preference).value_or(0), 0.0, largestSerial));
    Result<FeedAnswer> answer;
    auto work = runOn(checker_, [this, &answer, highestSerial](const std::stop_token& stop) {
        answer = newestInFeed(environment_.fetching, feed_, feedKey_, highestSerial, installation_,
                              stop);
    });
    co_await work;
    // What the check took, and what the program's start left in the heap.
    ::malloc_trim(0);
    if (!answer) {
        co_return tl::unexpected(answer.error());
    }
    if (answer->remark != std::exchange(remark_, answer->remark) && !remark_.empty()) {
        logError(environment_.log, "The fetching program " + remark_, "lookForUpdate()");
    }
    if (answer->serial > highestSerial) {
        write(environment_.defaults, preference, static_cast<double>(answer->serial));
    }
    co_return answer->update;
}

/// Goes on with a download of the same file that is under way.
void FeedUpdater::beginDownload(const AppcastItem& item) {
    if (download_ && download_->file == item.signature) {
        return;
    }
    const auto received = std::make_shared<std::atomic<qint64>>(0);
    download_.emplace(item.signature, received, nullptr,
                      OwnedTask(environment_.mainThread, fetchFile(item, received)));
}

Task<void> FeedUpdater::fetchFile(AppcastItem item, std::shared_ptr<std::atomic<qint64>> received) {
    Result<QString> file;
    auto work = runOn(files_, [this, &item, &received, &file](const std::stop_token& stop) {
        file = download(environment_.fetching, environment_.downloadFolder, item, key_, *received,
                        stop);
    });
    co_await work;
    ::malloc_trim(0);
    if (file || file.error().cause == UpdateProblem::wrongSignature ||
        file.error().cause == UpdateProblem::wrongLength) {
        settled_ = item.signature;
    }
    const auto whenDone = std::move(download_->whenDone);
    download_.reset();
    if (whenDone) {
        whenDone(std::move(file));
    } else if (!file) {
        logError(environment_.log, "Could not download an update: " + file.error().text,
                 "fetchFile()");
    }
}

Task<Result<>> FeedUpdater::install(AppcastItem item, QString file) {
    if (!installation_.isAppImage) {
        co_return environment_.open(file)
            ? Result<>()
            : failure("nothing opens " + file.toStdString(), UpdateProblem::noHandler);
    }
    if (identityOf(QFile::encodeName(environment_.appImage).constData()) != appImage_) {
        // By a newer version perhaps, and not by this updater.
        co_return failure("another program has replaced " + environment_.appImage.toStdString(),
                          UpdateProblem::cannotReplace);
    }
    Result<> replaced;
    auto work = runOn(files_, [this, &item, &replaced](const std::stop_token& stop) {
        auto folder = DownloadFolder::open(environment_.downloadFolder);
        replaced = folder ? replaceAppImage(environment_.appImage, *folder, item, key_, stop)
                          : Result<>(tl::unexpected(folder.error()));
        if (replaced) {
            folder->clear({}); // it has served
        }
    });
    co_await work;
    appImage_ = identityOf(QFile::encodeName(environment_.appImage).constData());
    co_return replaced;
}

/// In which the file lies that the user is left to install.
void FeedUpdater::openFolder() {
    endSession();
    if (!environment_.open(environment_.downloadFolder)) {
        logError(environment_.log, "nothing opens " + environment_.downloadFolder.toStdString(),
                 "openFolder()");
    }
}

/// Ends the user's check with what went wrong.
void FeedUpdater::fail(const std::string& what, const Error& error) {
    logError(environment_.log, what + error.text, "fail()");
    const auto show = [this] { openFolder(); };
    const auto problem = static_cast<UpdateProblem>(error.cause.value());
    userDriver_->showFailure(
        problem,
        problem == UpdateProblem::noHandler ? SPUStandardUserDriver::Action(show) : nullptr,
        [this] { endSession(); });
}

} // namespace tidewell
