import signal

from case import DesktopCase
from desktop import wait_for
from program import LEVEL_COLOURS

DAEMON = ("org.freedesktop.Notifications", "/org/freedesktop/Notifications")

# What the host shows at a level, and what the daemon is given.
ALERTS = {
    "low": ("1.36 GB of 8 GB",
            "Swap memory usage\nYour computer uses swap memory (1.36 GB)."),
    "warn": ("4 GB of 8 GB", "High swap usage\nYour computer uses swap memory (4 GB)."),
    "high": ("18 GB of 24 GB", "Very high swap usage\n"
             "Restart your computer if you want to free up swap memory."),
}


class Alerts(DesktopCase):
    """What arrives at a daemon, and the colour that the host is given, at each level."""

    def setUp(self):
        super().setUp()
        self.desktop.start("/usr/bin/python3", "-m", "dbusmock", "--template",
                           "notification_daemon", "--parameters",
                           '{"capabilities": "body body-markup sound"}')
        wait_for("the daemon", lambda: self.desktop.owner(DAEMON[0]))

    def arrived(self):
        return [call for _, call in self.desktop.call(
            *DAEMON, "org.freedesktop.DBus.Mock", "GetMethodCalls", "Notify")]

    def expect(self, tidewell, level, alerts=1):
        wait_for("the notification", lambda: len(self.arrived()) == alerts, timeout=75)
        label, text = ALERTS[level]
        wait_for("the label", lambda: tidewell.item_property("XAyatanaLabel") == label)
        wait_for("the colour", lambda: tidewell.item_colour() == bytes(LEVEL_COLOURS[level][0]))
        _, replaces, _, title, body, _, hints, _ = self.arrived()[-1]
        self.assertEqual((replaces, title, body), (0, "Tidewell", text))
        self.assertEqual(hints["desktop-entry"], "net.tidewell.Tidewell")
        self.assertIn("sound-name", hints)

    def test_say_nothing_without_swap(self):
        self.start_with_panel("none")  # the first check is over by then
        self.assertEqual(self.arrived(), [])

    def test_warn_of_what_is_there_at_the_start(self):
        for count, level in enumerate(("warn", "high"), 1):
            with self.subTest(level):
                tidewell = self.start_with_item(level)
                self.expect(tidewell, level, count)
                tidewell.end(signal.SIGTERM)

    def test_speak_the_users_language(self):
        self.desktop.environment |= {"LC_ALL": "de_DE.UTF-8", "LANGUAGE": "de_DE"}
        self.start_with_item("low")
        notification, = wait_for("the notification", self.arrived)
        self.assertEqual(notification[4], "Swap in Verwendung\n"
                         "Ihr Computer verwendet Swap-Speicher (1,36 GB).")

    def told(self):
        """How often the host was told of each part of the item that has changed."""
        log = self.desktop.log("dbus-monitor")
        return [log.count(f"member={change}\n")
                for change in ("NewIcon", "NewToolTip", "XAyatanaNewLabel")]

    def test_follow_a_change_while_the_program_runs(self):
        """Waits for the check of the next minute: the one slow test."""
        self.desktop.start("dbus-monitor", "interface=org.kde.StatusNotifierItem")
        tidewell = self.start_with_item("low")
        self.expect(tidewell, "low")
        before = self.told()
        self.write_meminfo("high")
        self.expect(tidewell, "high", 2)
        wait_for("one word of each change", lambda: self.told() == [each + 1 for each in before])


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
                self.assertIn("Notification permission granted.", tidewell.log())
                self.assertNotIn("error", tidewell.log())
                tidewell.end(signal.SIGTERM)
                self.desktop.notification_process.kill()
                wait_for("the daemon's end", lambda: not self.desktop.owner(DAEMON[0]))

    def test_may_be_started_by_the_bus(self):
        (self.desktop.folder / "services/notifications.service").write_text(
            f"[D-BUS Service]\nName={DAEMON[0]}\nExec=/usr/bin/dunst\n")
        self.start_at("high")
        wait_for("the notification on the screen",
                 lambda: self.desktop.windows("--class", "Dunst"))

    def test_may_be_missing(self):
        tidewell = self.start_with_item("high")
        tidewell.wait_for_log("Error requesting notification authorization: ")
        tidewell.wait_for_log("Notification authorization denied")

    def test_may_hang(self):
        self.desktop.start_notifications("xfce4-notifyd")
        self.desktop.notification_process.send_signal(signal.SIGSTOP)
        tidewell = self.start_with_panel("high")
        tidewell.click_item()
        tidewell.wait_for_no_panel()
        tidewell.wait_for_log("error: ", timeout=60)
        self.assertRegex(tidewell.log(),
                         "Error (requesting notification authorization|showing notification): ")
        self.assertEqual(tidewell.end(signal.SIGTERM), 0)
