import json
import pathlib
import time

from accessibility import CHECKED
from case import ScreenReaderCase
from desktop import wait_for
from program import executable

VALUE = "org.a11y.atspi.Value"
CONFIRM, LOGIN = "Confirm quit on exit", "Start Tidewell at login"


class Settings(ScreenReaderCase):
    notifications = "xfce4-notifyd"

    def open(self):
        self.tidewell = self.start_with_panel()
        self.desktop.press("ctrl+comma")
        wait_for("the settings", lambda: self.desktop.windows("--name", "^Tidewell Settings$"))
        self.controls = self.reader.parts(lists=False)
        self.slider = self.controls["slider", "Polling interval in seconds"]

    def is_checked(self, name):
        return self.reader.is_in_state(self.controls["check box", name], CHECKED)

    def stored(self, key):
        file = self.tidewell.store_file()
        return json.loads(file.read_text()).get(key) if file.exists() else None

    def click(self, name, is_on):
        self.desktop.click(*self.reader.middle(self.controls["check box", name]))
        wait_for(f"{name!r} to be {is_on}", lambda: self.is_checked(name) is is_on)

    def quit_at_once(self):
        panel = self.tidewell.windows()[self.panel]
        self.desktop.run("xdotool", "windowactivate", "--sync", panel)
        self.desktop.press("ctrl+q")
        self.assertEqual(self.tidewell.end(), 0)

    def test_take_effect_at_once_and_last(self):
        self.open()
        self.assertEqual(self.reader.property(self.slider, VALUE, "CurrentValue"), 5)
        self.click(CONFIRM, False)
        wait_for("the choice in the store", lambda: self.stored("_confimQuitOnExit") is False)
        self.desktop.press("Tab", "Tab", "Left", "Left")  # by way of the hare
        wait_for("the interval in the store", lambda: self.stored("_pollingInterval") == 3)
        time.sleep(8)  # two samples at the new pace
        self.quit_at_once()
        times = [sample["timestamp"] for sample in self.tidewell.history()["memoryPressureArray"]]
        pauses = [later - earlier for earlier, later in zip(times, times[1:])]
        self.assertLess(min(pauses), 2, "not as often as before")
        self.assertGreater(pauses[-1], 2.9, "not as seldom as chosen")

        self.open()
        self.assertFalse(self.is_checked(CONFIRM))
        self.assertEqual(self.reader.property(self.slider, VALUE, "CurrentValue"), 3)
        self.quit_at_once()

    def test_start_the_program_at_login(self):
        self.open()
        entry = self.desktop.folder / "config/autostart/net.tidewell.Tidewell.desktop"
        self.click(LOGIN, True)
        wait_for("the entry", entry.exists)
        self.assertTrue(self.stored("_startAtLogin"))
        self.desktop.run("desktop-file-validate", str(entry))
        self.assertIn(f'\nExec="{pathlib.Path(executable()).resolve()}"\n', entry.read_text())
        self.click(LOGIN, False)
        wait_for("the entry's end", lambda: not entry.exists())
        self.assertFalse(self.stored("_startAtLogin"))
