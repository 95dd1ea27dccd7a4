#pragma once

#include <QAbstractNativeEventFilter>

#include <cstdint>
#include <functional>

class QPoint;

namespace tidewell {

/// Tells of mouse buttons that are pressed outside this program's windows, by raw events of XInput
/// 2: bars and bare desktops take clicks, but not the focus. The clicks still reach whom they are
/// for. Silent without X11, and under XWayland for clicks on windows of Wayland. Main thread.
class OutsideClicks final : private QAbstractNativeEventFilter {
public:
    /// `clicked` gets the pointer's place. After the application object.
    explicit OutsideClicks(std::function<void(const QPoint& pointer)> clicked);
    OutsideClicks(const OutsideClicks&) = delete;
    OutsideClicks& operator=(const OutsideClicks&) = delete;
    ~OutsideClicks() override;

    /// Nothing is told, and nothing asked of the X server, while it is off, as it is at first.
    void setOn(bool isOn);

private:
    bool nativeEventFilter(const QByteArray& type, void* message, qintptr* result) override;

    std::function<void(const QPoint& pointer)> clicked_;
    std::uint8_t extension_ = 0; // XInput's major opcode; 0 where there is none
};

} // namespace tidewell
