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
                                      const QString& notes,
                                      const std::function<void(Choice)>& answer) {
    const auto give = [&answer](Choice choice) { return [answer, choice] { answer(choice); }; };
    window().setContent(
        {Texts::tr("A new version of %1 is available.").arg(applicationName_),
         Texts::tr("Version %1 can be installed now. You have version %2.")
             .arg(version, installedVersion),
         notes.isEmpty() ? nullptr : new NotesView(notes, Texts::tr("Release notes")),
         {{Texts::tr("Skip This Version"), Role::other, give(Choice::skip)},
          {Texts::tr("Remind Me Later"), Role::dismiss, give(Choice::remindLater)},
          {Texts::tr("Install"), Role::confirm, give(Choice::install)}}});
    present();
}

void SPUStandardUserDriver::showDownload(const QString& version, qint64 length,
                                         std::shared_ptr<const std::atomic<qint64>> received,
                                         Action cancel) {
    auto* progress = makeProgress();
    progress->follow(std::move(received), length);
    window().setContent({Texts::tr("Downloading %1 %2…").arg(applicationName_, version),
                         {},
                         progress,
                         {{Texts::tr("Cancel"), Role::dismiss, std::move(cancel)}}});
    present();
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

void SPUStandardUserDriver::showHandedOver(const QString& version, Action openFolder,
                                           Action acknowledge) {
    window().setContent(
        {Texts::tr("%1 %2 was downloaded and verified.").arg(applicationName_, version),
         Texts::tr(
             "It was handed to your desktop, to be opened with the program that installs such "
             "files. If nothing opens, install it from its folder."),
         nullptr,
         {{Texts::tr("Open Folder"), Role::other, std::move(openFolder)},
          {Texts::tr("OK"), Role::confirm, std::move(acknowledge)}}});
    present();
}

void SPUStandardUserDriver::showFailure(const std::error_code& problem, Action openFolder,
                                        Action acknowledge) {
    std::vector<UpdateWindow::Button> buttons{
        {Texts::tr("OK"), Role::confirm, std::move(acknowledge)}};
    if (openFolder) {
        buttons.push_back({Texts::tr("Open Folder"), Role::other, std::move(openFolder)});
    }
    window().setContent({Texts::tr("The update did not succeed."),
                         Texts::tr(problem.message().c_str()), nullptr, std::move(buttons)});
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
