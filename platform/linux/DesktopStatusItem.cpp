#include "platform/linux/DesktopStatusItem.h"

#include "platform/linux/LabelWindowStatusItem.h"
#include "platform/linux/StatusNotifierStatusItem.h"
#include "platform/linux/TrayIconStatusItem.h"

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
