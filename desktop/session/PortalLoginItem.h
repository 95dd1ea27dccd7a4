#pragma once

#include "base/ports/LoginItem.h"

#include <QDBusConnection>
#include <QStringList>

namespace tidewell {

/// Asks the desktop's Background portal, as a program in a sandbox has to. The desktop may ask the
/// user; what becomes of it is not waited for, so both succeed.
class PortalLoginItem final : public LoginItem {
public:
    /// `command` is what is started at login, as the sandbox names it.
    PortalLoginItem(QDBusConnection bus, QStringList command);

    Result<> registerApplication() override;
    Result<> unregisterApplication() override;

private:
    void request(bool startsAtLogin);

    QDBusConnection bus_;
    QStringList command_;
};

} // namespace tidewell
