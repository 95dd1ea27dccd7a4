#pragma once

#include <xcb/xcb.h>

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

class QPoint;
class QWidget;
class QWindow;

/// What this program asks of the X server beside what Qt does. Main thread.
namespace tidewell::x11 {

using OwnConnection = std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)>;

/// A connection of our own to the X server of `DISPLAY`; null where there is none, or where it does
/// not answer in time. Works before the application object is made, and before there are threads.
OwnConnection connect(std::chrono::milliseconds patience);

/// Qt's connection; null on another platform.
xcb_connection_t* connection();

// The next three are for programs on X11 only.

/// The atom of that name; XCB_ATOM_NONE when the connection has failed.
xcb_atom_t atom(const std::string& name);

/// The owner of a selection; XCB_WINDOW_NONE without one.
xcb_window_t selectionOwner(xcb_atom_t selection);

/// The root window of the program's screen.
xcb_window_t rootWindow();

/// The bytes of a window's property, 65,536 at most; none where either is missing.
std::vector<std::uint8_t> property(xcb_window_t window, xcb_atom_t name);

/// The X screen of `DISPLAY`, the n of selections such as _NET_WM_CM_Sn.
int screenNumber();

/// Whether the X server is XWayland; false without X11.
bool isXWayland();

/// Where the middle of a window is on the screen, in native pixels; empty where it is gone.
std::optional<QPoint> middle(xcb_window_t window);

/// Whether the window is one of the program's.
bool isOurs(xcb_window_t window);

/// Selects changes of the properties of a window that is none of ours, or nothing of it any more.
/// It may be gone.
void selectProperties(xcb_window_t window, bool isOn);

/// Whether one of the program's windows has the input focus: as the X server knows, while Qt may be
/// wrong for good; what Qt knows without X11.
bool hasFocus();

/// Whether a compositor blends translucent windows; true without X11.
bool isComposited();

// The window managers' view of a window of ours. Without X11 they do nothing.

/// Keeps the window, not mapped yet, out of task bars and pagers. To be told before each showing.
void leaveOutOfTaskBars(QWidget& window);

/// Puts the window on all workspaces. To be told after each showing: not every window manager asks
/// for it before.
void showOnAllWorkspaces(QWidget& window);

/// Fills the mapped window, which has an alpha channel, with nothing.
void makeTransparent(QWindow& window);

/// Starts the window, not mapped yet, with the focus that XDG_ACTIVATION_TOKEN grants, if that is
/// set, and removes the variable.
void useActivationToken(QWidget& window);

} // namespace tidewell::x11
