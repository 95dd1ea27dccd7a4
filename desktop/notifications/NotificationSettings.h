#pragma once

#include <QString>
#include <QStringList>

#include <vector>

namespace tidewell {

/// A program with its arguments.
struct SettingsProgram {
    QString program;
    QStringList arguments;
};

/// The programs that show the notification settings of the desktops which `currentDesktop` names,
/// as `XDG_CURRENT_DESKTOP` does; the likeliest first. Empty for a desktop that is not known.
std::vector<SettingsProgram> notificationSettingsPrograms(const QString& currentDesktop);

/// Starts the first of them that is installed. False where there is none, or it cannot be started.
bool openNotificationSettings(const QString& currentDesktop);

} // namespace tidewell
