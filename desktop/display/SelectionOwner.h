#pragma once

#include <QAbstractNativeEventFilter>

#include <cstdint>
#include <functional>
#include <string>

namespace tidewell {

/// The window that owns a manager selection of the program's X screen, followed by X events. None
/// without X11. Main thread.
class SelectionOwner final : private QAbstractNativeEventFilter {
public:
    /// `selection` is the name without the screen's number, "_XSETTINGS_S", say. `changed` is
    /// called after each change of the owner, the loss of one before the next, and after changes of
    /// the owner's `property`, where one is named. After the application object.
    SelectionOwner(const std::string& selection, const std::string& property,
                   std::function<void()> changed);

    std::uint32_t window() const { return window_; }
    std::uint32_t property() const { return property_; } ///< as an atom

private:
    bool nativeEventFilter(const QByteArray& type, void* message, qintptr* result) override;
    void follow();
    std::uint32_t watchedOwner() const;

    std::function<void()> changed_;
    std::uint32_t selection_ = 0; // X atoms and a window
    std::uint32_t property_ = 0;
    std::uint32_t manager_ = 0;
    std::uint32_t window_ = 0;
};

} // namespace tidewell
