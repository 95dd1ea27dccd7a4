import unittest

from case import DesktopCase, ScreenReaderCase, StoreWatch
from desktop import wait_for
from program import LEVEL_COLOURS, write_history

VALUE = "org.a11y.atspi.Value"

BLUE_ON_BOX = (127, 188, 255)  # half transparent system blue
WINDOW = (0xf4, 0xf4, 0xf6)


class Panel(DesktopCase):
    notifications = "xfce4-notifyd"

    def open(self, samples=100):
        write_history(self.desktop, "low", samples)
        self.tidewell = self.start_with_panel("low")

    def point_at(self, x, y):
        self.desktop.move_pointer(self.panel[0] + x, self.panel[1] + y)

    def part(self, x, y, width, height):
        return (self.panel[0] + x, self.panel[1] + y, width, height)

    def test_shows_what_the_pointer_rests_on(self):
        self.open()
        pressure, swap = self.part(25, 625, 300, 60), self.part(200, 490, 40, 100)
        self.assertFalse(self.desktop.shows(BLUE_ON_BOX, pressure))
        for x in (27, 176, 318):
            self.point_at(x, 714)
            wait_for(f"the mark at {x}", lambda x=x: self.desktop.shows(
                BLUE_ON_BOX, self.part(x - 4, 625, 8, 40)))
        self.point_at(176, 400)
        wait_for("the mark's end", lambda: not self.desktop.shows(BLUE_ON_BOX, pressure))
        self.assertFalse(self.desktop.shows(WINDOW, swap))
        self.point_at(221, 570)
        wait_for("the time on the bar", lambda: self.desktop.shows(WINDOW, swap))
        self.assertTrue(self.desktop.shows(LEVEL_COLOURS["low"][0], swap))

    def test_quits_by_keyboard_after_a_question_and_saves_once(self):
        self.open(samples=3)
        watch = StoreWatch(self.desktop)
        self.desktop.press("ctrl+q")
        self.tidewell.answer_question("Escape")
        self.assertEqual(watch.writes(), 0)
        self.assertTrue(self.tidewell.panel(), "Escape closed more than the question")
        for _ in range(3):  # to the last button of the toolbar
            self.desktop.press("Tab")
        self.desktop.press("space")
        self.tidewell.answer_question("Return")
        self.assertEqual(self.tidewell.end(), 0)
        self.assertEqual(watch.writes(), 1)


class ScreenReader(ScreenReaderCase):
    """What the accessibility bus is told of the panel."""

    def test_hears_of_every_part_of_the_panel(self):
        self.start_with_panel("low")
        parts = self.parts()
        for part in (("push button", "About Tidewell"),
                     ("push button", "Go to Settings - Ctrl+,"),
                     ("push button", "Quit Tidewell - Ctrl+Q"),
                     ("push button", "Press to set Allow Notifications"),
                     ("progress bar", "Pressure"), ("progress bar", "Memory Usage"),
                     ("progress bar", "Swap"), ("list", "General"), ("list item", "Physical Memory 16 GB"),
                     ("chart", "Swap Usage"), ("chart", "Memory Pressure")):
            self.assertIn(part, parts)
        self.assertEqual(self.property(parts["progress bar", "Pressure"], VALUE, "CurrentValue"),
                         67)


if __name__ == "__main__":
    unittest.main()
