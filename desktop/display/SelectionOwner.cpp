#include "desktop/display/SelectionOwner.h"

#include "desktop/display/X11.h"

#include <QCoreApplication>

#include <cstdlib>

namespace tidewell {

SelectionOwner::SelectionOwner(const std::string& selection, const std::string& property,
                               std::function<void()> changed)
    : changed_(std::move(changed)) {
    if (x11::connection() == nullptr) {
        return;
    }
    selection_ = x11::atom(selection + std::to_string(x11::screenNumber()));
    property_ = property.empty() ? xcb_atom_t{XCB_ATOM_NONE} : x11::atom(property);
    manager_ = x11::atom("MANAGER");
    // Qt has selected the root window's events, to which a new owner sends MANAGER.
    qApp->installNativeEventFilter(this);
    window_ = watchedOwner();
}

bool SelectionOwner::nativeEventFilter(const QByteArray&, void* message, qintptr*) {
    const auto* const event = static_cast<const xcb_generic_event_t*>(message);
    switch (event->response_type & 0x7fU) {
    case XCB_CLIENT_MESSAGE: {
        const auto* const announcement = static_cast<const xcb_client_message_event_t*>(message);
        if (announcement->type == manager_ && announcement->data.data32[1] == selection_) {
            follow();
        }
        break;
    }
    case XCB_DESTROY_NOTIFY: {
        const auto* const end = static_cast<const xcb_destroy_notify_event_t*>(message);
        if (window_ != XCB_WINDOW_NONE && end->window == window_) {
            follow();
        }
        break;
    }
    case XCB_PROPERTY_NOTIFY: {
        const auto* const change = static_cast<const xcb_property_notify_event_t*>(message);
        if (window_ != XCB_WINDOW_NONE && change->window == window_ && change->atom == property_) {
            changed_();
        }
        break;
    }
    default:
        break;
    }
    return false;
}

void SelectionOwner::follow() {
    const std::uint32_t owner = watchedOwner();
    if (owner == window_) {
        return;
    }
    if (window_ != XCB_WINDOW_NONE && owner != XCB_WINDOW_NONE) {
        window_ = XCB_WINDOW_NONE;
        changed_();
    }
    window_ = owner;
    changed_();
}

/// The owner, with its events selected; none where there is none.
std::uint32_t SelectionOwner::watchedOwner() const {
    xcb_connection_t* const server = x11::connection();
    for (;;) {
        const xcb_window_t owner = x11::selectionOwner(selection_);
        if (owner == XCB_WINDOW_NONE) {
            return owner;
        }
        // The same mask that Qt selects on these windows: a client has one mask per window.
        const std::uint32_t mask =
            XCB_EVENT_MASK_STRUCTURE_NOTIFY |
            (property_ == XCB_ATOM_NONE ? 0U : std::uint32_t{XCB_EVENT_MASK_PROPERTY_CHANGE});
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
