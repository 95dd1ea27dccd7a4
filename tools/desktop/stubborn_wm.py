#!/usr/bin/python3
"""A window manager that gives the focus to every window that comes up, and never back.

It claims to activate windows on request (_NET_ACTIVE_WINDOW) and does not, as window managers do
that take such a request for a theft of the focus.
"""

from Xlib import X, Xatom, display

server = display.Display()
root = server.screen().root
root.change_attributes(event_mask=X.SubstructureRedirectMask | X.SubstructureNotifyMask)
check = root.create_window(0, 0, 1, 1, 0, 0)
atom = server.intern_atom
for window in (root, check):
    window.change_property(atom("_NET_SUPPORTING_WM_CHECK"), Xatom.WINDOW, 32, [check.id])
root.change_property(atom("_NET_SUPPORTED"), Xatom.ATOM, 32, [atom("_NET_ACTIVE_WINDOW")])
while True:
    event = server.next_event()
    if event.type == X.ConfigureRequest:
        event.window.configure(x=event.x, y=event.y, width=event.width, height=event.height)
    elif event.type == X.MapRequest:
        event.window.map()
        event.window.raise_window()
        if event.window.get_wm_class() and event.window.get_wm_class()[0] == "tidewell":
            event.window.set_input_focus(X.RevertToNone, X.CurrentTime)
