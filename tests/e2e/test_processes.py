import os
import shutil
import subprocess

import dbus
from case import ACCESSIBLE, FOCUSED, ScreenReaderCase
from desktop import DesktopError, wait_for
from test_figures import figure_of

ASLEEP = """import ctypes, os, sys, time
if len(sys.argv) > 1:
    PR_SET_NAME = 15
    os.setuid(int(sys.argv[2]))
    ctypes.CDLL(None).prctl(PR_SET_NAME, sys.argv[1].encode(), 0, 0, 0)
time.sleep(300)
"""
ENTRY = "[Desktop Entry]\nType=Application\nName={}\nExec={}\n"
NOBODY = 65534
NOISE = 512 << 10  # what a sleeping program's memory may change by


def from_ps(process):
    """(resident bytes, name)"""
    resident, name = subprocess.check_output(
        ["ps", "-o", "rss=,comm=", "-p", str(process.pid)], text=True).split(maxsplit=1)
    return int(resident) * 1024, name.rstrip()


class ProcessWindow(ScreenReaderCase):
    notifications = "xfce4-notifyd"

    def open_panel(self):
        self.tidewell = self.start_with_panel()
        parts = self.parts(lists=False)
        self.content, self.figures = parts["window", "Tidewell"], parts["list", "General"]
        self.inside, self.gauge, self.swap = map(self.middle, (
            self.figures, parts["progress bar", "Pressure"], parts["panel", "Swap"]))

    def wait_until_open(self):
        return wait_for("the process window", self.tidewell.process_window)

    def wait_until_closed(self):
        wait_for("the process window's end", lambda: not self.tidewell.process_window())

    def wait_until_focused(self, node):
        wait_for("the focus", lambda: self.is_in_state(node, FOCUSED))

    def test_goes_with_the_pointer(self):
        self.open_panel()
        glide, outside = self.desktop.glide, (self.panel[0] - 600, 850)
        beside = (self.panel[0] - 24, self.panel[1] + self.panel[3] - 129)
        for away in (self.gauge, self.swap):
            glide(away, self.inside)
            x, y, width, height = self.wait_until_open()
            self.assertEqual((x + width, y + height), beside)
            self.assertTrue(self.tidewell.panel(), "the panel was closed")
            glide(self.inside, away)
            self.wait_until_closed()
        middle = (x + width // 2, y + height // 2)
        for _ in range(2):  # it can be opened again at once
            glide(self.swap, self.inside)
            self.wait_until_open()
            glide(self.inside, middle)
            self.assertTrue(self.tidewell.process_window(), "closed on the way to it")
            glide(middle, outside)
            self.wait_until_closed()
        self.assertTrue(self.tidewell.panel(), "the panel was closed")

        self.wait_until_focused(self.content)
        self.desktop.press(*["Tab"] * 4)  # past the toolbar
        for close in (lambda: self.desktop.press("Escape"), self.tidewell.click_item):
            self.wait_until_focused(self.figures)
            self.desktop.press("Return")
            self.wait_until_open()
            close()
            self.wait_until_closed()
        self.tidewell.wait_for_no_panel()

    def start_programs(self):
        """{name in the list: process} of programs as they are on a desktop. With them runs one of
        another user."""
        folder, me = self.desktop.folder, os.geteuid()
        mark = folder.name[-8:]  # tests beside this one start the same
        script, letters, daemon = folder / "pit.py", folder / f"box-{mark}", folder / f"nap-{mark}"
        script.write_text(ASLEEP)
        shutil.copy("/usr/bin/xmessage", letters)
        shutil.copy("/usr/bin/sleep", daemon)
        (folder / "data/applications").mkdir()
        for file, name, command in (("box", f"Letter Box {mark}", letters),
                                    ("pit", f"Snake Pit {mark}", f"/usr/bin/python3 {script}")):
            (folder / f"data/applications/{file}.desktop").write_text(ENTRY.format(name, command))

        def asleep(*arguments):
            return self.desktop.start("/usr/bin/python3", *arguments)

        def named(name, user):
            process = asleep("-c", ASLEEP, name, str(user))
            wait_for(f"the process {name!r}", lambda: from_ps(process)[1] == name)
            return {name: process}
        if me == 0:
            named(f"other{mark}", NOBODY)
        return {f"Letter Box {mark}": self.desktop.start(str(letters), "A letter"),
                f"Snake Pit {mark}": asleep(str(script)),
                daemon.name: self.desktop.start(str(daemon), "300"),
                **named(f"a) b ({mark}", me)}

    def test_agrees_with_ps(self):
        programs = self.start_programs()
        self.open_panel()
        self.desktop.glide(self.gauge, self.inside)
        self.wait_until_open()
        rows = self.parts(lists=False)["list", "Processes"]
        shown = []

        def agree():
            """In time: processes come and go while the window is read."""
            try:
                texts = [str(self.property(tuple(map(str, row)), ACCESSIBLE, "Name"))
                         for row in self.ask(rows, ACCESSIBLE, "GetChildren")]
            except dbus.DBusException:
                return False  # a row went
            shown[:] = map(figure_of, texts)
            sizes = [size for _, size, _ in shown]
            own = [row for row in shown if row[0] in programs]
            return sizes == sorted(sizes, reverse=True) and len(own) == len(programs) and all(
                abs(size - from_ps(programs[name])[0]) < precision * 1.01 + NOISE
                for name, size, precision in own)
        try:
            wait_for("agreement with ps", agree)
        except DesktopError:
            self.fail([shown, {name: from_ps(each) for name, each in programs.items()}])
        self.assertFalse([name for name, _, _ in shown if name.startswith("other")])

    def test_stops_its_work_when_it_closes(self):
        self.need_plain_log()
        self.open_panel()
        self.desktop.glide(self.gauge, self.inside)
        self.wait_until_open()
        self.assertNotIn("MemoryManager reset", self.tidewell.log())
        self.desktop.glide(self.inside, self.gauge)
        self.tidewell.wait_for_log("MemoryManager reset")
