#pragma once

#include "desktop/statusitem/StatusItemPlace.h"

#include <QSize>

namespace tidewell {

/// The panel's geometry: beside the item, or where nobody knows that, in the corner of the bar
/// where status items usually are. All of it lies in the available area of one of the screens,
/// which makes a larger panel smaller. Pure.
QRect panelPosition(const std::optional<QRect>& item, const std::vector<ScreenArea>& screens,
                    const QSize& wanted);

} // namespace tidewell
