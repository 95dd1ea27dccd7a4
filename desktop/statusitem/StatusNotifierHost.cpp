#include "desktop/statusitem/StatusNotifierHost.h"

#include "desktop/session/ServiceCall.h"

#include <QDBusVariant>

namespace tidewell {

namespace {

const QString service = QStringLiteral("org.kde.StatusNotifierWatcher"); // and the interface
const QString path = QStringLiteral("/StatusNotifierWatcher");

// A hung watcher may answer at any time; nothing here waits for it.
constexpr std::chrono::hours timeout{24};

} // namespace

StatusNotifierHost::StatusNotifierHost(const QDBusConnection& bus, Log& log)
    : bus_(bus)
    , log_(log)
    , owner_(service, bus, QDBusServiceWatcher::WatchForOwnerChange) {
    if (!bus_.isConnected()) {
        return;
    }
    connect(&owner_, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString&, const QString&, const QString& newOwner) {
                forgetOwner();
                if (!newOwner.isEmpty()) {
                    ask();
                }
            });
    // No sender name: with one, QtDBus makes a blocking GetNameOwner call.
    for (const auto& signal : {QStringLiteral("StatusNotifierHostRegistered"),
                               QStringLiteral("StatusNotifierHostUnregistered")}) {
        bus_.connect(QString(), path, service, signal, this, SLOT(ask()));
    }
    bus_.connect(QString(), QStringLiteral("/org/freedesktop/DBus/Local"),
                 QStringLiteral("org.freedesktop.DBus.Local"), QStringLiteral("Disconnected"), this,
                 SLOT(forgetOwner()));
    ask();
}

void StatusNotifierHost::forgetOwner() {
    ++question_;
    ++ownerNumber_;
    setState(HostState::absent);
}

void StatusNotifierHost::ask() {
    if (state_ == HostState::absent) {
        setState(HostState::unknown);
    }
    auto question = QDBusMessage::createMethodCall(
        service, path, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    question << service << QStringLiteral("IsStatusNotifierHostRegistered");
    question.setAutoStartService(false);
    callService(bus_, question, timeout, *this, [this, question = ++question_](const auto& reply) {
        if (question != question_) {
            return;
        }
        const bool isThere =
            reply.type() == QDBusMessage::ReplyMessage &&
            reply.arguments().value(0).template value<QDBusVariant>().variant().toBool();
        setState(isThere ? HostState::present : HostState::absent);
    });
}

void StatusNotifierHost::registerItem(const QString& item) {
    auto call = QDBusMessage::createMethodCall(service, path, service,
                                               QStringLiteral("RegisterStatusNotifierItem"));
    call << item;
    call.setAutoStartService(false);
    callService(bus_, call, timeout, *this, [this, owner = ownerNumber_](const auto& reply) {
        if (owner == ownerNumber_ && reply.type() == QDBusMessage::ErrorMessage) {
            logError(log_, "Status item refused: " + errorText(reply), "registerItem(item:)");
            setState(HostState::absent);
        }
    });
}

void StatusNotifierHost::setState(HostState state) {
    if (state != state_) {
        state_ = state;
        tellObservers();
    }
}

} // namespace tidewell
