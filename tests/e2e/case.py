"""What the tests have in common."""

import ctypes
import os
import stat
import struct
import sys
import unittest

from desktop import Desktop
from program import Tidewell, meminfo

JOURNAL = "/run/systemd/journal/socket"


class DesktopCase(unittest.TestCase):
    """Each test has a desktop of its own, as the class says."""

    host, notifications, dark, scale = "xfce", None, False, 1

    def setUp(self):
        self.desktop = self.enterContext(
            Desktop(self.host, self.notifications, self.dark, self.scale))
        # Shown where the test fails.
        self.addCleanup(lambda: print(self.desktop.log("tidewell"), file=sys.stderr))

    def start(self, **options):
        return Tidewell(self.desktop, **options)

    def start_at(self, level):
        """A run on the figures of a level, which lie in `self.meminfo`."""
        self.meminfo = self.desktop.folder / "meminfo"
        self.write_meminfo(level)
        tidewell = self.start(meminfo=self.meminfo)
        if not tidewell.wait_for_start():
            self.skipTest("mount namespaces are not allowed here")
        return tidewell

    def write_meminfo(self, level):
        self.meminfo.write_text(meminfo(level))

    def need_plain_log(self):
        if os.path.exists(JOURNAL) and stat.S_ISSOCK(os.stat(JOURNAL).st_mode):
            self.skipTest("with a journal the program writes nothing to standard error")


class StoreWatch:
    """Counts how often the store is written, from now on."""

    IN_CLOSE_WRITE, IN_MOVED_TO, IN_NONBLOCK = 0x8, 0x80, 0o4000
    EVENT = struct.Struct("iIII")

    def __init__(self, desktop):
        folder = desktop.folder / "config/tidewell"
        folder.mkdir(exist_ok=True)
        libc = ctypes.CDLL(None)
        self.descriptor = libc.inotify_init1(self.IN_NONBLOCK)
        libc.inotify_add_watch(self.descriptor, os.fsencode(folder),
                               self.IN_CLOSE_WRITE | self.IN_MOVED_TO)

    def writes(self):
        try:
            data = os.read(self.descriptor, 65536)
        except BlockingIOError:
            return 0
        count = at = 0
        while at < len(data):
            _, _, _, length = self.EVENT.unpack_from(data, at)
            name = data[at + self.EVENT.size:][:length].rstrip(b"\0")
            count += name == b"defaults.json"
            at += self.EVENT.size + length
        return count
