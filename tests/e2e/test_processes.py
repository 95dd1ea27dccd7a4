import contextlib
import os
import re
import shutil
import signal
from pathlib import Path

import dbus
from accessibility import ACCESSIBLE, FOCUSED
from case import ScreenReaderCase
from desktop import DesktopError, wait_for
from test_figures import figure_of

ASLEEP = """import ctypes, os, sys, time
if len(sys.argv) > 1:
    PR_SET_NAME = 15
    os.setuid(int(sys.argv[2]))
    ctypes.CDLL(None).prctl(PR_SET_NAME, sys.argv[1].encode(), 0, 0, 0)
time.sleep(300)
"""
# Allocates private and shared memory in MiB, and forks children, each of which takes some of its own
# and looks at all that is shared. After SIGUSR1 the first child makes 100 MiB of what it shares with
# its parent its own, and the parent executes itself anew under another name after SIGUSR2.
TREE = """import mmap, os, signal, sys, time
private, shared, children, own = map(int, sys.argv[1:5])
kept, common = bytearray(os.urandom(1 << 20)) * private, mmap.mmap(-1, max(1, shared) << 20)
for page in range(0, shared << 20, 4096):
    common[page] = 1
def copy(*_):
    for page in range(0, 100 << 20, 4096):
        kept[page] = 1
signal.signal(signal.SIGUSR2, lambda *_: os.execv(sys.executable, [sys.executable, sys.argv[5]]))
for child in range(children):
    if os.fork() == 0:
        signal.signal(signal.SIGUSR1, copy if child == 0 else signal.SIG_IGN)
        mine = bytearray(b"x") * (own << 20)
        sum(common[page] for page in range(0, shared << 20, 4096))
        break
while True:
    time.sleep(300)
"""
TREES = {"forks": (500, 0, 20, 0), "browser": (60, 100, 30, 5), "server": (20, 500, 8, 1)}
UNRELATED = 50
ENTRY = "[Desktop Entry]\nType=Application\nName={}\nExec={}\n"
NOBODY = 65534
NOISE = 512 << 10  # what a sleeping program's memory may change by


def name_of(process):
    return Path(f"/proc/{process.pid}/comm").read_text()[:-1]


def share_of(process):
    """The bytes of it and its children, shared ones counted once."""
    children = Path(f"/proc/{process.pid}/task/{process.pid}/children").read_text().split()
    return sum(int(re.search(r"^Pss: *(\d+)", Path(f"/proc/{each}/smaps_rollup").read_text(),
                             re.MULTILINE)[1]) * 1024 for each in (process.pid, *children))


class ProcessWindow(ScreenReaderCase):
    notifications = "xfce4-notifyd"

    def open_panel(self):
        self.tidewell = self.start_with_panel()
        parts = self.reader.parts(lists=False)
        self.content, self.figures = parts["frame", "Tidewell"], parts["list", "General"]
        self.inside, self.gauge, self.swap = map(self.reader.middle, (
            self.figures, parts["progress bar", "Pressure"], parts["panel", "Swap"]))

    def wait_until_open(self):
        return wait_for("the process window", self.tidewell.process_window)

    def wait_until_closed(self):
        wait_for("the process window's end", lambda: not self.tidewell.process_window())

    def wait_until_focused(self, node):
        wait_for("the focus", lambda: self.reader.is_in_state(node, FOCUSED))

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

        self.tidewell.wait_for_focus(self.panel)
        self.wait_until_focused(self.content)
        self.desktop.press(*["Tab"] * 4)  # past the toolbar
        for close in (lambda: self.desktop.press("Escape"), self.tidewell.click_item):
            self.wait_until_focused(self.figures)
            self.tidewell.wait_for_focus(self.panel)
            self.desktop.press("Return")
            self.tidewell.wait_for_focus(self.wait_until_open())
            close()
            self.wait_until_closed()
        self.tidewell.wait_for_no_panel()

    def start_programs(self):
        """{name in the list: process} of programs as they are on a desktop. With them runs one of
        another user."""
        folder, me = self.desktop.folder, os.geteuid()
        mark = folder.name[-8:]  # tests beside this one start the same
        script, letters, daemon = folder / "pit.py", folder / f"box-{mark}", folder / f"nap-{mark}"
        renamed = folder / f"renamed-{mark}.py"
        for file in (script, renamed):
            file.write_text(ASLEEP)
        shutil.copy("/usr/bin/xmessage", letters)
        shutil.copy("/usr/bin/sleep", daemon)
        (folder / "data/applications").mkdir()
        for file, name, command in (("box", f"Letter Box {mark}", letters),
                                    ("pit", f"Snake Pit {mark}", f"/usr/bin/python3 {script}")):
            (folder / f"data/applications/{file}.desktop").write_text(ENTRY.format(name, command))

        def asleep(*arguments):
            return self.desktop.start("/usr/bin/python3", *arguments)

        def named(name, user):
            process = asleep(str(renamed), name, str(user))
            wait_for(f"the process {name!r}", lambda: name_of(process) == name)
            return {name: process}
        if me == 0:
            named(f"other{mark}", NOBODY)
        return {f"Letter Box {mark}": self.desktop.start(str(letters), "A letter"),
                f"Snake Pit {mark}": asleep(str(script)),
                daemon.name: self.desktop.start(str(daemon), "300"),
                **named(f"a) b ({mark}", me)}

    def open_list(self):
        self.open_panel()
        self.desktop.glide(self.gauge, self.inside)
        self.tidewell.wait_for_focus(self.wait_until_open())
        self.rows = self.reader.parts(lists=False)["list", "Processes"]

    def row_texts(self, name="Name"):
        """Of the rows that are there until they have been read."""
        texts = []
        with contextlib.suppress(dbus.DBusException):
            for row in self.reader.ask(self.rows, ACCESSIBLE, "GetChildren"):
                with contextlib.suppress(dbus.DBusException):
                    texts.append(str(self.reader.property(tuple(map(str, row)), ACCESSIBLE, name)))
        return texts

    def wait_for_agreement(self, programs):
        """Every program has one row, with what the kernel counts for its processes. Others come and
        go while the list is read; the more there are, the longer the reading takes."""
        wrong = []

        def agree():
            own = [figure_of(text) for text in self.row_texts() if text.rsplit(" ", 2)[0] in programs]
            expected = {name: share_of(each) for name, each in programs.items()}
            wrong[:] = [(*row, expected[row[0]]) for row in own
                        if abs(row[1] - expected[row[0]])
                        >= max(expected[row[0]] * 0.05, NOISE / 8) + row[2]]
            sizes = [size for _, size, _ in own]
            if sizes != sorted(sizes, reverse=True) or len(own) != len(programs):
                wrong.append(own)
            return not wrong
        try:
            wait_for("agreement with the kernel", agree, timeout=90)
        except DesktopError:
            self.fail(wrong)

    def test_names_programs(self):
        programs = self.start_programs()
        self.open_list()
        self.wait_for_agreement(programs)
        self.assertFalse([text for text in self.row_texts() if text.startswith("other")])

    def test_counts_shared_memory_once(self):
        folder = self.desktop.folder
        mark = folder.name[-8:]
        programs = {}
        for name, sizes in TREES.items():
            script, renamed = folder / f"{name}-{mark}.py", folder / f"renamed-{name}-{mark}.py"
            script.write_text(TREE)
            renamed.write_text(ASLEEP)
            programs[script.name] = self.desktop.start(
                "/usr/bin/python3", str(script), *map(str, sizes), str(renamed))
        for number in range(UNRELATED):
            program = folder / f"nap-{mark}-{number}"
            shutil.copy("/usr/bin/sleep", program)
            programs[program.name] = self.desktop.start(str(program), "300")
        self.open_list()
        self.wait_for_agreement(programs)

        parent = programs[f"forks-{mark}.py"]
        described = wait_for("the description", lambda: [
            text for text in self.row_texts("Description") if f"forks-{mark}" in text])
        self.assertEqual(len(described), 1)
        self.assertIn("Processes: 21", described[0])
        before = share_of(parent)
        child = Path(f"/proc/{parent.pid}/task/{parent.pid}/children").read_text().split()[0]
        os.kill(int(child), signal.SIGUSR1)
        wait_for("the copies on write", lambda: share_of(parent) > before + (90 << 20))
        self.wait_for_agreement(programs)

        server = programs.pop(f"server-{mark}.py")
        server.send_signal(signal.SIGUSR2)
        wait_for("the new program's row", lambda: any(
            text.startswith(f"renamed-server-{mark}.py ") for text in self.row_texts()))

    def test_walks_the_rows(self):
        self.open_list()
        self.wait_until_focused(self.rows)
        self.desktop.press("Down", "Down")

        def is_one_focused():
            self.desktop.press("Down")  # again, should the first row have gone
            focused = 0
            with contextlib.suppress(dbus.DBusException):  # another went
                for row in self.reader.ask(self.rows, ACCESSIBLE, "GetChildren"):
                    focused += self.reader.is_in_state(tuple(map(str, row)), FOCUSED)
            return focused == 1  # not so while it moves on
        wait_for("the focus of one row", is_one_focused)
        roles = {role for role, _ in self.reader.parts(lists=False)}
        self.assertIn("frame", roles)

    def test_stops_its_work_when_it_closes(self):
        self.need_plain_log()
        self.open_list()
        wait_for("the first survey", self.row_texts)
        self.assertNotIn("MemoryManager reset", self.tidewell.log())
        self.desktop.glide(self.inside, self.gauge)
        self.tidewell.wait_for_log("MemoryManager reset")
