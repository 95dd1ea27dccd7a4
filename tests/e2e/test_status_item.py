import pathlib
import signal
import time

from case import STUBBORN, DesktopCase
from desktop import wait_for
from program import ITEM, LEVEL_COLOURS, PANEL_SIZE, TEXT_COLOUR


class XfcePanel(DesktopCase):
    def test_shows_the_item_with_picture_and_text(self):
        tidewell = self.start_with_item("none")
        wait_for("the label", lambda: tidewell.item_property("XAyatanaLabel") == "No Swap")
        for name, value in (("IconName", ""), ("ItemIsMenu", False),
                            ("Status", "Active")):
            self.assertEqual(tidewell.item_property(name), value)
        self.assertIn("No Swap", " ".join(tidewell.item_property("ToolTip")[2:]))
        self.assertEqual(sorted(pixmap[0] for pixmap in tidewell.item_property("IconPixmap")),
                         [16, 22, 24, 32, 48, 64])
        # Until the level first changes the picture has the colour of text.
        self.assertEqual(tidewell.item_colour(), bytes(TEXT_COLOUR[self.dark]))
        self.assertIsNone(tidewell.label_window())

    def test_loads_no_library_of_another_toolkit(self):
        tidewell = self.start_with_item(environment={"QT_QPA_PLATFORMTHEME": "gtk3"})
        maps = pathlib.Path(f"/proc/{tidewell.process.pid}/maps").read_text()
        self.assertIn("/platforms/libqxcb", maps)
        self.assertNotIn("/platformthemes/", maps)

    def activate_another_program(self):
        self.desktop.start("xmessage", "-center", "Another program")
        window, = wait_for("the other window",
                           lambda: self.desktop.windows("--class", "Xmessage"))
        self.desktop.run("xdotool", "windowactivate", "--sync", window)

    def test_opens_and_closes_the_panel(self):
        tidewell = self.start_with_item()
        for close in (tidewell.click_item, lambda: self.desktop.press("Escape"),
                      lambda: self.desktop.click(300, 10), lambda: self.desktop.click(300, 600),
                      self.activate_another_program):  # on the bar, on the desktop
            tidewell.click_item()
            self.check_place(tidewell.wait_for_panel(), tidewell.item_geometry())
            close()
            tidewell.wait_for_no_panel()

    def test_comes_back_after_the_panel_was_restarted(self):
        tidewell = self.start_with_item()
        self.desktop.kill_host()
        wait_for("the label window meanwhile", tidewell.label_window)
        self.desktop.start_host()
        tidewell.wait_for_item()
        wait_for("the label window's end", lambda: not tidewell.label_window())
        tidewell.click_item()
        tidewell.wait_for_panel()


class StubbornWindowManager(DesktopCase):
    window_manager = STUBBORN

    def test_leaves_no_panel_behind_that_nothing_closes(self):
        tidewell = self.start_with_panel()
        x, y, *_ = self.panel
        self.desktop.move_pointer(x + 176, y + 250)
        wait_for("the process window", tidewell.process_window)
        self.desktop.move_pointer(x + 176, y + 150)
        wait_for("the process window's end", lambda: not tidewell.process_window())
        wait_for("the panel's end",
                 lambda: self.desktop.press("Escape") or not tidewell.panel())


class HostUnderXWayland(DesktopCase):
    def test_is_believed_in_the_pointers_place_where_it_tells_places(self):
        self.desktop.plug_in("XWAYLAND0", *self.desktop.size, 0, "screen")
        self.desktop.move_pointer(900, 10)
        for desktop, middle in (("GNOME", 400), ("sway", self.desktop.size[0] - 4 - 175)):
            tidewell = self.start_with_item(environment={"XDG_CURRENT_DESKTOP": desktop})
            self.desktop.call(*tidewell.item, ITEM, "Activate", 400, 14, signature="ii")
            x, y, width, _ = tidewell.wait_for_panel()
            self.assertEqual((x + width // 2, y < 40), (middle, True), desktop)
            tidewell.end(signal.SIGTERM)


class DarkXfcePanel(DesktopCase):
    dark, scale = True, 2

    def test_has_the_colours_of_the_moment_and_a_sharp_panel(self):
        tidewell = self.start_with_panel("high")
        self.assertEqual(self.panel[2:], tuple(2 * length for length in PANEL_SIZE))
        light, dark = map(bytes, LEVEL_COLOURS["high"])
        wait_for("the dark red", lambda: tidewell.item_colour() == dark)
        for channel, key, value in (("xsettings", "/Net/ThemeName", "Adwaita"),
                                    ("xfce4-panel", "/panels/dark-mode", "false")):
            self.desktop.run("xfconf-query", "-c", channel, "-p", key, "-s", value)
        wait_for("the light red", lambda: tidewell.item_colour() == light)


class OldTray(DesktopCase):
    host = "trayer"

    def test_has_an_icon_that_opens_the_panel_until_it_goes(self):
        tidewell = self.start()
        x, y, width, height = wait_for("the icon in the tray", self.icon)
        self.assertEqual(self.desktop.status_items(), [])
        self.assertIsNone(tidewell.label_window())
        for done in (tidewell.wait_for_panel, tidewell.wait_for_no_panel):
            self.desktop.click(x + width // 2, y + height // 2)
            done()
            time.sleep(0.5)  # two clicks, not a double click: that one leaves the panel open
        self.desktop.host_process.kill()
        self.desktop.host_process.wait()
        wait_for("the label window", tidewell.label_window)

    def icon(self):
        """The tray's geometry once there is an icon in it."""
        geometries = map(self.desktop.geometry, self.desktop.windows("--class", "trayer"))
        return next((each for each in geometries if each and each[2] >= 16), None)
