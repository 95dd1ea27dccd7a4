#pragma once

#include "platform/linux/StatusItem.h"

#include <QSize>

namespace tidewell {

/// Where the panel goes: its top left corner, so that it lies beside the item (or the click, where
/// the item's place is not known), wholly in the available area of the screen. Without either it
/// goes to the corner of the desktop's own bar where status items usually are. A panel larger than
/// the available area starts in its top left corner.
QPoint panelPosition(const StatusItemActivation& activation, const QRect& screen,
                     const QRect& available, const QSize& panel);

/// The same on the screen of the click or item, and on the primary screen without either.
QPoint panelPosition(const StatusItemActivation& activation, const QSize& panel);

} // namespace tidewell
