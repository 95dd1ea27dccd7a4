#pragma once

#include "base/ports/Log.h"
#include "desktop/statusitem/StatusHost.h"

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QObject>

namespace tidewell {

/// The hosts behind the D-Bus service org.kde.StatusNotifierWatcher: present while the service runs
/// and says that a host is registered with it. All calls are asynchronous.
class StatusNotifierHost final : public QObject, public StatusHost {
    Q_OBJECT

public:
    /// `log` must outlive this.
    StatusNotifierHost(const QDBusConnection& bus, Log& log);

    HostState state() const override { return state_; }

    /// Registers the item at the bus name `item`, a unique one or not. A refusal is logged, and the
    /// host counts as absent until the service has another owner.
    void registerItem(const QString& item);

private:
    Q_SLOT void ask();
    Q_SLOT void forgetOwner();
    void setState(HostState state);

    QDBusConnection bus_;
    Log& log_;
    QDBusServiceWatcher owner_;
    HostState state_ = HostState::absent;
    unsigned question_ = 0;    // of the last call to ask(); older answers are dropped
    unsigned ownerNumber_ = 0; // counts owners of the service's name
};

} // namespace tidewell
