#include "desktop/notifications/NotificationSettings.h"

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

} // namespace

std::vector<SettingsProgram> notificationSettingsPrograms(const QString& currentDesktop) {
    std::vector<SettingsProgram> programs;
    // "ubuntu:GNOME": the desktop's own name first, then what it is made of.
    for (const QString& name : currentDesktop.split(u':', Qt::SkipEmptyParts)) {
        for (const KnownDesktop& desktop : knownDesktops) {
            if (name.compare(QLatin1String(desktop.name), Qt::CaseInsensitive) == 0) {
                programs.push_back({QString::fromLatin1(desktop.program),
                                    desktop.argument != nullptr
                                        ? QStringList{QString::fromLatin1(desktop.argument)}
                                        : QStringList()});
            }
        }
    }
    return programs;
}

bool openNotificationSettings(const QString& currentDesktop) {
    const auto starts = [](const SettingsProgram& settings) {
        const QString program = QStandardPaths::findExecutable(settings.program);
        return !program.isEmpty() && QProcess::startDetached(program, settings.arguments);
    };
    return std::ranges::any_of(notificationSettingsPrograms(currentDesktop), starts);
}

} // namespace tidewell
