#pragma once

#include "base/ports/Log.h"
#include "desktop/statusitem/StatusHost.h"

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QObject>

namespace tidewell {

/// The desktop's bus service that lists status items (org.kde.StatusNotifierWatcher), present when
/// it runs and something is there that draws the items. Nothing here waits for the service.
class StatusNotifierHost final : public QObject, public StatusHost {
    Q_OBJECT

public:
    /// `log` must outlive this.
    StatusNotifierHost(const QDBusConnection& bus, Log& log);

    HostState state() const override { return state_; }

    /// Has the item listed that the bus name `item` stands for. Where that is refused the
    /// host logs it and counts as absent until another service takes its place.
    void registerItem(const QString& item);

private:
    Q_SLOT void ask();
    Q_SLOT void loseBus();
    void setState(HostState state);

    QDBusConnection bus_;
    Log& log_;
    QDBusServiceWatcher owner_;
    HostState state_ = HostState::absent;
    unsigned question_ = 0;    // the last one asked: only its answer counts
    unsigned ownerNumber_ = 0; // which service, counted, an answer came from
};

} // namespace tidewell
