#pragma once

#include "desktop/appearance/DesktopAppearance.h"
#include "desktop/statusitem/StatusItem.h"

#include <QSystemTrayIcon>

namespace tidewell {

/// The status item as an icon in an old-style tray. The text is its tooltip.
///
/// The toolkit decides once per process, when the first icon is made, whether the desktop draws
/// items from the bus, and never embeds an icon afterwards if it does; and it waits for the answer.
/// So this must be made only while a `StatusNotifierHost` is known to be absent.
class TrayIconStatusItem final : public StatusItem {
public:
    /// `appearance` must outlive this.
    TrayIconStatusItem(DesktopAppearance& appearance, StatusItemBehaviour behaviour);

    void setContent(const StatusItemContent& content) override;

private:
    void draw();
    void react(QSystemTrayIcon::ActivationReason reason);

    DesktopAppearance& appearance_;
    StatusItemBehaviour behaviour_;
    StatusItemContent content_;
    QSystemTrayIcon icon_;
    Subscription appearanceChanged_;
};

} // namespace tidewell
