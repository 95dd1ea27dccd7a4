#include "updater/FeedUpdater.h"

#include "updater/feed/SafeAddress.h"
#include "updater/feed/VersionOrder.h"

#include <QFileInfo>

#include <cmath>
#include <utility>

namespace tidewell {

namespace {

constexpr qint64 largestFeed = qint64{1} << 20;
constexpr double hour = 3600;

} // namespace

FeedUpdater::FeedUpdater(Environment environment, std::shared_ptr<SPUStandardUserDriver> userDriver,
                         SPUUpdaterDelegate& delegate)
    : environment_(std::move(environment))
    , userDriver_(std::move(userDriver))
    , delegate_(delegate) {}

FeedUpdater::~FeedUpdater() {
    *isGone_ = true;
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
    const auto keyText = bundle.infoString("SUPublicEDKey");
    if (!keyText) {
        return failure("the information dictionary holds no public key (SUPublicEDKey)");
    }
    const auto key = readPublicKey(QByteArray::fromStdString(*keyText));
    if (!key) {
        return failure("SUPublicEDKey is not an Ed25519 public key in base64");
    }
    const auto installed = bundle.infoString("CFBundleShortVersionString");
    if (!installed || !isVersion(*installed)) {
        return failure("the information dictionary does not tell the installed version");
    }
    if (!QFileInfo(environment_.fetching.program).isExecutable()) {
        return failure("there is no " + environment_.fetching.program.toStdString());
    }
    feed_ = address;
    key_ = *key;
    installedVersion_ = QString::fromStdString(*installed);
    isStarted_ = true;
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
        fail({UpdateProblem::notStarted, QString::fromStdString(started.error().description())});
        return;
    }
    begin(Session::user);
    userDriver_->showChecking([this] { endSession(); });
}

void FeedUpdater::checkForUpdateInformation() {
    if (isStarted_ && session_ == Session::none) {
        begin(Session::silent);
    }
}

void FeedUpdater::begin(Session session) {
    session_ = session;
    feedText_.clear();
    fetch_ = std::make_unique<Fetch>(
        environment_.fetching, feed_, Fetch::Limits{largestFeed, environment_.fetching.feedLimit},
        Fetch::Observer{
            [this](const QByteArray& bytes) { feedText_ += bytes; },
            [this](FetchOutcome outcome, const QString& reason) { takeFeed(outcome, reason); }});
    setCanCheck();
}

void FeedUpdater::endSession() {
    fetch_.reset();
    feedText_ = {};
    chosen_.reset();
    if (session_ == Session::user) {
        userDriver_->close();
    }
    session_ = Session::none;
    setCanCheck();
}

void FeedUpdater::takeFeed(FetchOutcome outcome, const QString& reason) {
    fetch_.reset();
    const QByteArray text = std::exchange(feedText_, {});
    if (outcome != FetchOutcome::complete) {
        fail(updateFailure(outcome, reason));
        return;
    }
    const auto appcast = readAppcast(text);
    if (const auto* error = std::get_if<FeedError>(&appcast)) {
        fail({UpdateProblem::badFeed, error->description});
        return;
    }
    answer(newestUpdate(std::get<std::vector<AppcastItem>>(appcast),
                        {installedVersion_, environment_.systemVersion, environment_.architecture,
                         !environment_.appImage.isEmpty()}));
}

void FeedUpdater::answer(const AppcastItem* update) {
    const Session session = session_;
    const auto skipped = stored(environment_.defaults, environment_.preferences.skippedVersion);
    if (update != nullptr && session == Session::silent &&
        skipped == update->version.toStdString()) {
        update = nullptr;
    }
    if (session == Session::silent) {
        // Over before the delegate is told: it may want to have the next check made.
        endSession();
    }
    if (update == nullptr) {
        delegate_.updaterDidNotFindUpdate(*this);
        if (session == Session::user) {
            userDriver_->showUpToDate(installedVersion_, [this] { endSession(); });
        }
        return;
    }
    delegate_.updaterDidFindValidUpdate(*this, {update->version.toStdString()});
    if (session == Session::user) {
        offer(*update);
    } else if (automaticallyDownloadsUpdates() && settled_ != update->signature) {
        obtain(*update);
    }
}

void FeedUpdater::offer(const AppcastItem& item) {
    if (item.version == replacedBy_) {
        chosen_ = item;
        offerRestart();
        return;
    }
    userDriver_->showFound(item.version, installedVersion_, item.notes,
                           {.install =
                                [this, item] {
                                    chosen_ = item;
                                    userDriver_->showDownload(item.version, [this] {
                                        download_.reset();
                                        endSession();
                                    });
                                    obtain(item);
                                },
                            .remindLater = [this] { endSession(); },
                            .skip =
                                [this, version = item.version.toStdString()] {
                                    write(environment_.defaults,
                                          environment_.preferences.skippedVersion, version);
                                    endSession();
                                    delegate_.updaterDidNotFindUpdate(*this);
                                }});
}

/// Goes on with a download of the same file that is under way.
void FeedUpdater::obtain(const AppcastItem& item) {
    if (download_ && download_->item().signature == item.signature) {
        userDriver_->setProgress(download_->received(), item.length);
        return;
    }
    download_.reset(); // before the next one uses the same folder
    download_ = std::make_unique<Download>(
        environment_.fetching, environment_.downloadFolder, item, key_, environment_.mainThread,
        Download::Observer{
            [this, length = item.length](qint64 received) {
                if (chosen_) {
                    userDriver_->setProgress(received, length);
                }
            },
            [this](const std::variant<QString, UpdateFailure>& result) { takeFile(result); }});
}

void FeedUpdater::takeFile(const std::variant<QString, UpdateFailure>& result) {
    const auto* failure = std::get_if<UpdateFailure>(&result);
    if (failure == nullptr || failure->problem == UpdateProblem::wrongSignature ||
        failure->problem == UpdateProblem::wrongLength) {
        settled_ = download_->item().signature;
    }
    download_.reset();
    if (chosen_) {
        failure != nullptr ? fail(*failure) : install(std::get<QString>(result));
    } else if (failure != nullptr) {
        log(QStringLiteral("Could not download an update: ") + failure->detail, "takeFile()",
            __LINE__);
    }
}

void FeedUpdater::install(const QString& file) {
    userDriver_->showInstalling(chosen_->version);
    if (environment_.appImage.isEmpty()) {
        handOver(file);
        return;
    }
    installer_.emplace();
    installer_->post([this, gone = isGone_, appImage = environment_.appImage, file, item = *chosen_,
                      key = key_, &mainThread = environment_.mainThread] {
        auto failure = replaceAppImage(appImage, file, item, key, *gone);
        if (!failure) {
            QFile::remove(file); // it has served
        }
        mainThread.post([this, gone, failure = std::move(failure)] {
            if (!*gone) {
                takeInstallation(failure);
            }
        });
    });
}

void FeedUpdater::takeInstallation(const std::optional<UpdateFailure>& failure) {
    installer_.reset();
    if (failure) {
        fail(*failure);
        return;
    }
    replacedBy_ = chosen_->version;
    offerRestart();
}

void FeedUpdater::offerRestart() {
    userDriver_->showInstalled(
        chosen_->version,
        [this] {
            endSession();
            environment_.restart(environment_.appImage);
        },
        [this] { endSession(); });
}

void FeedUpdater::handOver(const QString& file) {
    if (environment_.open(file)) {
        userDriver_->showHandedOver(chosen_->version, [this] { endSession(); });
    } else {
        fail({UpdateProblem::noHandler, QStringLiteral("nothing opens ") + file});
    }
}

void FeedUpdater::fail(const UpdateFailure& failure) {
    log((chosen_ ? QStringLiteral("The update could not be installed: ")
                 : QStringLiteral("The check for updates failed: ")) +
            failure.detail,
        "fail()", __LINE__);
    if (session_ == Session::user) {
        userDriver_->showFailure(failure.problem, [this] { endSession(); });
    } else {
        endSession();
    }
}

void FeedUpdater::log(const QString& message, const char* function, int line) const {
    logMessage(environment_.log, message.toStdString(), "general", __FILE__, function, line,
               LogLevel::error);
}

} // namespace tidewell
