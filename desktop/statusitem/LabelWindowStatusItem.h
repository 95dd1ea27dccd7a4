#pragma once

#include "desktop/appearance/DesktopAppearance.h"
#include "desktop/statusitem/StatusItem.h"
#include "desktop/statusitem/StatusItemPlace.h"

#include <memory>

namespace tidewell {

class LabelWindow;

/// The status item as a small window in the top right corner of the primary screen, on top and on
/// all workspaces, for desktops without any host. It never takes the focus by itself. With the
/// focus, Space and Return do what a click does, the menu key what a right click does.
class LabelWindowStatusItem final : public StatusItem {
public:
    /// The references must outlive this.
    LabelWindowStatusItem(DesktopAppearance& appearance, StatusItemPlace& place,
                          StatusItemBehaviour behaviour);
    ~LabelWindowStatusItem() override;

    void setContent(const StatusItemContent& content) override;

private:
    std::unique_ptr<LabelWindow> window_;
};

} // namespace tidewell
