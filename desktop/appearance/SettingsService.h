#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QString>
#include <QVariant>

#include <functional>

namespace tidewell {

/// A service on the session bus that holds settings of the desktop.
struct SettingsService {
    QString name;
    QString path;
    QString interface;
    QString method; ///< takes group and key
    bool isStarted; ///< whether a question may start it
};

/// The settings portal.
inline const SettingsService portalSettings{
    .name = QStringLiteral("org.freedesktop.portal.Desktop"),
    .path = QStringLiteral("/org/freedesktop/portal/desktop"),
    .interface = QStringLiteral("org.freedesktop.portal.Settings"),
    .method = QStringLiteral("Read"),
    .isStarted = true};

/// Xfconf. Not started: where it does not run, this is not Xfce.
inline const SettingsService xfceSettings{.name = QStringLiteral("org.xfce.Xfconf"),
                                          .path = QStringLiteral("/org/xfce/Xfconf"),
                                          .interface = QStringLiteral("org.xfce.Xfconf"),
                                          .method = QStringLiteral("GetProperty"),
                                          .isStarted = false};

/// Asks for a setting. `answer` gets its value once, later; an invalid one where there is none, or
/// no answer. Destroying `context` drops the answer. Main thread.
void askForSetting(const QDBusConnection& bus, const SettingsService& service, const QString& group,
                   const QString& key, QObject& context,
                   std::function<void(const QVariant& value)> answer);

} // namespace tidewell
