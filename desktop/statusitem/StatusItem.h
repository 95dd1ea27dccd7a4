#pragma once

#include "base/values/Colour.h"

#include <QPoint>
#include <QRect>

#include <array>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace tidewell {

/// What the status item shows. Texts are UTF-8 and plain.
struct StatusItemContent {
    std::string symbolName;           ///< a known symbol, see ui/Symbols.h
    Colour colour = colours::primary; ///< in the appearance of what the item stands on
    std::string text;

    bool operator==(const StatusItemContent&) const = default;
};

/// The sizes in pixels in which desktops ask for an item's picture.
inline constexpr std::array statusItemSizes{16, 22, 24, 32, 48, 64};

/// Where the user reached for the item, in the toolkit's screen coordinates. Both are missing where
/// the desktop does not say or cannot be believed.
struct StatusItemActivation {
    std::optional<QPoint> click;
    std::optional<QRect> item; ///< the place that the item itself takes
};

/// One line of the item's menu.
struct StatusMenuEntry {
    std::string title;
    std::function<void()> action;
};

/// What the item is called and what it does. The functions are called from the event loop, never
/// from within a call to the item, and may open nested loops.
struct StatusItemBehaviour {
    std::string identifier; ///< stable over runs, for the desktop's memory of its items
    std::string title;      ///< the program's name
    std::function<void(const StatusItemActivation&)> activated;
    std::vector<StatusMenuEntry> menu; ///< the first entry is what desktops without clicks offer
};

/// The program's place in the desktop's status area, there as long as this object. Main thread.
class StatusItem {
public:
    StatusItem() = default;
    StatusItem(const StatusItem&) = delete;
    StatusItem& operator=(const StatusItem&) = delete;
    virtual ~StatusItem() = default;

    /// Shows `content` from now on. Costs next to nothing when it shows that already.
    virtual void setContent(const StatusItemContent& content) = 0;
};

} // namespace tidewell
