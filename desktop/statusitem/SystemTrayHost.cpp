#include "desktop/statusitem/SystemTrayHost.h"

#include "desktop/statusitem/X11.h"

#include <QCoreApplication>

#include <cstdlib>

namespace tidewell {

SystemTrayHost::SystemTrayHost() {
    xcb_connection_t* const server = x11::connection();
    if (server == nullptr) {
        return;
    }
    selection_ = x11::atom(server, "_NET_SYSTEM_TRAY_S" + std::to_string(x11::screenNumber()));
    manager_ = x11::atom(server, "MANAGER");
    // Qt has selected the root window's events, to which a new tray sends MANAGER.
    qApp->installNativeEventFilter(this);
    tray_ = watchedOwner();
}

bool SystemTrayHost::nativeEventFilter(const QByteArray&, void* message, qintptr*) {
    const auto* const event = static_cast<const xcb_generic_event_t*>(message);
    switch (event->response_type & 0x7fU) {
    case XCB_CLIENT_MESSAGE: {
        const auto* const announcement = static_cast<const xcb_client_message_event_t*>(message);
        if (announcement->type == manager_ && announcement->data.data32[1] == selection_) {
            follow(watchedOwner());
        }
        break;
    }
    case XCB_DESTROY_NOTIFY: {
        const auto* const end = static_cast<const xcb_destroy_notify_event_t*>(message);
        if (tray_ != XCB_WINDOW_NONE && end->window == tray_) {
            follow(watchedOwner());
        }
        break;
    }
    default:
        break;
    }
    return false;
}

void SystemTrayHost::follow(std::uint32_t tray) {
    if (tray == tray_) {
        return;
    }
    if (tray_ != XCB_WINDOW_NONE && tray != XCB_WINDOW_NONE) {
        tray_ = XCB_WINDOW_NONE;
        tellObservers();
    }
    tray_ = tray;
    tellObservers();
}

/// The tray's window, with DestroyNotify selected on it; none where there is no tray.
std::uint32_t SystemTrayHost::watchedOwner() const {
    xcb_connection_t* const server = x11::connection();
    for (;;) {
        const xcb_window_t owner = x11::selectionOwner(server, selection_);
        if (owner == XCB_WINDOW_NONE) {
            return owner;
        }
        // The same mask that Qt selects on this window: a client has one mask per window.
        const std::uint32_t mask = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
        const auto request =
            xcb_change_window_attributes_checked(server, owner, XCB_CW_EVENT_MASK, &mask);
        xcb_generic_error_t* const error = xcb_request_check(server, request);
        if (error == nullptr) {
            return owner;
        }
        std::free(error); // destroyed meanwhile: look again
    }
}

} // namespace tidewell
