import signal

from case import STUBBORN, DesktopCase
from desktop import wait_for
from program import LEVEL_COLOURS, WINDOW_COLOUR

TITLE_BAR = 40  # a high one
ADD, REMOVE = 1, 0  # of _NET_WM_STATE
ICONIC = 3  # of WM_CHANGE_STATE


class LabelWindow(DesktopCase):
    """Openbox alone, without any host."""

    host = None

    def start_with_label(self, level=None):
        tidewell = self.start_at(level) if level else self.start()
        self.label = wait_for("the label window", tidewell.label_window)
        return tidewell

    def window_of(self, tidewell):
        return tidewell.windows()[self.label]

    def wait_for_label(self, tidewell, place):
        wait_for(f"the label at {place}", lambda: tidewell.label_window() == place)

    def start_window(self):
        self.desktop.start("xmessage", "-center", "A film")
        film, = wait_for("the other window", lambda: self.desktop.windows("--class", "Xmessage"))
        self.desktop.run("xdotool", "windowactivate", "--sync", film)
        return film

    def start_full_screen_window(self):
        film = self.start_window()
        self.tell_window_manager(film, "_NET_WM_STATE", ADD, "_NET_WM_STATE_FULLSCREEN")
        return film

    def test_opens_the_panel_by_a_click(self):
        tidewell = self.start_with_label("low")
        x, y, width, height = self.label
        self.assertTrue(0 <= self.desktop.size[0] - x - width <= 20 and TITLE_BAR <= y <= 60,
                        f"{self.label} is not below the buttons of a maximised window")
        green = LEVEL_COLOURS["low"][0]
        wait_for("the green symbol", lambda: self.desktop.shows(green, self.label))
        self.desktop.click(x + width // 2, y + height // 2)
        self.check_place(tidewell.wait_for_panel(), self.label)
        self.desktop.click(x + width // 2, y + height // 2)
        tidewell.wait_for_no_panel()

    def test_stays_where_it_was_dragged_until_the_screen_changes(self):
        tidewell = self.start_with_label()
        x, y, width, height = self.label
        self.desktop.drag((x + 10, y + 10), (x - 290, y + 210))
        dragged = (x - 300, y + 200, width, height)
        self.wait_for_label(tidewell, dragged)
        self.assertIsNone(tidewell.panel(), "dragging is no click")
        self.desktop.click(x - 290, y + 210)
        panel = tidewell.wait_for_panel()
        self.assertTrue(panel[0] + panel[2] < dragged[0], f"{panel} covers the label")
        tidewell.end(signal.SIGTERM)
        tidewell = self.start()
        self.wait_for_label(tidewell, dragged)
        self.desktop.plug_in("other", 1024, 768, 0, "screen")
        self.wait_for_label(tidewell, (x - 256, y, width, height))

    def test_is_not_lost_by_what_happens_while_it_is_dragged_off_the_screen(self):
        tidewell = self.start_with_label()
        x, y, _, _ = self.label
        self.desktop.drag((x + 10, y + 10), (self.desktop.size[0] - 1, y + 10), self.start_window)
        self.wait_for_label(tidewell, self.label)

    def test_comes_back_where_it_was_and_on_all_workspaces(self):
        tidewell = self.start_with_label()
        for take_away in (
                lambda: self.tell_window_manager(self.window_of(tidewell), "_NET_CLOSE_WINDOW"),
                lambda: self.tell_window_manager(self.window_of(tidewell), "WM_CHANGE_STATE",
                                                 ICONIC)):
            take_away()
            self.wait_for_label(tidewell, self.label)
            for workspace in ("1", "0"):
                self.desktop.run("xdotool", "set_desktop", workspace)
                self.wait_for_label(tidewell, self.label)

    def test_gives_way_to_what_fills_the_screen(self):
        tidewell = self.start_with_label()
        film = self.start_full_screen_window()
        wait_for("the label's end", lambda: not tidewell.label_window())
        self.tell_window_manager(film, "_NET_WM_STATE", REMOVE, "_NET_WM_STATE_FULLSCREEN")
        self.wait_for_label(tidewell, self.label)

    def test_follows_the_theme_of_the_settings_daemon_while_there_is_one(self):
        self.start_with_label()
        settings = self.desktop.folder / "xsettingsd"
        settings.write_text('Net/ThemeName "Adwaita-dark"\n')
        daemon = self.desktop.start("xsettingsd", "-c", str(settings))
        self.desktop.run("xfconf-query", "-c", "xsettings", "-p", "/Net/ThemeName", "-r")

        def becomes(colour):
            wait_for("the label in other colours", lambda: self.desktop.shows(colour, self.label))
        light, dark = WINDOW_COLOUR
        becomes(dark)
        for theme, colour in (("Adwaita", light), ("HighContrastInverse", (0, 0, 0))):
            settings.write_text(f'Net/ThemeName "{theme}"\n')
            daemon.send_signal(signal.SIGHUP)
            becomes(colour)
        daemon.kill()
        becomes(light)


class TaskBars(LabelWindow):
    def test_list_the_settings_alone(self):
        tidewell = self.start_with_label()
        x, y, width, height = self.label
        self.desktop.click(x + width // 2, y + height // 2)
        x, y, *_ = panel = tidewell.wait_for_panel()
        self.desktop.move_pointer(x + 175, y + 90)
        self.desktop.move_pointer(x + 175, y + 290)
        unlisted = {self.label, panel, wait_for("the process window", tidewell.process_window)}
        states = [self.states(tidewell.windows()[each]) for each in unlisted]
        self.assertTrue(all({"_NET_WM_STATE_SKIP_TASKBAR", "_NET_WM_STATE_SKIP_PAGER"} <= each
                            for each in states), states)
        self.desktop.press("ctrl+comma")
        settings, = wait_for("the settings", lambda: self.desktop.windows(
            "--name", "^Tidewell Settings$"))
        self.assertFalse({"_NET_WM_STATE_SKIP_TASKBAR"} & self.states(settings))
        self.assertIn("Icon (", self.desktop.output("xprop", "-id", settings, "_NET_WM_ICON"))

    def states(self, window):
        return set(self.desktop.output("xprop", "-id", window, "_NET_WM_STATE")
                   .strip().replace(" = ", ", ").split(", "))


class TwoScreens(LabelWindow):
    SCREENS = ((0, 640), (640, 1280))  # from left to right
    left, right = "left", "right"

    def setUp(self):
        super().setUp()
        self.desktop.plug_in(self.left, 640, 900, 0, "screen")
        self.desktop.plug_in(self.right, 640, 900, 640)

    def screen_of(self, window):
        """The number of the screen that the whole window lies on, or None."""
        x, _, width, _ = window
        return next((number for number, (left, right) in enumerate(self.SCREENS)
                     if left <= x and x + width <= right), None)

    def wait_for_screen(self, tidewell, number):
        wait_for(f"the panel on screen {number}", lambda: tidewell.panel() and
                 self.screen_of(tidewell.panel()) == number)

    def test_have_the_panel_where_the_item_is_as_they_come_and_go(self):
        tidewell, right = self.start_with_label(), self.right
        x, y, width, height = self.label
        self.assertEqual(self.screen_of(self.label), 0)
        self.desktop.click(x + 10, y + 10)
        self.assertEqual(self.screen_of(tidewell.wait_for_panel()), 0)
        self.desktop.press("Escape")
        tidewell.wait_for_no_panel()
        self.desktop.drag((x + 10, y + 10), (x + 510, y + 10))
        self.wait_for_label(tidewell, (x + 500, y, width, height))
        self.desktop.click(x + 510, y + 10)
        self.wait_for_screen(tidewell, 1)
        for screen, change in ((0, lambda: self.desktop.unplug(right)),
                               (1, lambda: self.desktop.plug_in(right, 640, 900, 640)),
                               (0, lambda: self.desktop.unplug(right))):
            change()
            self.wait_for_screen(tidewell, screen)
            self.assertEqual(self.screen_of(tidewell.label_window()), screen)
        self.desktop.press("Escape")
        tidewell.wait_for_no_panel()


class XWaylandScreens(TwoScreens):
    """XWayland is known by their names, as older versions are. No client is told of clicks elsewhere
    there."""

    left, right = "XWAYLAND0", "XWAYLAND1"
    window_manager = STUBBORN

    def test_take_a_click_on_any_of_them_for_the_panels_end(self):
        tidewell = self.start_with_label()
        for x, y in ((20, 800), (1000, 450)):  # beside the panel, and on the other screen
            self.desktop.click(*(place + 10 for place in self.label[:2]))
            tidewell.wait_for_panel()
            self.desktop.click(x, y)
            tidewell.wait_for_no_panel()


class LabelWindowOnXfwm(LabelWindow):
    window_manager = ("xfwm4",)

    def test_comes_back_where_it_was_and_on_all_workspaces(self):
        super().test_comes_back_where_it_was_and_on_all_workspaces()

    def test_gives_way_to_what_fills_the_screen(self):
        super().test_gives_way_to_what_fills_the_screen()
