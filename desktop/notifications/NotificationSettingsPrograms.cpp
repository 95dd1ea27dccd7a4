#include "desktop/notifications/NotificationSettingsPrograms.h"

#include <QProcess>
#include <QStandardPaths>

#include <algorithm>
#include <array>

namespace tidewell {

namespace {

struct KnownDesktop {
    const char* name;
    const char* program;
    const char* argument;
};

// Newer names of a desktop's program before older ones.
constexpr auto knownDesktops = std::to_array<KnownDesktop>({
    {"GNOME", "gnome-control-center", "notifications"},
    {"Unity", "gnome-control-center", "notifications"},
    {"KDE", "systemsettings", "kcm_notifications"},
    {"KDE", "systemsettings5", "kcm_notifications"},
    {"XFCE", "xfce4-notifyd-config", nullptr},
    {"X-Cinnamon", "cinnamon-settings", "notifications"},
    {"Cinnamon", "cinnamon-settings", "notifications"},
    {"MATE", "mate-notification-properties", nullptr},
});

bool startIfInstalled(const KnownDesktop& desktop) {
    const QString program = QStandardPaths::findExecutable(QLatin1String(desktop.program));
    return !program.isEmpty() &&
           QProcess::startDetached(program, desktop.argument == nullptr
                                                ? QStringList()
                                                : QStringList(QLatin1String(desktop.argument)));
}

} // namespace

bool openNotificationSettings(const QString& currentDesktop) {
    // "ubuntu:GNOME": the desktop's own name first, then what it is made of.
    const auto names = currentDesktop.split(u':', Qt::SkipEmptyParts);
    return std::ranges::any_of(names, [](const QString& name) {
        return std::ranges::any_of(knownDesktops, [&name](const KnownDesktop& desktop) {
            return name.compare(QLatin1String(desktop.name), Qt::CaseInsensitive) == 0 &&
                   startIfInstalled(desktop);
        });
    });
}

} // namespace tidewell
