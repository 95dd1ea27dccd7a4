import signal
import time
import unittest

from case import DesktopCase
from desktop import wait_for
from program import LEVEL_COLOURS, PANEL_SIZE, TEXT_COLOUR


class XfcePanel(DesktopCase):
    def test_shows_the_item_with_picture_and_text(self):
        tidewell = self.start_at("none")
        tidewell.wait_for_item()
        self.assertEqual(tidewell.item_property("XAyatanaLabel"), "No Swap")
        self.assertIn("No Swap", " ".join(tidewell.item_property("ToolTip")[2:]))
        self.assertEqual(tidewell.item_property("IconName"), "")
        self.assertEqual(sorted(pixmap[0] for pixmap in tidewell.item_property("IconPixmap")),
                         [16, 22, 24, 32, 48, 64])
        # Until the level first changes the picture has the colour of text.
        self.assertEqual(tidewell.item_colour(), bytes(TEXT_COLOUR[self.dark]))
        self.assertIsNone(tidewell.label_window())
        self.assertFalse(tidewell.item_property("ItemIsMenu"))
        self.assertEqual(tidewell.item_property("Status"), "Active")

    def test_opens_and_closes_the_panel(self):
        tidewell = self.start()
        tidewell.wait_for_item()
        for close in (tidewell.click_item, lambda: self.desktop.press("Escape")):
            tidewell.click_item()
            x, y, width, height = tidewell.wait_for_panel()
            item_x, item_y, item_width, item_height = tidewell.item_geometry()
            self.assertLessEqual(x + width, self.desktop.size[0])
            self.assertGreaterEqual(y, item_y + item_height)
            self.assertTrue(x <= item_x + item_width / 2 <= x + width, "not beside the click")
            close()
            tidewell.wait_for_no_panel()

    def test_closes_the_panel_when_another_program_becomes_active(self):
        tidewell = self.start()
        tidewell.wait_for_item()
        tidewell.click_item()
        tidewell.wait_for_panel()
        other = self.desktop.start("xmessage", "-center", "Another program")
        window = wait_for("the other window", lambda: self.desktop.windows("--class", "Xmessage"))
        self.desktop.run("xdotool", "windowactivate", "--sync", window[0])
        tidewell.wait_for_no_panel()
        other.kill()
        self.assertIsNone(tidewell.process.poll())

    def test_comes_back_after_the_panel_was_restarted(self):
        tidewell = self.start()
        tidewell.wait_for_item()
        self.desktop.kill_host()
        wait_for("the label window meanwhile", tidewell.label_window)
        self.desktop.start_host()
        tidewell.wait_for_item()
        wait_for("the label window's end", lambda: not tidewell.label_window())
        tidewell.click_item()
        tidewell.wait_for_panel()


class DarkXfcePanel(DesktopCase):
    dark, scale = True, 2

    def test_shows_the_items_colour_and_a_sharp_panel(self):
        tidewell = self.start_at("high")
        tidewell.wait_for_item()
        wait_for("the dark red", lambda: tidewell.item_colour() == bytes(LEVEL_COLOURS["high"][1]))
        tidewell.click_item()
        _, _, width, height = tidewell.wait_for_panel()
        self.assertEqual((width, height), tuple(2 * length for length in PANEL_SIZE))

    def test_follows_the_desktop_to_light(self):
        tidewell = self.start_at("none")
        tidewell.wait_for_item()
        wait_for("the dark text colour",
                 lambda: tidewell.item_colour() == bytes(TEXT_COLOUR[1]))
        for channel, key, value in (("xsettings", "/Net/ThemeName", "Adwaita"),
                                    ("xfce4-panel", "/panels/dark-mode", "false")):
            self.desktop.run("xfconf-query", "-c", channel, "-p", key, "-s", value)
        wait_for("the light text colour",
                 lambda: tidewell.item_colour() == bytes(TEXT_COLOUR[0]))


class NoHost(DesktopCase):
    host = None

    def test_has_a_label_window_that_opens_the_panel(self):
        tidewell = self.start_at("low")
        x, y, width, height = wait_for("the label window", tidewell.label_window)
        screen_width, screen_height = self.desktop.size
        self.assertTrue(screen_width - 20 <= x + width <= screen_width and 0 <= y <= 20,
                        f"{(x, y, width, height)} is not the top right")
        green = LEVEL_COLOURS["low"][0]
        wait_for("the green symbol",
                 lambda: self.desktop.shows(green, (x, y, width, height)))
        self.desktop.click(x + width // 2, y + height // 2)
        panel = tidewell.wait_for_panel()
        self.assertLessEqual(panel[0] + panel[2], screen_width)
        self.assertLessEqual(panel[1] + panel[3], screen_height)
        self.assertGreaterEqual(panel[1], y + height)
        self.assertTrue(panel[0] <= x + width / 2 <= panel[0] + panel[2], "not beside the label")
        self.desktop.click(x + width // 2, y + height // 2)
        tidewell.wait_for_no_panel()

    def test_moves_into_a_panel_that_comes_later(self):
        tidewell = self.start()
        wait_for("the label window", tidewell.label_window)
        self.desktop.host = "xfce"
        self.desktop.start_host()
        tidewell.wait_for_item()
        wait_for("the label window's end", lambda: not tidewell.label_window())


class OldTray(DesktopCase):
    host = "trayer"

    def test_has_an_icon_that_opens_the_panel(self):
        tidewell = self.start()
        x, y, width, height = wait_for("the icon in the tray", self.icon)
        self.assertEqual(self.desktop.status_items(), [])
        self.assertIsNone(tidewell.label_window())
        for done in (tidewell.wait_for_panel, tidewell.wait_for_no_panel):
            self.desktop.click(x + width // 2, y + height // 2)
            done()
            time.sleep(0.5)  # two clicks, not a double click: that one leaves the panel open

    def test_becomes_a_label_window_when_the_tray_goes(self):
        tidewell = self.start()
        wait_for("the icon in the tray", self.icon)
        self.desktop.host_process.send_signal(signal.SIGKILL)
        self.desktop.host_process.wait()
        wait_for("the label window", tidewell.label_window)

    def icon(self):
        """The tray's geometry once there is an icon in it."""
        geometries = map(self.desktop.geometry, self.desktop.windows("--class", "trayer"))
        return next((each for each in geometries if each[2] >= 16), None)


if __name__ == "__main__":
    unittest.main()
