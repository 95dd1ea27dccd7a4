from case import DesktopCase, ScreenReaderCase, StoreWatch
from desktop import wait_for
from program import write_history

VALUE = "org.a11y.atspi.Value"

BLUE_ON_BOX = (127, 188, 255)  # half transparent system blue
GREEN_BAR = (0x28, 0xa7, 0x45)
WINDOW = (0xf4, 0xf4, 0xf6)


class Panel(DesktopCase):
    notifications = "xfce4-notifyd"

    def point_at(self, x, y):
        self.desktop.move_pointer(self.panel[0] + x, self.panel[1] + y)

    def part(self, x, y, width, height):
        return (self.panel[0] + x, self.panel[1] + y, width, height)

    def test_shows_what_the_pointer_rests_on(self):
        write_history(self.desktop, "low", 100)
        self.start_with_panel("low")
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
        self.assertTrue(self.desktop.shows(GREEN_BAR, swap))

    def test_quits_by_keyboard_after_a_question_and_saves_once(self):
        tidewell = self.start_with_panel()
        watch = StoreWatch(self.desktop)
        self.desktop.press("ctrl+q")
        tidewell.answer_question("Escape")
        self.assertEqual(watch.writes(), 0)
        self.assertTrue(tidewell.panel(), "Escape closed more than the question")
        tidewell.wait_for_focus(self.panel)
        self.desktop.press("Tab", "Tab", "Tab", "space")  # the last button of the toolbar
        tidewell.answer_question("Return")
        self.assertEqual(tidewell.end(), 0)
        self.assertEqual(watch.writes(), 1)


class ScreenReader(ScreenReaderCase):
    """What the accessibility bus is told of the panel."""

    def test_hears_of_every_part_of_the_panel(self):
        self.start_with_panel("low")
        parts = self.reader.parts()
        for role, *names in (
                ("push button", "About", "Settings", "Quit",
                 "Press to set Allow Notifications"),
                ("progress bar", "Pressure", "Memory Usage", "Swap"),
                ("list", "General", "Swap Usage", "Memory Pressure"),
                ("list item", "Physical Memory 16 GB")):
            for name in names:
                self.assertIn((role, name), parts)
        self.assertEqual(self.reader.property(parts["progress bar", "Pressure"], VALUE,
                                              "CurrentValue"),
                         67)
