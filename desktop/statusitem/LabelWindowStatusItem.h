#pragma once

#include "desktop/appearance/DesktopAppearance.h"
#include "desktop/statusitem/StatusItem.h"

#include <memory>

namespace tidewell {

class LabelWindow;

/// The status item as a small window of our own in the top right corner of the primary screen, in
/// front of other windows and on all desktops, for desktops that show no status items at all. It
/// never takes the keyboard by itself; reached by it, Space and Return do what a click does, and
/// the menu key what a right click does.
class LabelWindowStatusItem final : public StatusItem {
public:
    /// `appearance` must outlive this.
    LabelWindowStatusItem(DesktopAppearance& appearance, StatusItemBehaviour behaviour);
    ~LabelWindowStatusItem() override;

    void setContent(const StatusItemContent& content) override;

private:
    std::unique_ptr<LabelWindow> window_;
};

} // namespace tidewell
