#include "desktop/display/FullScreenWatch.h"

#include "desktop/display/X11.h"

#include <QCoreApplication>
#include <QScreen>

#include <algorithm>
#include <cstring>
#include <vector>

namespace tidewell {

namespace {

/// The windows or atoms that a property lists.
std::vector<std::uint32_t> listed(std::uint32_t window, std::uint32_t property) {
    const auto bytes = x11::property(window, property);
    std::vector<std::uint32_t> values(bytes.size() / sizeof(std::uint32_t));
    if (!values.empty()) { // memcpy() takes no null pointer
        std::memcpy(values.data(), bytes.data(), values.size() * sizeof(std::uint32_t));
    }
    return values;
}

} // namespace

FullScreenWatch::FullScreenWatch(std::function<void()> changed)
    : changed_(std::move(changed)) {
    if (x11::connection() == nullptr) {
        return;
    }
    root_ = x11::rootWindow();
    active_ = x11::atom("_NET_ACTIVE_WINDOW");
    state_ = x11::atom("_NET_WM_STATE");
    fullScreen_ = x11::atom("_NET_WM_STATE_FULLSCREEN");
    // Qt has selected the root window's events.
    qApp->installNativeEventFilter(this);
    follow();
}

bool FullScreenWatch::fills(const QScreen& screen) const {
    const QRect place = screen.geometry();
    // Qt scales each screen from its upper left corner.
    return middle_ &&
           QRect(place.topLeft(), place.size() * screen.devicePixelRatio()).contains(*middle_);
}

bool FullScreenWatch::nativeEventFilter(const QByteArray&, void* message, qintptr*) {
    const auto* const event = static_cast<const xcb_property_notify_event_t*>(message);
    if ((event->response_type & 0x7fU) != XCB_PROPERTY_NOTIFY) {
        return false;
    }
    if (event->window == root_ && event->atom == active_) {
        follow();
        changed_();
    } else if (event->window == activeWindow_ && event->atom == state_) {
        look();
        changed_();
    }
    return false;
}

void FullScreenWatch::follow() {
    const auto active = listed(root_, active_);
    const std::uint32_t window = active.empty() ? std::uint32_t{XCB_WINDOW_NONE} : active.front();
    if (!x11::isOurs(window)) {
        if (window != activeWindow_) {
            x11::selectProperties(activeWindow_, false);
        }
        activeWindow_ = window;
        x11::selectProperties(activeWindow_, true); // numbers are used again
    }
    look();
}

void FullScreenWatch::look() {
    const auto states = listed(activeWindow_, state_);
    middle_ = std::ranges::find(states, fullScreen_) == states.end() ? std::nullopt
                                                                     : x11::middle(activeWindow_);
}

} // namespace tidewell
