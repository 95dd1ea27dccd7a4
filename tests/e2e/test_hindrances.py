"""Sessions in which something hangs, or has gone without a word."""

import signal
import socket

import dbus
from case import DesktopCase
from desktop import wait_for


NAME = "net.tidewell.Tidewell"


class HangingBuses(DesktopCase):
    host = None

    def test_are_left_out(self):
        self.need_plain_log()
        with socket.socket(socket.AF_UNIX) as listening:
            listening.bind(str(self.desktop.folder / "hanging"))
            listening.listen(0)  # so that its queue is full when the second bus is tried
            address = f"unix:path={listening.getsockname()}"
            tidewell = self.start(environment={
                "DBUS_SESSION_BUS_ADDRESS": address, "DBUS_SYSTEM_BUS_ADDRESS": address})
            wait_for("the label window", tidewell.label_window)
        for bus in ("session", "system"):
            self.assertIn(f"The {bus} bus does not answer", tidewell.log())
        self.assertEqual(tidewell.end(signal.SIGTERM), 0)


class SessionBus(DesktopCase):
    host = None

    def test_is_used_again_when_it_comes_back(self):
        self.need_plain_log()
        tidewell = self.start()
        wait_for("the label window", tidewell.label_window)
        wait_for("the name on the bus", lambda: self.desktop.owner(NAME))
        process = self.desktop.bus_processes["session"]
        self.desktop.forget_buses()
        process.kill()
        tidewell.wait_for_log("The session bus is gone")
        self.assertTrue(tidewell.label_window())
        (self.desktop.folder / "session-bus").unlink()
        self.desktop.start_bus("session", "services")
        wait_for("the name on the new bus", lambda: self.desktop.owner(NAME))
        wait_for("the label window again", tidewell.label_window)
        self.assertEqual(tidewell.log().count("error: "), 1)
        self.assertTrue(tidewell.history()["memoryPressureArray"])

    def test_is_used_once_it_answers(self):
        self.need_plain_log()
        process = self.desktop.bus_processes["session"]
        process.send_signal(signal.SIGSTOP)
        tidewell = self.start()
        tidewell.wait_for_log("The session bus does not answer")
        process.send_signal(signal.SIGCONT)
        wait_for("the name on the bus", lambda: self.desktop.owner(NAME))
        self.assertEqual(tidewell.end(signal.SIGTERM), 0)

    def test_is_not_started_where_there_is_none(self):
        before = self.desktop.names_of_processes()
        tidewell = self.start(environment={"DBUS_SESSION_BUS_ADDRESS": ""})
        wait_for("the label window", tidewell.label_window)
        self.assertEqual(self.desktop.names_of_processes() - before, {"tidewell"})


class SessionManager(DesktopCase):
    def test_that_hangs_or_crashes_is_not_even_asked(self):
        with socket.socket(socket.AF_UNIX) as listening:
            listening.bind(str(self.desktop.folder / "session-manager"))
            listening.listen()
            self.start_with_item(environment={
                "SESSION_MANAGER": f"local/{socket.gethostname()}:{listening.getsockname()}"})
            listening.setblocking(False)
            self.assertRaises(BlockingIOError, listening.accept)


class StoppedDisplay(DesktopCase):
    def test_does_not_keep_the_history_from_being_saved_nor_the_program_from_ending(self):
        tidewell = self.start_with_panel()
        self.desktop.display_process.send_signal(signal.SIGSTOP)

        def is_blocked():
            try:
                self.desktop.bus().call_blocking(
                    *tidewell.item, dbus.PROPERTIES_IFACE, "Get", "ss",
                    ("org.kde.StatusNotifierItem", "Id"), timeout=0.3)
                return False
            except dbus.DBusException:
                return True
        wait_for("the program to wait for the display", is_blocked)
        self.assertEqual(tidewell.end(signal.SIGTERM, timeout=5), 0)
        self.assertTrue(tidewell.history()["memoryPressureArray"])


class SecondStart(DesktopCase):
    def test_finds_a_first_that_it_cannot_reach_or_that_hangs_but_none_that_crashed(self):
        self.need_plain_log()
        first = self.start_with_item()
        second = self.start(environment={"DBUS_SESSION_BUS_ADDRESS": "disabled:"})
        self.assertEqual(second.end(), 1)
        self.assertIn("running already, out of reach", second.log())
        first.process.send_signal(signal.SIGSTOP)
        second = self.start()
        self.assertEqual(second.end(), 1)
        self.assertIn("running already, but does not answer", second.log())
        first.process.kill()
        first.process.wait()
        self.start_with_item()


# Takes the names of every service that the program asks, answers every call with what nobody
# expects, sends it as every signal that the program listens to, and goes on to the next such thing.
HOSTILE = """
import dbus.bus, dbus.lowlevel, dbus.mainloop.glib, sys
from gi.repository import GLib

WRONG = [(), (1,), ("",), ("x" * 1_000_000,), (True,), (dbus.Double("nan"),), (1, 2, "a"),
         (dbus.Array([], "v"),), (dbus.Dictionary({}, "sv"),), (dbus.Struct((1, "a")),),
         (dbus.Int32(-1, variant_level=30),), (dbus.Dictionary({"": dbus.Array([""])}, "sas"), 1),
         (dbus.Array([dbus.Struct((1, 2, dbus.ByteArray(b"a")))], "(iiay)"),)]
SERVICES = {
    "org.kde.StatusNotifierWatcher": ("/StatusNotifierWatcher", "org.kde.StatusNotifierWatcher",
        ("StatusNotifierHostRegistered", "StatusNotifierHostUnregistered")),
    "org.freedesktop.portal.Desktop": ("/org/freedesktop/portal/desktop",
        "org.freedesktop.portal.Settings", ("SettingChanged",)),
    "org.xfce.Xfconf": ("/org/xfce/Xfconf", "org.xfce.Xfconf", ("PropertyChanged",)),
    "org.freedesktop.login1": ("/org/freedesktop/login1", "org.freedesktop.login1.Manager",
        ("PrepareForShutdown",)),
    "org.freedesktop.Notifications": ("/org/freedesktop/Notifications",
        "org.freedesktop.Notifications", ("NotificationClosed",)),
    "org.freedesktop.impl.portal.PermissionStore": ("/", "a.a", ("A",)),
}
bus = dbus.bus.BusConnection(sys.argv[1], mainloop=dbus.mainloop.glib.DBusGMainLoop())
loop = GLib.MainLoop()

def answer(connection, message):
    if message.get_type() != 1 or message.get_destination() != bus.get_unique_name() and (
            message.get_destination() not in SERVICES):
        return dbus.lowlevel.HANDLER_RESULT_NOT_YET_HANDLED
    reply = dbus.lowlevel.MethodReturnMessage(message)
    reply.append(*WRONG[0])
    connection.send_message(reply)
    return dbus.lowlevel.HANDLER_RESULT_HANDLED

def go_on():
    for name, (path, interface, signals) in SERVICES.items():
        bus.request_name(name, 2)
        for each in signals:
            signal = dbus.lowlevel.SignalMessage(path, interface, each)
            signal.append(*WRONG[0])
            bus.send_message(signal)
        bus.release_name(name)
        bus.request_name(name, 2)
    del WRONG[0]
    return WRONG or loop.quit()

bus.add_message_filter(answer)
GLib.timeout_add(200, go_on)
loop.run()
"""


class HostileServices(DesktopCase):
    host = None

    def test_are_borne(self):
        address = self.desktop.environment["DBUS_SESSION_BUS_ADDRESS"]
        tidewell = self.start(environment={"DBUS_SYSTEM_BUS_ADDRESS": address})
        wait_for("the label window", tidewell.label_window)
        hostile = self.desktop.start("/usr/bin/python3", "-c", HOSTILE, address, name="hostile")
        while hostile.poll() is None:
            self.start().end()  # opens the panel, which asks for the permission to notify
        self.assertEqual(hostile.returncode, 0, self.desktop.log("hostile"))
        self.assertEqual(tidewell.end(signal.SIGTERM), 0)
        self.assertTrue(tidewell.history()["memoryPressureArray"])
