#include "updater/windows/SPUStandardUserDriver.h"

#include "ui/TitledBox.h"
#include "updater/windows/NotesView.h"
#include "updater/windows/ProgressView.h"
#include "updater/windows/UpdateWindow.h"

namespace tidewell {

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

ProgressView* SPUStandardUserDriver::makeProgress() const {
    return new ProgressView(animationsAreWanted_() ? ProgressBar::Waiting::moves
                                                   : ProgressBar::Waiting::standsStill);
}

void SPUStandardUserDriver::show(UpdateWindow::Content content) {
    if (!window_) {
        window_ = new UpdateWindow(applicationName_);
        window_->setPalette(palette_);
    }
    window_->setContent(std::move(content));
    if (!window_->isVisible()) {
        window_->show();
        raise();
    }
}

void SPUStandardUserDriver::showChecking(Action cancel) {
    show({tr("Checking for updates…"),
          {},
          makeProgress(),
          {{tr("Cancel"), Role::dismiss, std::move(cancel)}}});
}

void SPUStandardUserDriver::showUpToDate(const QString& installedVersion, Action acknowledge) {
    show({tr("%1 is up to date.").arg(applicationName_),
          tr("Version %1 is the newest one there is for this computer.").arg(installedVersion),
          nullptr,
          {{tr("OK"), Role::confirm, std::move(acknowledge)}}});
}

void SPUStandardUserDriver::showFound(const QString& version, const QString& installedVersion,
                                      const QString& notes,
                                      const std::function<void(Choice)>& answer) {
    const auto give = [&answer](Choice choice) { return [answer, choice] { answer(choice); }; };
    show(
        {tr("A new version of %1 is available.").arg(applicationName_),
         tr("Version %1 can be installed now. You have version %2.").arg(version, installedVersion),
         notes.isEmpty()
             ? nullptr
             : new TitledBox(tr("Release notes"), new NotesView(notes, tr("Release notes"))),
         {{tr("Skip This Version"), Role::other, give(Choice::skip)},
          {tr("Remind Me Later"), Role::dismiss, give(Choice::remindLater)},
          {tr("Install"), Role::confirm, give(Choice::install)}}});
}

void SPUStandardUserDriver::showDownload(const QString& version, qint64 length,
                                         std::shared_ptr<const std::atomic<qint64>> received,
                                         Action cancel) {
    auto* progress = makeProgress();
    progress->follow(std::move(received), length);
    show({tr("Downloading %1 %2…").arg(applicationName_, version),
          {},
          progress,
          {{tr("Cancel"), Role::dismiss, std::move(cancel)}}});
}

void SPUStandardUserDriver::showInstalling(const QString& version) {
    show({tr("Installing %1 %2…").arg(applicationName_, version), {}, makeProgress(), {}});
}

void SPUStandardUserDriver::showInstalled(const QString& version, Action restart, Action later) {
    show({tr("%1 %2 is installed.").arg(applicationName_, version),
          tr("It will be used from the next start on."),
          nullptr,
          {{tr("Later"), Role::dismiss, std::move(later)},
           {tr("Restart Now"), Role::confirm, std::move(restart)}}});
}

void SPUStandardUserDriver::showHandedOver(const QString& version, Action openFolder,
                                           Action acknowledge) {
    show({tr("%1 %2 was downloaded and verified.").arg(applicationName_, version),
          tr("It was handed to your desktop, to be opened with the program that installs such "
             "files. If nothing opens, install it from its folder."),
          nullptr,
          {{tr("Open Folder"), Role::other, std::move(openFolder)},
           {tr("OK"), Role::confirm, std::move(acknowledge)}}});
}

QString SPUStandardUserDriver::sentenceFor(UpdateProblem problem) {
    using enum UpdateProblem;
    switch (problem) {
    case broken:
        return tr("A part of this program is missing or broke down.");
    case unreachable:
        return tr("The update server cannot be reached. Check the connection to the internet and "
                  "try again.");
    case untrusted:
        return tr("The update server could not prove that it is the right one. Nothing was "
                  "downloaded from it.");
    case refused:
        return tr("The update server does not have what was asked for. Try again later.");
    case badRedirect:
        return tr("The update server points to a place that is not safe. Nothing was downloaded "
                  "from there.");
    case timedOut:
        return tr("The update server takes too long to answer. Try again later.");
    case unsignedFeed:
        return tr("The list of versions was not made by the developers of this program, or was "
                  "changed on its way. Nothing in it was used.");
    case oldFeed:
        return tr("The update server sent an old list of versions. Try again later, and check that "
                  "the date of this computer is right.");
    case badFeed:
        return tr("The update server sent a list of versions that cannot be read.");
    case wrongLength:
        return tr("The downloaded file is not complete, or is not the right one. It was deleted.");
    case wrongSignature:
        return tr("The downloaded file was not made by the developers of this program, or was "
                  "changed on its way. It was deleted.");
    case cannotStore:
        return tr("The update could not be saved. There may be no space left on the disk.");
    case cannotReplace:
        return tr("The program's file could not be replaced. You may not have the right to change "
                  "the folder that it is in.");
    case noHandler:
        return tr("The update was downloaded, but there is no program here to open it with.");
    case notStarted:
        return tr("This program was not set up for updates.");
    }
    return {};
}

void SPUStandardUserDriver::showFailure(UpdateProblem problem, Action openFolder,
                                        Action acknowledge) {
    std::vector<UpdateWindow::Button> buttons{{tr("OK"), Role::confirm, std::move(acknowledge)}};
    if (openFolder) {
        buttons.push_back({tr("Open Folder"), Role::other, std::move(openFolder)});
    }
    show({tr("The update did not succeed."), sentenceFor(problem), nullptr, std::move(buttons)});
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
