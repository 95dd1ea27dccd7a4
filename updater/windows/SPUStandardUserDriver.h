#pragma once

#include "updater/download/UpdateFailure.h"

#include <QPalette>
#include <QPointer>
#include <QString>

#include <functional>

namespace tidewell {

class ProgressView;
class UpdateWindow;

/// What the user sees of an update that he asked for: one small window that changes with what is
/// going on. Each `show…` replaces what the window shows and forgets the actions that were given
/// before; of its own actions at most one is called, once, also when the window is closed. Main
/// thread.
class SPUStandardUserDriver final {
public:
    using Action = std::function<void()>;

    SPUStandardUserDriver(QString applicationName, std::function<bool()> animationsAreWanted);
    SPUStandardUserDriver(const SPUStandardUserDriver&) = delete;
    SPUStandardUserDriver& operator=(const SPUStandardUserDriver&) = delete;
    /// Closes the window without calling anything.
    ~SPUStandardUserDriver();

    /// For the window, open or not.
    void setPalette(const QPalette& palette);

    void showChecking(Action cancel);
    void showUpToDate(const QString& installedVersion, Action acknowledge);

    struct FoundActions {
        Action install;
        Action remindLater; ///< also when the window is closed
        Action skip;
    };
    /// `notes` is Markdown. It is shown without its pictures and any HTML in it.
    void showFound(const QString& version, const QString& installedVersion, const QString& notes,
                   FoundActions actions);

    void showDownload(const QString& version, Action cancel);
    /// Bytes; for the download that is shown.
    void setProgress(qint64 received, qint64 length);

    void showInstalling(const QString& version);
    void showInstalled(const QString& version, Action restart, Action later);
    void showHandedOver(const QString& version, Action acknowledge);
    void showFailure(UpdateProblem problem, Action acknowledge);

    /// Brings the window to the front, if it is open.
    void raise();
    void close();

private:
    UpdateWindow& window();
    ProgressView* makeProgress() const;
    void present();

    QString applicationName_;
    std::function<bool()> animationsAreWanted_;
    QPalette palette_;
    QPointer<UpdateWindow> window_;
    QPointer<ProgressView> progress_; // of the download that is shown
};

} // namespace tidewell
