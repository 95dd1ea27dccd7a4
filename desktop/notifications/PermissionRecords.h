#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QString>
#include <QStringList>

#include <chrono>
#include <functional>

namespace tidewell {

/// Where this session's desktop keeps what the user decided about a program's notifications.
struct PermissionRecords {
    QString identifier;             ///< the program's, as in the name of its desktop file
    QStringList desktops;           ///< the names that the session goes by
    QStringList configurationPaths; ///< folders of settings files, the user's own first
    QString gsettings;              ///< path of the tool that reads GNOME's settings, or empty
};

/// The records of the session that this process runs in. Reads the environment and looks for the
/// tool in the search path.
PermissionRecords permissionRecordsOfThisSession(const QString& identifier);

/// Looks through the desktop's records and answers once, within this call or later on the main
/// thread, after `limit` at the latest: whether one of them says that the user switched the
/// program's notifications off. What is missing, unreadable or late counts as no record.
/// Destroying `context` drops the answer. Main thread.
void findWhetherDenied(const PermissionRecords& records, const QDBusConnection& bus,
                       std::chrono::milliseconds limit, QObject& context,
                       std::function<void(bool denied)> answer);

} // namespace tidewell
