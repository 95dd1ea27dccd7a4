#include "desktop/session/ServiceCall.h"

#include <QDBusError>
#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>

#include <algorithm>

namespace tidewell {

void callService(const QDBusConnection& bus, const QDBusMessage& call,
                 std::chrono::milliseconds limit, QObject& context, ServiceAnswer answer) {
    if (!bus.isConnected()) {
        // A pending call of such a connection would never be told to have finished.
        const auto error =
            call.createErrorReply(QDBusError::Disconnected, QStringLiteral("no message bus"));
        QMetaObject::invokeMethod(
            &context, [answer = std::move(answer), error] { answer(error); }, Qt::QueuedConnection);
        return;
    }
    const auto milliseconds = std::max<std::chrono::milliseconds::rep>(limit.count(), 1);
    auto* watcher =
        new QDBusPendingCallWatcher(bus.asyncCall(call, static_cast<int>(milliseconds)), &context);
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, &context,
                     [watcher, answer = std::move(answer)] {
                         watcher->deleteLater();
                         answer(watcher->reply());
                     });
}

std::string errorText(const QDBusMessage& reply) {
    return (reply.errorName() + QStringLiteral(": ") + reply.errorMessage()).toStdString();
}

QDBusMessage busCall(const QString& method) {
    return QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"),
                                          QStringLiteral("/org/freedesktop/DBus"),
                                          QStringLiteral("org.freedesktop.DBus"), method);
}

} // namespace tidewell
