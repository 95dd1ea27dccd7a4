#pragma once

#include "desktop/appearance/DesktopAppearance.h"
#include "desktop/statusitem/LabelPosition.h"
#include "desktop/statusitem/StatusItem.h"
#include "desktop/statusitem/StatusItemPlace.h"

#include <memory>

namespace tidewell {

/// The status item as a small window at the top right of the primary screen, or where the user
/// dragged it, on top and on all workspaces, for desktops without any host. A window that fills the
/// screen hides it. It never takes the focus by itself. With the focus, Space and Return do what a
/// click does, the menu key what a right click does.
/// The references must outlive it.
std::unique_ptr<StatusItem> makeLabelWindow(DesktopAppearance& appearance, StatusItemPlace& place,
                                            const KeptLabelPosition& position,
                                            StatusItemBehaviour behaviour);

} // namespace tidewell
