#pragma once

#include "desktop/display/ScreenWatch.h"

#include <QAbstractNativeEventFilter>
#include <QPoint>
#include <QPointer>
#include <QWindow>

#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

namespace tidewell {

/// Tells of mouse buttons that are pressed outside this program's windows, by raw events of XInput
/// 2: bars and bare desktops take clicks, but not the focus. The clicks still reach whom they are
/// for; on each screen a `ClickCatcher` takes them instead under XWayland, a `ScreenCover` with
/// Wayland's layer shell. Silent without any of these. Main thread.
class OutsideClicks final : private QAbstractNativeEventFilter {
public:
    /// `clicked` gets the place of a click that reaches somebody else, too. After the application
    /// object.
    explicit OutsideClicks(std::function<void(std::optional<QPoint> passed)> clicked);
    OutsideClicks(const OutsideClicks&) = delete;
    OutsideClicks& operator=(const OutsideClicks&) = delete;
    ~OutsideClicks() override;

    /// Nothing is told, and nothing asked of the X server, while it is off, as it is at first.
    /// Covers lie over all of our windows but those above the bars.
    void setOn(bool isOn);

private:
    bool nativeEventFilter(const QByteArray& type, void* message, qintptr* result) override;

    enum class Covers { none, clickCatchers, screenCovers };

    void coverScreens();
    void uncoverScreens();

    std::function<void(std::optional<QPoint> passed)> clicked_;
    Covers kind_ = Covers::none;
    std::vector<QPointer<QWindow>> covers_; // one for each screen while on
    ScreenWatch screenWatch_;
    std::uint8_t extension_ = 0; // XInput's major opcode; 0 where there is none
};

} // namespace tidewell
