#include "desktop/session/PortalLoginItem.h"

#include <QDBusMessage>
#include <QVariantMap>

#include <utility>

namespace tidewell {

PortalLoginItem::PortalLoginItem(QDBusConnection bus, QStringList command)
    : bus_(std::move(bus))
    , command_(std::move(command)) {}

Result<> PortalLoginItem::registerApplication() {
    request(true);
    return {};
}

Result<> PortalLoginItem::unregisterApplication() {
    request(false);
    return {};
}

void PortalLoginItem::request(bool startsAtLogin) {
    auto call = QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.portal.Desktop"),
                                               QStringLiteral("/org/freedesktop/portal/desktop"),
                                               QStringLiteral("org.freedesktop.portal.Background"),
                                               QStringLiteral("RequestBackground"));
    const QString noParentWindow;
    call << noParentWindow
         << QVariantMap{{QStringLiteral("autostart"), startsAtLogin},
                        {QStringLiteral("commandline"), command_}};
    bus_.send(call);
}

} // namespace tidewell
