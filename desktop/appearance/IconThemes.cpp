#include "desktop/appearance/IconThemes.h"

#include <QFile>
#include <QIcon>
#include <QSettings>
#include <QStandardPaths>

#include <algorithm>
#include <array>

namespace tidewell {

namespace {

bool isInstalled(const QString& theme) {
    const QStringList folders = QIcon::themeSearchPaths();
    return !theme.isEmpty() && std::ranges::any_of(folders, [&theme](const QString& folder) {
        return QFile::exists(folder + u'/' + theme + QStringLiteral("/index.theme"));
    });
}

/// From GTK's settings, which most desktops write.
QString configuredTheme() {
    const QString file = QStandardPaths::locate(QStandardPaths::GenericConfigLocation,
                                                QStringLiteral("gtk-3.0/settings.ini"));
    return QSettings(file, QSettings::IniFormat)
        .value(QStringLiteral("Settings/gtk-icon-theme-name"))
        .toString();
}

} // namespace

bool useIconTheme(const QString& name) {
    const bool isUsable = isInstalled(name);
    if (isUsable) {
        QIcon::setThemeName(name);
    }
    return isUsable;
}

void useInstalledIconThemes() {
    useIconTheme(configuredTheme());
    const std::array complete{QStringLiteral("Adwaita"),    QStringLiteral("breeze"),
                              QStringLiteral("Papirus"),    QStringLiteral("Yaru"),
                              QStringLiteral("elementary"), QStringLiteral("gnome")};
    const auto* const found = std::ranges::find_if(complete, isInstalled);
    if (found != complete.end()) {
        QIcon::setFallbackThemeName(*found);
    }
}

} // namespace tidewell
