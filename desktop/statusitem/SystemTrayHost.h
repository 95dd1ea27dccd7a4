#pragma once

#include "desktop/statusitem/StatusHost.h"

#include <QAbstractNativeEventFilter>

#include <cstdint>

namespace tidewell {

/// The XEmbed system tray of an X11 desktop: the owner of the selection _NET_SYSTEM_TRAY_Sn,
/// followed by X events. Always absent without X11.
class SystemTrayHost final : public StatusHost, private QAbstractNativeEventFilter {
public:
    /// After the application object.
    SystemTrayHost();

    HostState state() const override { return tray_ == 0 ? HostState::absent : HostState::present; }

private:
    bool nativeEventFilter(const QByteArray& type, void* message, qintptr* result) override;
    void follow(std::uint32_t tray);
    std::uint32_t watchedOwner() const;

    std::uint32_t selection_ = 0; // X atoms and a window
    std::uint32_t manager_ = 0;
    std::uint32_t tray_ = 0;
};

} // namespace tidewell
