#pragma once

#include "base/ports/Log.h"

#include <QDBusConnection>
#include <QObject>
#include <QTimer>

#include <functional>

namespace tidewell {

/// Watches for the end of the session's bus, which is one error line, and from then on for one that
/// answers at the same address, with a back-off from a second to a minute. Main thread.
class SessionBusReturn final : public QObject {
    Q_OBJECT

public:
    /// `returned` is called once after each end, when there is a bus again. The connection itself
    /// stays dead: D-Bus knows no reconnecting. `isMissing` says that a bus is awaited from the
    /// start.
    SessionBusReturn(QDBusConnection sessionBus, bool isMissing, std::function<void()> returned,
                     Log& log);

private:
    Q_SLOT void lost();
    void look();

    std::function<void()> returned_;
    Log& log_;
    QTimer nextLook_;
};

} // namespace tidewell
