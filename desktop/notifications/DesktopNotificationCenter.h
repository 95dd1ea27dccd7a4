#pragma once

#include "base/ports/UserNotificationCenter.h"
#include "base/runtime/ContinuousClock.h"
#include "desktop/notifications/PermissionRecords.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>

namespace tidewell {

/// Notifications through the desktop's service, `org.freedesktop.Notifications`. No desktop asks
/// the user for permission: a program may notify until the user switches it off in the desktop's
/// settings, so authorization is what those say, and granted where they say nothing.
///
/// The service is asked anew for what it can do before each notification: daemons get replaced
/// while the program runs, and notifications are rare. Destroying the center drops what has not
/// been answered yet.
class DesktopNotificationCenter final : public UserNotificationCenter {
public:
    /// How long the answers may take.
    struct Limits {
        std::chrono::milliseconds bus{1000};     ///< a question to the bus itself; there are two
        std::chrono::milliseconds records{2000}; ///< then all of the desktop's records together
        std::chrono::milliseconds delivery{
            5000}; ///< after the delay, starting the service included
    };

    /// `clock` must outlive the center and ring its alarms on the main thread.
    DesktopNotificationCenter(QDBusConnection sessionBus, ContinuousClock& clock,
                              QString applicationName, PermissionRecords records, Limits limits);

    void requestAuthorization(AuthorizationOptions options,
                              std::function<void(Result<bool>)> answer) override;
    void add(NotificationRequest request, std::function<void(Result<>)> answer) override;

private:
    using Answer = std::function<void(Result<>)>;

    void findService(const Answer& found);
    void deliver(const NotificationRequest& request, Answer answer);
    QDBusMessage notifyCall(const NotificationRequest& request,
                            const QStringList& capabilities) const;

    QDBusConnection bus_;
    ContinuousClock& clock_;
    QString applicationName_;
    PermissionRecords records_;
    Limits limits_;
    QObject context_; // calls under way end with it
};

} // namespace tidewell
