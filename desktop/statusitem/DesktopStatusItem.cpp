#include "desktop/statusitem/DesktopStatusItem.h"

#include "desktop/statusitem/LabelWindowStatusItem.h"
#include "desktop/statusitem/StatusNotifierStatusItem.h"
#include "desktop/statusitem/TrayIconStatusItem.h"

namespace tidewell {

DesktopStatusItem::DesktopStatusItem(const QDBusConnection& bus, ContinuousClock& clock,
                                     DesktopAppearance& appearance, StatusItemPlace& place,
                                     const KeptLabelPosition& labelPosition, Log& log,
                                     const StatusItemBehaviour& behaviour)
    : notifierHost_(bus, log)
    , switcher_(clock, notifierHost_, trayHost_,
                {.notifier =
                     [this, bus, &appearance, &place, behaviour] {
                         return std::make_unique<StatusNotifierStatusItem>(
                             bus, notifierHost_, appearance, place, behaviour);
                     },
                 .tray =
                     [&appearance, &place, behaviour] {
                         return std::make_unique<TrayIconStatusItem>(appearance, place, behaviour);
                     },
                 .label =
                     [&appearance, &place, labelPosition, behaviour] {
                         return std::make_unique<LabelWindowStatusItem>(appearance, place,
                                                                        labelPosition, behaviour);
                     }}) {}

} // namespace tidewell
