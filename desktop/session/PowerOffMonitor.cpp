#include "desktop/session/PowerOffMonitor.h"

#include "desktop/session/ServiceCall.h"

#include <utility>

namespace tidewell {

namespace {

const QString serviceName = QStringLiteral("org.freedesktop.login1");
const QString objectPath = QStringLiteral("/org/freedesktop/login1");
const QString interfaceName = QStringLiteral("org.freedesktop.login1.Manager");

constexpr std::chrono::seconds limit{5};

} // namespace

PowerOffMonitor::PowerOffMonitor(QDBusConnection systemBus, QString applicationName,
                                 Observer observer, Log& log)
    : bus_(std::move(systemBus))
    , applicationName_(std::move(applicationName))
    , observer_(std::move(observer))
    , log_(log)
    , watcher_(serviceName, bus_, QDBusServiceWatcher::WatchForOwnerChange) {
    connect(&watcher_, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString&, const QString&, const QString& owner) { ownerChanged(owner); });
    // Without the sender's name: connecting with one asks the bus for its owner and waits. Whether
    // it was the login manager that spoke is checked when it does.
    bus_.connect(QString(), objectPath, interfaceName, QStringLiteral("PrepareForShutdown"), this,
                 SLOT(prepareForShutdown(QDBusMessage)));
    callService(bus_, busCall(QStringLiteral("GetNameOwner")) << serviceName, limit, *this,
                [this](const QDBusMessage& reply) {
                    if (reply.type() == QDBusMessage::ReplyMessage) {
                        ownerChanged(reply.arguments().value(0).toString());
                    } else if (owner_.isEmpty()) {
                        logInfo(log_,
                                "No login manager tells of the machine's power-off (" +
                                    errorText(reply) + ").",
                                "PowerOffMonitor()");
                    }
                });
}

void PowerOffMonitor::ownerChanged(const QString& owner) {
    if (owner == owner_) {
        return;
    }
    owner_ = owner;
    if (std::exchange(poweringOff_, false)) {
        observer_.calledOff(); // or the next one will announce it anew
    }
    inhibitor_ = {}; // the one who gave it is gone
    if (!owner_.isEmpty()) {
        takeInhibitor();
    }
}

void PowerOffMonitor::takeInhibitor() {
    // To the owner itself: who sent a reply Qt 6.4 tells, and Qt 6.8 does not.
    auto inhibit = QDBusMessage::createMethodCall(owner_, objectPath, interfaceName,
                                                  QStringLiteral("Inhibit"));
    inhibit << QStringLiteral("shutdown") << applicationName_
            << QStringLiteral("Saving the history") << QStringLiteral("delay");
    callService(bus_, inhibit, limit, *this, [this, asked = owner_](const QDBusMessage& reply) {
        if (asked != owner_) {
            return;
        }
        if (reply.type() == QDBusMessage::ErrorMessage) {
            logError(log_, "Could not delay the machine's power-off: " + errorText(reply),
                     "takeInhibitor()");
        } else if (!poweringOff_) {
            inhibitor_ = reply.arguments().value(0).value<QDBusUnixFileDescriptor>();
        }
    });
}

void PowerOffMonitor::prepareForShutdown(const QDBusMessage& signal) {
    if (owner_.isEmpty() || signal.service() != owner_) {
        return; // anyone on the bus can send a signal of this name
    }
    const bool wasPoweringOff = std::exchange(poweringOff_, signal.arguments().value(0).toBool());
    if (poweringOff_ == wasPoweringOff) {
        return;
    }
    if (poweringOff_) {
        observer_.willPowerOff();
        inhibitor_ = {};
    } else {
        observer_.calledOff();
        takeInhibitor();
    }
}

} // namespace tidewell
