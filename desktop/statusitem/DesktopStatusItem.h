#pragma once

#include "desktop/statusitem/LabelPosition.h"
#include "desktop/statusitem/StatusItemSwitcher.h"
#include "desktop/statusitem/StatusNotifierHost.h"
#include "desktop/statusitem/SystemTrayHost.h"

namespace tidewell {

class DesktopAppearance;
class StatusItemPlace;

/// The status item, in the form that the running desktop supports, with the hosts it follows.
class DesktopStatusItem final : public StatusItem {
public:
    /// The references must outlive this. After the application object.
    DesktopStatusItem(const QDBusConnection& bus, ContinuousClock& clock,
                      DesktopAppearance& appearance, StatusItemPlace& place,
                      const KeptLabelPosition& labelPosition, Log& log,
                      const StatusItemBehaviour& behaviour);

    void setContent(const StatusItemContent& content) override { switcher_.setContent(content); }

private:
    StatusNotifierHost notifierHost_;
    SystemTrayHost trayHost_;
    StatusItemSwitcher switcher_;
};

} // namespace tidewell
