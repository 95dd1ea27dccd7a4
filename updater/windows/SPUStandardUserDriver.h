#pragma once

#include "updater/UpdateProblem.h"
#include "updater/windows/UpdateWindow.h"

#include <QCoreApplication>
#include <QPalette>
#include <QPointer>
#include <QString>

#include <atomic>
#include <functional>
#include <memory>

namespace tidewell {

class ProgressView;

/// What the user sees of an update that he asked for: one small window that changes with what is
/// going on. Each `show…` replaces what the window shows and forgets the actions that were given
/// before; of its own actions at most one is called, once, also when the window is closed. Main
/// thread.
class SPUStandardUserDriver final {
    Q_DECLARE_TR_FUNCTIONS(SPUStandardUserDriver)

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

    enum class Choice {
        install,
        remindLater, ///< also when the window is closed
        skip,
    };
    /// `notes` is Markdown. It is shown without its pictures and any HTML in it.
    void showFound(const QString& version, const QString& installedVersion, const QString& notes,
                   const std::function<void(Choice)>& answer);

    /// `received` counts the bytes of `length` that there are so far; looked at while it is shown.
    void showDownload(const QString& version, qint64 length,
                      std::shared_ptr<const std::atomic<qint64>> received, Action cancel);
    void showInstalling(const QString& version);
    void showInstalled(const QString& version, Action restart, Action later);
    void showHandedOver(const QString& version, Action openFolder, Action acknowledge);
    /// `openFolder` is empty where no file is left.
    void showFailure(UpdateProblem problem, Action openFolder, Action acknowledge);

    /// Brings the window to the front, if it is open.
    void raise();
    void close();

private:
    static QString sentenceFor(UpdateProblem problem);
    void show(UpdateWindow::Content content);
    ProgressView* makeProgress() const;

    QString applicationName_;
    std::function<bool()> animationsAreWanted_;
    QPalette palette_;
    QPointer<UpdateWindow> window_;
};

} // namespace tidewell
