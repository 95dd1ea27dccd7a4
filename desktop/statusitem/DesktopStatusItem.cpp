#include "desktop/statusitem/DesktopStatusItem.h"

#include "desktop/statusitem/LabelWindowStatusItem.h"
#include "desktop/statusitem/StatusNotifierStatusItem.h"
#include "desktop/statusitem/TrayIconStatusItem.h"

namespace tidewell {

DesktopStatusItem::DesktopStatusItem(const QDBusConnection& bus, ContinuousClock& clock,
                                     DesktopAppearance& appearance, Log& log,
                                     const StatusItemBehaviour& behaviour)
    : notifierHost_(bus, log)
    , switcher_(clock, notifierHost_, trayHost_,
                {.notifier =
                     [this, bus, &appearance, behaviour] {
                         return std::make_unique<StatusNotifierStatusItem>(bus, notifierHost_,
                                                                           appearance, behaviour);
                     },
                 .tray =
                     [&appearance, behaviour] {
                         return std::make_unique<TrayIconStatusItem>(appearance, behaviour);
                     },
                 .label =
                     [&appearance, behaviour] {
                         return std::make_unique<LabelWindowStatusItem>(appearance, behaviour);
                     }}) {}

} // namespace tidewell
