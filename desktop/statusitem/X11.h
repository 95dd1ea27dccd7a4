#pragma once

#include <xcb/xcb.h>

#include <memory>
#include <string>

class QWidget;

/// The little that this program asks of an X server beside the toolkit. Main thread.
namespace tidewell::x11 {

using OwnConnection = std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)>;

/// A connection of our own to the X server that `DISPLAY` names; null where there is none. Needs no
/// application object.
OwnConnection connect();

/// The toolkit's connection; null where it runs on something else.
xcb_connection_t* connection();

/// The atom of that name; none when the connection has failed.
xcb_atom_t atom(xcb_connection_t* connection, const std::string& name);

/// The window that holds a selection; none when nobody does.
xcb_window_t selectionOwner(xcb_connection_t* connection, xcb_atom_t selection);

/// The number of the screen that the program is on, as selections' names carry it.
int screenNumber();

/// Whether a compositor shows windows' transparent parts; true where there is no X server.
bool isComposited();

/// Asks for the window, not shown yet, to be on all desktops. Nothing happens without X.
void showOnAllDesktops(const QWidget& window);

} // namespace tidewell::x11
