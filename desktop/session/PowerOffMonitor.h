#pragma once

#include "base/ports/Log.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QDBusUnixFileDescriptor>
#include <QObject>
#include <QString>

#include <functional>

namespace tidewell {

/// Tells when the machine is about to be switched off or started anew, as the login manager
/// (`org.freedesktop.login1`) announces it, and makes it wait for that moment's work: it holds a
/// delay inhibitor, which it gives up when the work is done. Taken again after the login manager
/// was restarted and after a shutdown that was called off. Main thread; nothing here blocks.
///
/// Without a system bus or a login manager it says so in one info line and waits for one to
/// come; a refused inhibitor is one error line, and the announcement is heard all the same.
class PowerOffMonitor final : public QObject {
    Q_OBJECT

public:
    struct Observer {
        std::function<void()> willPowerOff; ///< the machine waits until this returns
        std::function<void()> calledOff;    ///< it stays on after all, or nobody knows any more
    };

    PowerOffMonitor(QDBusConnection systemBus, QString applicationName, Observer observer,
                    Log& log);

private:
    Q_SLOT void prepareForShutdown(const QDBusMessage& signal);
    void ownerChanged(const QString& owner);
    void takeInhibitor();

    QDBusConnection bus_;
    QString applicationName_;
    Observer observer_;
    Log& log_;
    QDBusServiceWatcher watcher_;
    QString owner_; // the login manager's name for this run of it; empty while there is none
    bool poweringOff_ = false;
    QDBusUnixFileDescriptor inhibitor_;
};

} // namespace tidewell
