#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QString>
#include <QVariant>

#include <functional>

namespace tidewell {

/// Who knows settings of the desktop, on the session bus.
struct SettingsService {
    QString name;
    QString path;
    QString interface;
    QString method; ///< reads one setting of a group
    bool isStarted; ///< by the bus, if need be
};

/// The desktop portal. It is there on every desktop that has one, for all programs.
inline const SettingsService portalSettings{
    .name = QStringLiteral("org.freedesktop.portal.Desktop"),
    .path = QStringLiteral("/org/freedesktop/portal/desktop"),
    .interface = QStringLiteral("org.freedesktop.portal.Settings"),
    .method = QStringLiteral("Read"),
    .isStarted = true};

/// Xfce's. Where it does not run, this is not Xfce.
inline const SettingsService xfceSettings{.name = QStringLiteral("org.xfce.Xfconf"),
                                          .path = QStringLiteral("/org/xfce/Xfconf"),
                                          .interface = QStringLiteral("org.xfce.Xfconf"),
                                          .method = QStringLiteral("GetProperty"),
                                          .isStarted = false};

/// Asks for a setting without waiting. `answer` is given its value once, later, on the main thread;
/// an invalid one where there is none, or nobody answers. Destroying `context` drops the answer.
/// Main thread.
void askForSetting(const QDBusConnection& bus, const SettingsService& service, const QString& group,
                   const QString& key, QObject& context,
                   std::function<void(const QVariant& value)> answer);

} // namespace tidewell
