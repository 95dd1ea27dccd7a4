#pragma once

#include "desktop/appearance/DesktopAppearance.h"
#include "desktop/statusitem/StatusItem.h"
#include "desktop/statusitem/StatusItemPlace.h"
#include "desktop/statusitem/StatusMenu.h"

#include <QSystemTrayIcon>

namespace tidewell {

/// The status item as an XEmbed icon in a system tray. The text is its tooltip.
///
/// The first QSystemTrayIcon of a process asks by a blocking call whether there is a
/// StatusNotifierWatcher, and if so no icon of the process is ever embedded. So this may be made
/// only while `StatusNotifierHost` is known to be absent.
class TrayIconStatusItem final : public StatusItem {
public:
    /// The references must outlive this.
    TrayIconStatusItem(DesktopAppearance& appearance, StatusItemPlace& place,
                       StatusItemBehaviour behaviour);

    void setContent(const StatusItemContent& content) override;

private:
    void draw();
    void react(QSystemTrayIcon::ActivationReason reason);

    DesktopAppearance& appearance_;
    StatusItemPlace& place_;
    StatusItemBehaviour behaviour_;
    StatusMenuPopup menu_;
    StatusItemContent content_;
    QSystemTrayIcon icon_;
    Subscription appearanceChanged_;
};

} // namespace tidewell
