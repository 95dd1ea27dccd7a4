#!/usr/bin/python3
"""A notification daemon that shows nothing and prints every notification as a line of JSON."""

import itertools
import json

import dbus
import dbus.mainloop.glib
import dbus.service
from gi.repository import GLib

NAME = "org.freedesktop.Notifications"


class Daemon(dbus.service.Object):
    numbers = itertools.count(1)

    @dbus.service.method(NAME, out_signature="as")
    def GetCapabilities(self):
        return ["body", "body-markup", "sound"]

    @dbus.service.method(NAME, out_signature="ssss")
    def GetServerInformation(self):
        return "fake", "Tidewell", "1", "1.2"

    @dbus.service.method(NAME, in_signature="susssasa{sv}i", out_signature="u")
    def Notify(self, program, replaces, _icon, summary, body, _actions, hints, _timeout):
        print(json.dumps({"program": program, "replaces": replaces, "summary": summary,
                          "body": body, "hints": {key: str(hints[key]) for key in hints}}),
              flush=True)
        return next(self.numbers)


dbus.mainloop.glib.DBusGMainLoop(set_as_default=True)
bus = dbus.SessionBus()
daemon = Daemon(bus, "/org/freedesktop/Notifications")
name = dbus.service.BusName(NAME, bus)
GLib.MainLoop().run()
