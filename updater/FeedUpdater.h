#pragma once

#include "base/observable/ObserverList.h"
#include "base/ports/Bundle.h"
#include "base/ports/Log.h"
#include "base/ports/SPUUpdater.h"
#include "base/ports/UserDefaults.h"
#include "base/runtime/OwnedTask.h"
#include "base/runtime/SerialExecutor.h"
#include "base/values/FileIdentity.h"
#include "updater/download/Fetch.h"
#include "updater/download/UpdateFile.h"
#include "updater/feed/Appcast.h"
#include "updater/windows/SPUStandardUserDriver.h"

#include <atomic>
#include <memory>
#include <optional>

namespace tidewell {

/// The updater of an installation that nobody else keeps up to date: reads the feed that the bundle
/// names ("SUFeedURL") where that is signed with the one key that the bundle holds
/// ("SUFeedPublicEDKey"), and installs nothing but files that are signed with the other
/// ("SUPublicEDKey").
///
/// Main thread. What blocks on the network or the disk runs on threads of its own; destroying this
/// cancels what is under way and waits for its threads.
class FeedUpdater final : public SPUUpdater {
public:
    /// How the updater reaches the outside. What is referred to must outlive it.
    struct Environment {
        const Bundle& bundle;
        UserDefaults& defaults;
        UpdaterPreferences preferences;
        Executor& mainThread;
        Log& log;
        FetchSettings fetching;
        QString downloadFolder; ///< for this updater alone; made with the first download
        QString appImage;       ///< the file that the program runs from; empty: it is none
        /// The version that would run if the program was started now; empty where it is unknown.
        std::function<std::string()> versionOnDisk;
        QString systemVersion; ///< of the C library; empty where it is unknown
        QString architecture;
        /// Has the desktop open a verified file, or its folder; false when it does not know how.
        std::function<bool(const QString& file)> open;
        /// Ends the program and starts it anew from `appImage`.
        std::function<void(const QString& appImage)> restart;
    };

    FeedUpdater(Environment environment, std::shared_ptr<SPUStandardUserDriver> userDriver,
                SPUUpdaterDelegate& delegate);
    ~FeedUpdater() override;

    Result<> startUpdater() override;

    bool canCheckForUpdates() const override { return canCheck_; }
    Subscription observeCanCheckForUpdates(std::function<void(bool canCheck)> observer) override;

    bool automaticallyChecksForUpdates() const override;
    void setAutomaticallyChecksForUpdates(bool automatically) override;
    bool automaticallyDownloadsUpdates() const override;
    void setAutomaticallyDownloadsUpdates(bool automatically) override;
    /// The default where nothing usable is stored, and never less than an hour.
    double updateCheckInterval() const override;
    void setUpdateCheckInterval(double seconds) override;

    /// Starts the updater where that was not done yet, since this is what the user wants. Takes the
    /// place of a silent check. While a check of the user's is under way, it brings its window to
    /// the front.
    void checkForUpdates() override;
    /// A version that the user skipped counts as none here. Where the user has updates downloaded
    /// automatically, goes on to do that after the answer.
    void checkForUpdateInformation() override;

private:
    enum class Session { none, silent, user };

    void begin(Session session, Task<void> check);
    void endSession();
    Task<void> checkSilently();
    Task<void> checkForUser();
    Task<Result<std::optional<AppcastItem>>> lookForUpdate();
    void beginDownload(const AppcastItem& item);
    Task<void> fetchFile(AppcastItem item, std::shared_ptr<std::atomic<qint64>> received);
    Task<Result<>> install(AppcastItem item, QString file);
    void offerRestart();
    void openFolder();
    void fail(const std::string& what, const Error& error);
    void setCanCheck();

    Environment environment_;
    std::shared_ptr<SPUStandardUserDriver> userDriver_;
    SPUUpdaterDelegate& delegate_;
    ObserverList<bool> canCheckObservers_;
    bool canCheck_ = false;

    bool isStarted_ = false;
    QUrl feed_; // these four from the start on
    PublicKey feedKey_{};
    PublicKey key_{};             // of files
    Installation installation_{}; // what lies on the disk

    /// May outlast the silent check that began it.
    struct Download {
        Signature file;
        std::shared_ptr<std::atomic<qint64>> received;
        std::function<void(Result<QString>)> whenDone; ///< where the user waits for it
        OwnedTask task;
    };
    std::optional<Download> download_;
    // The file that is not downloaded in advance any more: it is there, or is not what was signed.
    std::optional<Signature> settled_;
    std::optional<FileIdentity> appImage_; // the file as this updater knows it
    std::string remark_;                   // of the fetching program, said once
    bool isReplaced_ = false;              // by `installation_.version`, which starts next

    Session session_ = Session::none;
    OwnedTask check_;
    SerialExecutor checker_; // these two last: they end before what their jobs use
    SerialExecutor files_;
};

} // namespace tidewell
