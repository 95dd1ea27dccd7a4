#include "updater/windows/SPUStandardUserDriver.h"

#include "updater/windows/NotesView.h"
#include "updater/windows/ProgressView.h"
#include "updater/windows/UpdateWindow.h"

#include <QCoreApplication>

namespace tidewell {

namespace {

/// The texts of all that belongs to this class are translated under its name.
struct Texts {
    Q_DECLARE_TR_FUNCTIONS(SPUStandardUserDriver)
};

QString failureText(UpdateProblem problem) {
    switch (problem) {
    case UpdateProblem::unreachable:
        return Texts::tr(
            "The update server cannot be reached. Check the connection to the internet and "
            "try again.");
    case UpdateProblem::untrusted:
        return Texts::tr("The update server could not prove that it is the right one. Nothing was "
                         "downloaded from it.");
    case UpdateProblem::refused:
        return Texts::tr("The update server does not have what was asked for. Try again later.");
    case UpdateProblem::badRedirect:
        return Texts::tr(
            "The update server points to a place that is not safe. Nothing was downloaded "
            "from there.");
    case UpdateProblem::timedOut:
        return Texts::tr("The update server takes too long to answer. Try again later.");
    case UpdateProblem::badFeed:
        return Texts::tr("The update server sent a list of versions that cannot be read.");
    case UpdateProblem::wrongLength:
        return Texts::tr(
            "The downloaded file is not complete, or is not the right one. It was deleted.");
    case UpdateProblem::wrongSignature:
        return Texts::tr(
            "The downloaded file was not made by the developers of this program, or was "
            "changed on its way. It was deleted.");
    case UpdateProblem::cannotStore:
        return Texts::tr("The update could not be saved. There may be no space left on the disk.");
    case UpdateProblem::cannotReplace:
        return Texts::tr(
            "The program's file could not be replaced. You may not have the right to change "
            "the folder that it is in.");
    case UpdateProblem::noHandler:
        return Texts::tr(
            "The update was downloaded, but there is no program here to open it with.");
    case UpdateProblem::notStarted:
        return Texts::tr("This program was not set up for updates.");
    case UpdateProblem::broken:
        break;
    }
    return Texts::tr("A part of this program is missing or broke down.");
}

} // namespace

using Role = UpdateWindow::Role;

SPUStandardUserDriver::SPUStandardUserDriver(QString applicationName,
                                             std::function<bool()> animationsAreWanted)
    : applicationName_(std::move(applicationName))
    , animationsAreWanted_(std::move(animationsAreWanted)) {}

SPUStandardUserDriver::~SPUStandardUserDriver() {
    delete window_.data();
}

void SPUStandardUserDriver::setPalette(const QPalette& palette) {
    palette_ = palette;
    if (window_) {
        window_->setPalette(palette);
    }
}

UpdateWindow& SPUStandardUserDriver::window() {
    if (!window_) {
        window_ = new UpdateWindow(applicationName_);
        window_->setPalette(palette_);
    }
    return *window_;
}

ProgressView* SPUStandardUserDriver::makeProgress() const {
    return new ProgressView(animationsAreWanted_() ? ProgressBar::Waiting::moves
                                                   : ProgressBar::Waiting::standsStill);
}

void SPUStandardUserDriver::present() {
    if (!window_->isVisible()) {
        window_->show();
        raise();
    }
}

void SPUStandardUserDriver::showChecking(Action cancel) {
    window().setContent({Texts::tr("Checking for updates…"),
                         {},
                         makeProgress(),
                         {{Texts::tr("Cancel"), Role::dismiss, std::move(cancel)}}});
    present();
}

void SPUStandardUserDriver::showUpToDate(const QString& installedVersion, Action acknowledge) {
    window().setContent({Texts::tr("%1 is up to date.").arg(applicationName_),
                         Texts::tr("Version %1 is the newest one there is for this computer.")
                             .arg(installedVersion),
                         nullptr,
                         {{Texts::tr("OK"), Role::confirm, std::move(acknowledge)}}});
    present();
}

void SPUStandardUserDriver::showFound(const QString& version, const QString& installedVersion,
                                      const QString& notes, FoundActions actions) {
    window().setContent(
        {Texts::tr("A new version of %1 is available.").arg(applicationName_),
         Texts::tr("Version %1 can be installed now. You have version %2.")
             .arg(version, installedVersion),
         notes.isEmpty() ? nullptr : new NotesView(notes, Texts::tr("Release notes")),
         {{Texts::tr("Skip This Version"), Role::other, std::move(actions.skip)},
          {Texts::tr("Remind Me Later"), Role::dismiss, std::move(actions.remindLater)},
          {Texts::tr("Install"), Role::confirm, std::move(actions.install)}}});
    present();
}

void SPUStandardUserDriver::showDownload(const QString& version, Action cancel) {
    auto* progress = makeProgress();
    progress_ = progress;
    window().setContent({Texts::tr("Downloading %1 %2…").arg(applicationName_, version),
                         {},
                         progress,
                         {{Texts::tr("Cancel"), Role::dismiss, std::move(cancel)}}});
    present();
}

void SPUStandardUserDriver::setProgress(qint64 received, qint64 length) {
    if (progress_) {
        progress_->setProgress(received, length);
    }
}

void SPUStandardUserDriver::showInstalling(const QString& version) {
    window().setContent(
        {Texts::tr("Installing %1 %2…").arg(applicationName_, version), {}, makeProgress(), {}});
    present();
}

void SPUStandardUserDriver::showInstalled(const QString& version, Action restart, Action later) {
    window().setContent({Texts::tr("%1 %2 is installed.").arg(applicationName_, version),
                         Texts::tr("It will be used from the next start on."),
                         nullptr,
                         {{Texts::tr("Later"), Role::dismiss, std::move(later)},
                          {Texts::tr("Restart Now"), Role::confirm, std::move(restart)}}});
    present();
}

void SPUStandardUserDriver::showHandedOver(const QString& version, Action acknowledge) {
    window().setContent(
        {Texts::tr("%1 %2 was downloaded and verified.").arg(applicationName_, version),
         Texts::tr("Your desktop opens it now with the program that installs such files."),
         nullptr,
         {{Texts::tr("OK"), Role::confirm, std::move(acknowledge)}}});
    present();
}

void SPUStandardUserDriver::showFailure(UpdateProblem problem, Action acknowledge) {
    window().setContent({Texts::tr("The update did not succeed."),
                         failureText(problem),
                         nullptr,
                         {{Texts::tr("OK"), Role::confirm, std::move(acknowledge)}}});
    present();
}

void SPUStandardUserDriver::raise() {
    if (window_) {
        window_->raise();
        window_->activateWindow();
    }
}

void SPUStandardUserDriver::close() {
    if (window_) {
        window_->setContent({});
        window_->hide();
        window_->deleteLater(); // it may be one of its buttons that brought us here
        window_.clear();
    }
}

} // namespace tidewell
