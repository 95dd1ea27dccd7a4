#include "desktop/statusitem/StatusItemForms.h"

#include "desktop/statusitem/LabelWindow.h"
#include "desktop/statusitem/StatusNotifierStatusItem.h"
#include "desktop/statusitem/SystemTrayHost.h"
#include "desktop/statusitem/TrayIconStatusItem.h"

namespace tidewell {

std::vector<StatusItemForm> statusItemForms(const QDBusConnection& bus,
                                            DesktopAppearance& appearance, StatusItemPlace& place,
                                            const KeptLabelPosition& labelPosition, Log& log,
                                            const StatusItemBehaviour& behaviour) {
    const auto notifierHost = std::make_shared<StatusNotifierHost>(bus, log);
    const auto notifierItem = [=, &appearance, &place] {
        return std::make_unique<StatusNotifierStatusItem>(bus, *notifierHost, appearance, place,
                                                          behaviour);
    };
    const auto trayIcon = [=, &appearance, &place] {
        return std::make_unique<TrayIconStatusItem>(appearance, place, behaviour);
    };
    const auto labelWindow = [=, &appearance, &place] {
        return makeLabelWindow(appearance, place, labelPosition, behaviour);
    };
    return {
        {.host = notifierHost, .make = notifierItem, .isForgotten = true},
        {.host = std::make_shared<SystemTrayHost>(), .make = trayIcon}, // which follows its tray
        {.host = nullptr, .make = labelWindow},
    };
}

} // namespace tidewell
