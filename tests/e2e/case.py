"""What the tests have in common."""

import ctypes
import os
import stat
import sys
import unittest

from accessibility import ScreenReader
from desktop import Desktop
from program import HERE as TOOLS
from program import Tidewell, meminfo
from Xlib import X, display, protocol

JOURNAL = "/run/systemd/journal/socket"
STUBBORN = ("/usr/bin/python3", str(TOOLS / "stubborn_wm.py"))


class DesktopCase(unittest.TestCase):
    """Each test has a desktop of its own, as the class says."""

    host, notifications, dark, scale = "xfce", None, False, 1
    window_manager = ("openbox", "--sm-disable")

    def setUp(self):
        self.desktop = self.enterContext(
            Desktop(self.host, self.notifications, self.dark, self.scale,
                    window_manager=self.window_manager))
        # Shown where the test fails.
        self.addCleanup(lambda: print(self.desktop.log("tidewell"), file=sys.stderr))

    def start(self, **options):
        return Tidewell(self.desktop, **options)

    def start_at(self, level):
        """A run on the figures of a level."""
        tidewell = self.start(meminfo=self.write_meminfo(level))
        if not tidewell.wait_for_start():
            self.skipTest("mount namespaces are not allowed here")
        return tidewell

    def write_meminfo(self, level):
        """Gives a level to what runs, too."""
        file = self.desktop.folder / "meminfo"
        file.write_text(meminfo(level))
        return file

    def start_with_item(self, level=None, **options):
        """A run whose status item is there, on the machine's own figures or those of a level."""
        tidewell = self.start_at(level) if level else self.start(**options)
        tidewell.wait_for_item()
        return tidewell

    def start_with_panel(self, level=None, **options):
        """A run whose item was clicked; the panel's geometry is in `self.panel`."""
        tidewell = self.start_with_item(level, **options)
        tidewell.click_item()
        self.panel = tidewell.wait_for_panel()
        return tidewell

    def check_place(self, panel, item):
        """Below what was clicked, and wholly on the screen."""
        x, y, width, height = panel
        self.assertTrue(x <= item[0] + item[2] / 2 <= x + width <= self.desktop.size[0], panel)
        self.assertTrue(item[1] + item[3] <= y and y + height <= self.desktop.size[1], panel)

    def tell_window_manager(self, window, message, *data):
        """Sends the message of a window, as task bars do. Data are numbers and names of atoms."""
        server = display.Display(self.desktop.display)
        values = [server.intern_atom(each) if isinstance(each, str) else each for each in data]
        root = server.screen().root
        root.send_event(protocol.event.ClientMessage(
            window=server.create_resource_object("window", int(window)),
            client_type=server.intern_atom(message), data=(32, (values + 5 * [0])[:5])),
            event_mask=X.SubstructureRedirectMask | X.SubstructureNotifyMask)
        server.sync()
        server.close()

    def need_plain_log(self):
        if os.path.exists(JOURNAL) and stat.S_ISSOCK(os.stat(JOURNAL).st_mode):
            self.skipTest("with a journal the program writes nothing to standard error")


class ScreenReaderCase(DesktopCase):
    """The desktop has an accessibility bus, as with a screen reader."""

    def setUp(self):
        super().setUp()
        self.reader = ScreenReader(self.desktop)


class StoreWatch:
    """Counts how often the store is written, from now on."""

    IN_CLOSE_WRITE, IN_MOVED_TO, IN_NONBLOCK = 0x8, 0x80, 0o4000

    def __init__(self, desktop):
        folder = desktop.folder / "config/tidewell"
        folder.mkdir(exist_ok=True)
        libc = ctypes.CDLL(None)
        self.descriptor = libc.inotify_init1(self.IN_NONBLOCK)
        libc.inotify_add_watch(self.descriptor, bytes(folder),
                               self.IN_CLOSE_WRITE | self.IN_MOVED_TO)

    def writes(self):
        try:
            return os.read(self.descriptor, 65536).count(b"defaults.json\0")
        except BlockingIOError:
            return 0
