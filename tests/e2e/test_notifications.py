import json
import pathlib
import signal
import unittest

from case import DesktopCase
from desktop import wait_for
from program import LEVEL_COLOURS

FAKE_DAEMON = pathlib.Path(__file__).resolve().parent / "fake_notifications.py"
GRANTED = "Notification permission granted."
SWAP_BODY = "Your computer uses swap memory ({})."


class Alerts(DesktopCase):
    """What arrives at a daemon, and the colour that the host is given, at each level."""

    def setUp(self):
        super().setUp()
        self.desktop.start("/usr/bin/python3", str(FAKE_DAEMON), name="fake")
        wait_for("the fake daemon", lambda: self.desktop.owner("org.freedesktop.Notifications"))

    def arrived(self):
        return [json.loads(line) for line in self.desktop.log("fake").splitlines()]

    def expect(self, tidewell, level, subtitle, body, label):
        tidewell.wait_for_item()
        wait_for("the colour", lambda: tidewell.item_colour() == bytes(LEVEL_COLOURS[level][0]))
        self.assertEqual(tidewell.item_property("XAyatanaLabel"), label)
        notification, = wait_for("the notification", self.arrived)
        self.assertEqual((notification["summary"], notification["body"]),
                         ("Tidewell", f"{subtitle}\n{body}"))
        self.assertEqual(notification["replaces"], 0)
        self.assertEqual(notification["hints"]["desktop-entry"], "net.tidewell.Tidewell")
        self.assertIn("sound-name", notification["hints"])

    def test_say_nothing_without_swap(self):
        tidewell = self.start_at("none")
        tidewell.wait_for_item()
        tidewell.click_item()
        tidewell.wait_for_panel()  # the first check is over by then
        self.assertEqual(self.arrived(), [])

    def test_warn_of_much_swap(self):
        self.expect(self.start_at("warn"), "warn", "High swap usage", SWAP_BODY.format("4 GB"),
                    "4 GB of 8 GB")

    def test_warn_of_very_much_swap(self):
        self.expect(self.start_at("high"), "high", "Very high swap usage",
                    "Restart your computer if you want to free up swap memory.",
                    "18 GB of 24 GB")

    def test_follow_a_change_while_the_program_runs(self):
        """Waits for the check of the next minute: the one slow test."""
        tidewell = self.start_at("low")
        self.expect(tidewell, "low", "Swap memory usage", SWAP_BODY.format("1.36 GB"),
                    "1.36 GB of 8 GB")
        self.write_meminfo("high")
        wait_for("the second notification", lambda: len(self.arrived()) > 1, timeout=75)
        self.assertTrue(self.arrived()[1]["body"].startswith("Very high swap usage\n"))
        self.assertEqual(tidewell.item_colour(), bytes(LEVEL_COLOURS["high"][0]))
        self.assertEqual(tidewell.item_property("XAyatanaLabel"), "18 GB of 24 GB")


class RealDaemons(DesktopCase):
    def setUp(self):
        self.need_plain_log()
        super().setUp()

    def test_show_the_alert(self):
        for daemon, window_class in (("xfce4-notifyd", "xfce4-notifyd"), ("dunst", "Dunst")):
            with self.subTest(daemon):
                self.desktop.start_notifications(daemon)
                tidewell = self.start_at("high")
                wait_for("the notification on the screen",
                         lambda: self.desktop.windows("--class", window_class))
                self.assertIn(GRANTED, tidewell.log())
                self.assertNotIn("error", tidewell.log())
                tidewell.end(signal.SIGTERM)
                self.desktop.notification_process.kill()
                wait_for("the daemon's end",
                         lambda: not self.desktop.owner("org.freedesktop.Notifications"))

    def test_may_be_missing(self):
        tidewell = self.start_at("high")
        tidewell.wait_for_log("Error requesting notification authorization: ")
        tidewell.wait_for_log("Notification authorization denied")
        tidewell.wait_for_item()

    def test_may_hang(self):
        self.desktop.start_notifications("xfce4-notifyd")
        self.desktop.notification_process.send_signal(signal.SIGSTOP)
        tidewell = self.start_at("high")
        tidewell.wait_for_item()
        for done in (tidewell.wait_for_panel, tidewell.wait_for_no_panel):
            tidewell.click_item()
            done()
        tidewell.wait_for_log("error: ", timeout=60)
        self.assertRegex(tidewell.log(),
                         "Error (requesting notification authorization|showing notification): ")
        self.assertEqual(tidewell.end(signal.SIGTERM), 0)


if __name__ == "__main__":
    unittest.main()
