import os
import signal
import socket
import subprocess
import unittest

import dbus
import dbus.lowlevel
from case import DesktopCase, StoreWatch
from desktop import LOGIN, wait_for
from program import executable

MANAGER = f"{LOGIN[0]}.Manager"
NAME = "net.tidewell.Tidewell"
HISTORIES = ("memoryPressureArray", "swapUsedArray")


class Endings(DesktopCase):
    """Every way out saves the history once, and the next run goes on with it."""

    def test_save_the_history_once_and_the_next_run_has_it_back(self):
        endings = {
            "Quit": lambda run: (run.choose_from_menu("Quit"), run.answer_question("Return")),
            **{each.name: lambda run, number=each: run.process.send_signal(number)
               for each in (signal.SIGTERM, signal.SIGINT, signal.SIGHUP)},
        }
        earlier = dict.fromkeys(HISTORIES, [])
        for name, end in endings.items():
            with self.subTest(name):
                watch = StoreWatch(self.desktop)
                tidewell = self.start_with_item()
                self.assertEqual(watch.writes(), 0)
                end(tidewell)
                self.assertEqual(tidewell.end(), 0)
                self.assertEqual(watch.writes(), 1)
                self.assertEqual(tidewell.store_file().stat().st_mode & 0o777, 0o600)
                history = tidewell.history()
                for key in HISTORIES:
                    self.assertGreater(len(history[key]), len(earlier[key]))
                    self.assertEqual(history[key][:len(earlier[key])], earlier[key])
                earlier = history

    def test_a_second_start_brings_up_the_panel_and_ends_with_0(self):
        first = self.start_with_item()
        self.assertEqual(self.start().end(), 0)
        first.wait_for_panel()
        self.assertEqual(self.start().end(), 0)
        self.assertTrue(first.panel(), "a third start closed the panel")
        self.assertEqual(len(self.desktop.status_items()), 1)


class LostDisplay(DesktopCase):
    host = None

    def test_ends_it_with_1_and_the_history_saved(self):
        for start in (lambda: self.desktop.display_process, self.desktop.start_compositor):
            display = start()
            tidewell = self.start()
            wait_for("the name on the bus", lambda: self.desktop.owner(NAME))
            self.assertEqual(self.start().end(), 0)
            display.kill()
            self.assertEqual(tidewell.end(), 1)
            self.assertTrue(tidewell.history()["memoryPressureArray"])
            tidewell.store_file().unlink()


class NoDisplay(DesktopCase):
    host = None

    def test_ends_with_one_clear_line(self):
        self.need_plain_log()
        stale = self.desktop.folder / "runtime/wayland-9"
        with socket.socket(socket.AF_UNIX) as listening:
            listening.bind(str(stale))
        hanging = [self.enterContext(socket.socket(socket.AF_UNIX)) for _ in range(2)]
        for server, path in zip(hanging, ("/tmp/.X11-unix/X988",
                                          self.desktop.folder / "runtime/wayland-8")):
            server.bind(str(path))
            server.listen()
        self.addCleanup(os.unlink, "/tmp/.X11-unix/X988")
        for environment in ({"DISPLAY": ""}, {"DISPLAY": ":987"},
                            {"DISPLAY": "", "WAYLAND_DISPLAY": "none"},
                            {"DISPLAY": ":987", "WAYLAND_DISPLAY": stale.name},
                            {"DISPLAY": ":988", "WAYLAND_DISPLAY": "wayland-8"},
                            {"QT_QPA_PLATFORM": "nonesuch"}):
            with self.subTest(environment):
                tidewell = self.start(environment=environment)
                self.assertEqual(tidewell.end(), 1)
                self.assertRegex(tidewell.log(), r"\Atidewell: error: [^\n]*\n\Z")


class Arguments(unittest.TestCase):
    def test_are_refused_but_two(self):
        for arguments, status, line in (
                (["--version"], 0, r"Tidewell \d+\.\d+.* \(\d+\)$"), (["--help"], 0, "Usage: "),
                (["--panel"], 2, "tidewell: .*--panel"), ([""], 2, "tidewell: "),
                (["--help", "more"], 2, "tidewell: "), (["-style", "x"], 2, "tidewell: ")):
            with self.subTest(arguments):
                run = subprocess.run([executable(), *arguments], capture_output=True, text=True,
                                     timeout=20)
                self.assertEqual(run.returncode, status)
                self.assertRegex(run.stderr if status else run.stdout, line)
                self.assertEqual(run.stdout if status else run.stderr, "")


class PowerOff(DesktopCase):
    """login1's announcement, from a stand-in on a system bus of our own."""

    def setUp(self):
        super().setUp()
        self.desktop.start_login_manager()
        self.bus = self.desktop.system_bus()

    def inhibitors(self):
        return [tuple(map(str, (what, who, mode))) for what, who, _, mode, _, _ in
                self.bus.call_blocking(*LOGIN, MANAGER, "ListInhibitors", "", ())]

    def test_saves_under_the_inhibitor_and_once(self):
        watch = StoreWatch(self.desktop)
        tidewell = self.start_with_item()
        for _ in range(2):  # the first is called off: what comes then is to be saved, too
            self.desktop.announce_power_off(False)
            inhibitors = wait_for("the inhibitor", self.inhibitors)
            self.assertEqual(inhibitors, [("shutdown", "Tidewell", "delay")])
            self.desktop.announce_power_off(True)
            wait_for("the inhibitor's release", lambda: not self.inhibitors())
            self.assertEqual(watch.writes(), 1)
        self.assertTrue(tidewell.history()["memoryPressureArray"])
        stranger = dbus.lowlevel.SignalMessage(LOGIN[1], MANAGER, "PrepareForShutdown")
        stranger.append(False)
        self.bus.send_message(stranger)
        self.desktop.announce_power_off(True)
        self.desktop.login_process.kill()
        wait_for("the login manager's end", lambda: not self.bus.name_has_owner(LOGIN[0]))
        self.desktop.start_login_manager()
        wait_for("the inhibitor of the next one", self.inhibitors)
        self.assertEqual(watch.writes(), 0, "a stranger's word was heard")
        self.desktop.announce_power_off(True)
        wait_for("the inhibitor's release again", lambda: not self.inhibitors())
        self.assertEqual(tidewell.end(signal.SIGTERM), 0)
        self.assertEqual(watch.writes(), 1, "the power-off that the next one announced")
