#pragma once

#include "base/ports/Log.h"
#include "desktop/statusitem/LabelPosition.h"
#include "desktop/statusitem/StatusItemSwitcher.h"

#include <QDBusConnection>

namespace tidewell {

class DesktopAppearance;
class StatusItemPlace;

/// The forms of the status item, the best first, with the hosts that they are for. A new kind of
/// host is one more row. The references must outlive them. After the application object.
std::vector<StatusItemForm> statusItemForms(const QDBusConnection& bus,
                                            DesktopAppearance& appearance, StatusItemPlace& place,
                                            const KeptLabelPosition& labelPosition, Log& log,
                                            const StatusItemBehaviour& behaviour);

} // namespace tidewell
