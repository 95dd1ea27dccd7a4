#include "app/updates/ProgramUpdater.h"

#include "base/ports/Bundle.h"
#include "desktop/files/BundleReader.h"
#include "desktop/files/RunningProgram.h"
#include "model/preferences/StoredPreferences.h"
#include "ui/Palette.h"
#include "updater/FeedUpdater.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QFile>
#include <QStandardPaths>
#include <QSysInfo>
#include <QUrl>

#include <array>

#include <unistd.h>

namespace tidewell {

namespace {

/// The version of the C library, which decides on which systems a program runs; empty where there
/// is another one.
QString systemVersion() {
    std::array<char, 64> text{}; // "glibc 2.36"
    const std::size_t size = ::confstr(_CS_GNU_LIBC_VERSION, text.data(), text.size());
    return size == 0 || size > text.size() ? QString()
                                           : QString::fromLatin1(text.data()).section(u' ', 1, 1);
}

/// The user driver in the colours of the desktop.
struct DesktopUserDriver {
    DesktopUserDriver(const QString& name, DesktopAppearance& appearance,
                      std::function<bool()> animationsAreWanted)
        : driver(name, std::move(animationsAreWanted))
        , appearanceChanged(
              appearance.didChange([this, &appearance] { applyAppearance(appearance); })) {
        applyAppearance(appearance);
    }
    void applyAppearance(const DesktopAppearance& appearance) {
        driver.setPalette(paletteFor(appearance.desktop()));
    }

    SPUStandardUserDriver driver;
    Subscription appearanceChanged;
};

} // namespace

MakeUpdater programUpdater(const ApplicationEnvironment& environment,
                           std::function<void(const QString& program)> restart) {
    for (const char* needed : {"SUFeedURL", "SUFeedPublicEDKey", "SUPublicEDKey"}) {
        if (environment.bundle.infoString(needed).value_or("").empty()) {
            return nullptr;
        }
    }
    return [environment, restart = std::move(restart)](SPUUpdaterDelegate& delegate) {
        const auto driver = std::make_shared<DesktopUserDriver>(
            QString::fromStdString(applicationName(environment.bundle)), environment.appearance,
            environment.animationsAreWanted);
        FetchSettings fetching;
        fetching.program = QCoreApplication::applicationDirPath() +
                           QStringLiteral("/" TIDEWELL_HELPERS_FROM_PROGRAM "/tidewell-fetch");
        return std::make_shared<FeedUpdater>(
            FeedUpdater::Environment{
                .bundle = environment.bundle,
                .defaults = environment.defaults,
                .preferences = preferences::updater,
                .mainThread = environment.mainThread,
                .log = environment.log,
                .fetching = std::move(fetching),
                .downloadFolder =
                    QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation) +
                    QStringLiteral("/tidewell/updates"),
                .appImage = QFile::decodeName(runningAppImage().c_str()),
                .versionOnDisk =
                    [&log = environment.log] {
                        return readBundle(installedInfoFile(), log)
                            .infoString("CFBundleShortVersionString")
                            .value_or("");
                    },
                .systemVersion = systemVersion(),
                .architecture = QSysInfo::buildCpuArchitecture(),
                .open =
                    [](const QString& file) {
                        return QDesktopServices::openUrl(QUrl::fromLocalFile(file));
                    },
                .restart = restart,
            },
            std::shared_ptr<SPUStandardUserDriver>(driver, &driver->driver), delegate);
    };
}

} // namespace tidewell
