#pragma once

#include "desktop/display/SelectionOwner.h"
#include "desktop/statusitem/StatusHost.h"

namespace tidewell {

/// The XEmbed system tray of an X11 desktop: the owner of the selection _NET_SYSTEM_TRAY_Sn. Always
/// absent without X11.
class SystemTrayHost final : public StatusHost {
public:
    HostState state() const override {
        return tray_.window() == 0 ? HostState::absent : HostState::present;
    }

private:
    SelectionOwner tray_{"_NET_SYSTEM_TRAY_S", {}, [this] { tellObservers(); }};
};

} // namespace tidewell
