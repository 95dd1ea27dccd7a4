#pragma once

#include "desktop/statusitem/StatusItem.h"

#include <QSize>

namespace tidewell {

/// Where the panel goes: beside the item (or the click, where the item's place is not known),
/// wholly in the available area of the screen. Without either it goes to the corner of the
/// desktop's own bar where status items usually are. A panel larger than the available area is cut
/// down to it.
QRect panelPosition(const StatusItemActivation& activation, const QRect& screen,
                    const QRect& available, const QSize& wanted);

/// The same on the screen of the click or item, and on the primary screen without either.
QRect panelPosition(const StatusItemActivation& activation, const QSize& panel);

} // namespace tidewell
