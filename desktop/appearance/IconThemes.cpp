#include "desktop/appearance/IconThemes.h"

#include <QFile>
#include <QIcon>

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

} // namespace

bool useIconTheme(const QString& name) {
    const bool isUsable = isInstalled(name);
    if (isUsable) {
        QIcon::setThemeName(name);
    }
    return isUsable;
}

void useCompleteIconTheme() {
    const std::array complete{QStringLiteral("Adwaita"),    QStringLiteral("breeze"),
                              QStringLiteral("Papirus"),    QStringLiteral("Yaru"),
                              QStringLiteral("elementary"), QStringLiteral("gnome")};
    const auto* const found = std::ranges::find_if(complete, isInstalled);
    if (found != complete.end()) {
        QIcon::setFallbackThemeName(*found);
    }
}

} // namespace tidewell
