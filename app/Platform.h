#pragma once

#include "app/TidewellApp.h"
#include "base/runtime/SerialExecutor.h"
#include "desktop/appearance/DesktopLook.h"
#include "desktop/files/FileUserDefaults.h"
#include "desktop/notifications/DesktopNotificationCenter.h"
#include "desktop/session/MainThread.h"
#include "desktop/session/Sandbox.h"
#include "model/memory/probes/linux/LinuxProbes.h"
#include "model/processes/linux/LinuxApplicationSource.h"

#include <QDBusConnection>

namespace tidewell {

/// The real platform: what fills each port of this program, in the order in which it must outlive
/// the rest. Tasks wait in the clock and the executors, and end with them. Main thread, after the
/// application object.
class Platform final {
public:
    /// `restart` ends the program and starts the given file in its place. `bundle` and `log` must
    /// outlive this.
    Platform(const Bundle& bundle, Log& log, std::function<void(const QString& program)> restart);

    /// Refers to this object, which must stay where it is.
    ApplicationEnvironment environment();

private:
    std::unique_ptr<LoginItem> makeLoginItem() const;

    const Bundle& bundle_;
    Log& log_;
    std::function<void(const QString& program)> restart_;
    QDBusConnection sessionBus_ = QDBusConnection::sessionBus();
    QString desktop_ = qEnvironmentVariable("XDG_CURRENT_DESKTOP");
    FileUserDefaults defaults_;
    LinuxProbes probes_;
    TimerFdClock clock_;
    ClockDriver clockDriver_{clock_};
    MainThread mainThread_;
    SerialExecutor schedulerThread_;
    SerialExecutor surveyThread_;
    DesktopNotificationCenter notificationCenter_;
    LocalSettings localSettings_{desktop_};
    DesktopAppearance appearance_{sessionBus_, desktop_, localSettings_};
    StatusItemPlace itemPlace_{placeSources(desktop_.split(u':'))};
    DesktopLook look_{sessionBus_, localSettings_.look()};
    LinuxApplicationSource applications_;
    Sandbox sandbox_{"/"};
    std::unique_ptr<LoginItem> loginItem_;
};

} // namespace tidewell
