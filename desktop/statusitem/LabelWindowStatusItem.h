#pragma once

#include "desktop/appearance/DesktopAppearance.h"
#include "desktop/statusitem/LabelPosition.h"
#include "desktop/statusitem/StatusItem.h"
#include "desktop/statusitem/StatusItemPlace.h"

#include <memory>

namespace tidewell {

class LabelWindow;

/// The status item as a small window at the top right of the primary screen, or where the user
/// dragged it, on top and on all workspaces, for desktops without any host. A window that fills the
/// screen hides it. It never takes the focus by itself. With the focus, Space and Return do what a
/// click does, the menu key what a right click does.
class LabelWindowStatusItem final : public StatusItem {
public:
    /// The references must outlive this.
    LabelWindowStatusItem(DesktopAppearance& appearance, StatusItemPlace& place,
                          const KeptLabelPosition& position, StatusItemBehaviour behaviour);
    ~LabelWindowStatusItem() override;

    void setContent(const StatusItemContent& content) override;

private:
    std::unique_ptr<LabelWindow> window_;
};

} // namespace tidewell
