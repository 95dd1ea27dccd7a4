#pragma once

#include "desktop/statusitem/StatusItem.h"

#include <QSize>

namespace tidewell {

/// The panel's geometry: beside the item, else beside the click, else in the corner of the bar
/// where status items usually are. All of it lies in the screen's available area, which makes a
/// larger panel smaller.
QRect panelPosition(const StatusItemActivation& activation, const QRect& screen,
                    const QRect& available, const QSize& wanted);

/// The same on the screen of the item or click, else on the primary screen.
QRect panelPosition(const StatusItemActivation& activation, const QSize& panel);

} // namespace tidewell
