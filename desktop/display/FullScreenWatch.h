#pragma once

#include <QAbstractNativeEventFilter>
#include <QRect>

#include <cstdint>
#include <functional>
#include <optional>

class QScreen;

namespace tidewell {

/// Whether the active window, or the one that was active before one of ours, fills its screen, as
/// the window manager tells by X events. Nothing does without X11. Main thread.
class FullScreenWatch final : private QAbstractNativeEventFilter {
public:
    /// `changed` is called when another answer may be true. After the application object.
    explicit FullScreenWatch(std::function<void()> changed);

    bool fills(const QScreen& screen) const;

private:
    bool nativeEventFilter(const QByteArray& type, void* message, qintptr* result) override;
    void follow();
    void look();

    std::function<void()> changed_;
    std::uint32_t root_ = 0; // X windows and atoms
    std::uint32_t active_ = 0;
    std::uint32_t activeWindow_ = 0;
    std::uint32_t state_ = 0;
    std::uint32_t fullScreen_ = 0;
    std::optional<QPoint> middle_; // of the window that fills its screen, in native pixels
};

} // namespace tidewell
