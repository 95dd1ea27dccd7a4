#pragma once

#include "base/values/Colour.h"
#include "base/values/Interface.h"

#include <array>
#include <functional>
#include <string>
#include <vector>

namespace tidewell {

/// What the status item shows. Texts are UTF-8 without markup.
struct StatusItemContent {
    std::string symbolName;           ///< of ui/Symbols.h
    Colour colour = colours::primary; ///< drawn in the status area's appearance
    std::string text;
    std::string description; ///< for tooltips and assistive technology

    bool operator==(const StatusItemContent&) const = default;
};

/// The sizes of the item's picture, in pixels.
inline constexpr std::array statusItemSizes{16, 22, 24, 32, 48, 64};

/// One line of the item's menu.
struct StatusMenuEntry {
    std::string title;
    std::function<void()> action;
};

/// What the item is called and what it does. The functions are called from the event loop, never
/// from within a call to the item, and may run nested event loops.
struct StatusItemBehaviour {
    std::string identifier; ///< the same in every run: hosts store an item's settings under it
    std::string title;      ///< the program's name
    std::function<void()> activated;
    std::vector<StatusMenuEntry>
        menu; ///< the first entry opens the panel, for hosts without Activate
};

/// The program's item in the desktop's status area, shown until this is destroyed. Main thread.
class StatusItem : public Interface {
public:
    /// Shows `content` from now on. Does nothing when it is shown already.
    virtual void setContent(const StatusItemContent& content) = 0;
};

} // namespace tidewell
