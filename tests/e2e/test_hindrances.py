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

    def test_is_not_started_where_there_is_none(self):
        before = self.desktop.names_of_processes()
        tidewell = self.start(environment={"DBUS_SESSION_BUS_ADDRESS": ""})
        wait_for("the label window", tidewell.label_window)
        self.assertEqual(self.desktop.names_of_processes() - before, {"tidewell"})


class HangingSessionManager(DesktopCase):
    def test_is_left_out(self):
        with socket.socket(socket.AF_UNIX) as listening:
            listening.bind(str(self.desktop.folder / "session-manager"))
            listening.listen()
            self.start_with_item(environment={
                "SESSION_MANAGER": f"local/{socket.gethostname()}:{listening.getsockname()}"})


class StoppedDisplay(DesktopCase):
    def test_does_not_keep_the_history_from_being_saved_nor_the_program_from_ending(self):
        tidewell = self.start_with_panel()
        self.desktop.display_process.send_signal(signal.SIGSTOP)

        def is_blocked():
            try:
                return not self.desktop.bus().call_blocking(
                    *tidewell.item, "org.freedesktop.DBus.Peer", "Ping", "", (), timeout=0.3)
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
