#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>

#include <chrono>
#include <functional>
#include <string>

namespace tidewell {

using ServiceAnswer = std::function<void(const QDBusMessage& reply)>;

/// Calls a service over a message bus without waiting for it. `answer` is given the reply or the
/// error once, later, on the main thread: after `limit` where the service hangs, and also where
/// `bus` is not connected. Destroying `context` drops the answer. Main thread.
void callService(const QDBusConnection& bus, const QDBusMessage& call,
                 std::chrono::milliseconds limit, QObject& context, ServiceAnswer answer);

/// An error reply in words for the log: the error's name and its message.
std::string errorText(const QDBusMessage& reply);

/// A call of the bus itself.
QDBusMessage busCall(const QString& method);

} // namespace tidewell
