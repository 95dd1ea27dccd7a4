"""The program under test, as a person meets it on a Desktop."""

import base64
import json
import math
import os
import pathlib
import time
import uuid

import dbus
from desktop import DesktopError, wait_for

HERE = pathlib.Path(__file__).resolve().parent
ITEM = "org.kde.StatusNotifierItem"
MENU = "com.canonical.dbusmenu"
GIBIBYTE_IN_KB = 1024 * 1024

NOT_ALLOWED = 77  # of with_files.py

PANEL_SIZE = (350, 760)
PROCESS_WINDOW_SIZE = (400, 380)

# The colours of the levels, light and dark.
LEVEL_COLOURS = {
    "none": ((0xaa, 0xaa, 0xaa), (0xaa, 0xaa, 0xaa)),
    "low": ((0x34, 0xc7, 0x59), (0x30, 0xd1, 0x58)),
    "warn": ((0xff, 0x95, 0x00), (0xff, 0x9f, 0x0a)),
    "high": ((0xff, 0x3b, 0x30), (0xff, 0x45, 0x3a)),
}
WINDOW_COLOUR = ((0xf4, 0xf4, 0xf6), (0x1e, 0x1e, 0x20))
TEXT_COLOUR = ((0x1d, 0x1d, 0x1f), (0xf5, 0xf5, 0xf7))


def executable():
    return os.environ.get("TIDEWELL", str(HERE.parent.parent / "build/dev/bin/tidewell"))


def meminfo(level, total=16 * GIBIBYTE_IN_KB):
    """The text of a /proc/meminfo of a machine that is at the level."""
    swap_total, swap_used = {
        "none": (0, 0),
        "low": (8 * GIBIBYTE_IN_KB, 1426064),
        "warn": (8 * GIBIBYTE_IN_KB, total // 4),
        "high": (24 * GIBIBYTE_IN_KB, total + total // 8),
    }[level]
    lines = {
        "MemTotal": total, "MemFree": total // 8, "MemAvailable": total // 3, "Buffers": 262144,
        "Cached": total // 4, "SwapCached": 0, "SwapTotal": swap_total,
        "SwapFree": swap_total - swap_used, "Zswap": 0, "AnonPages": total // 3,
        "Shmem": 524288, "SReclaimable": 393216,
    }
    return "".join(f"{key + ':':<16}{value:>8} kB\n" for key, value in lines.items())


def store_file(desktop):
    return desktop.folder / "config/tidewell/defaults.json"


def write_history(desktop, level, count):
    """What a run left behind that took `count` samples at about this level, until a moment ago."""
    now = time.time()
    most = {"none": 25, "low": 45, "warn": 70, "high": 95}[level]
    pressures = [{"value": int(most * (0.55 + 0.45 * math.sin(at / 7) * math.cos(at / 3))),
                  "timestamp": now - 5.0 * (count - at)} for at in range(count)]
    swapped = [{"value": 0 if level == "none" else int(1.36e9 * (0.25 + 0.75 * (at + 1) / count)),
                "timestamp": now - 60.0 * (count - at)} for at in range(count)]
    document = json.dumps({"id": str(uuid.uuid4()), "memoryPressureArray": pressures,
                           "swapUsedArray": swapped})
    store_file(desktop).parent.mkdir(mode=0o700, exist_ok=True)
    store_file(desktop).write_text(json.dumps(
        {"_dataContainer": {"data": base64.b64encode(document.encode()).decode()}}))


class Tidewell:
    """One run of the program. `meminfo` is the path of a file to run it on, `files` has others that
    it sees in the place of a path."""

    def __init__(self, desktop, meminfo=None, environment=None, files=None):
        self.desktop = desktop
        command = [executable()]
        files = (files or {}) | ({"/proc/meminfo": meminfo} if meminfo else {})
        if files:
            command = ["/usr/bin/python3", str(HERE / "with_files.py"),
                       *(f"{path}={file}" for path, file in files.items()), "--"] + command
        self._log_start = len(desktop.log("tidewell"))
        self.process = desktop.start(*command, name="tidewell", environment=environment)

    def wait_for_start(self):
        """Whether the program runs: False where it cannot be run on other figures here."""
        def started():
            if self.process.poll() is not None:
                return True
            try:
                return os.readlink(f"/proc/{self.process.pid}/exe").endswith("/tidewell")
            except FileNotFoundError:
                return False
        wait_for("the program's start", started)
        return self.process.poll() != NOT_ALLOWED

    def log(self):
        """What this run wrote to stderr so far."""
        return self.desktop.log("tidewell")[self._log_start:]

    def wait_for_log(self, text, timeout=20):
        wait_for(f"the log line {text!r}", lambda: text in self.log(), timeout)

    def end(self, number=None, timeout=20):
        """The exit status, after sending a signal if one is given."""
        if number:
            self.process.send_signal(number)
        return self.process.wait(timeout)

    # -- status item --------------------------------------------------------------------------

    def wait_for_item(self, timeout=20):
        """(bus name, object path) of the item, which also has its first picture."""
        def mine():
            if self.process.poll() is not None:
                raise DesktopError(f"the program ended with {self.process.returncode}")
            for service, path in self.desktop.status_items():
                try:
                    if self.desktop.bus().call_blocking(
                            "org.freedesktop.DBus", "/org/freedesktop/DBus",
                            "org.freedesktop.DBus", "GetConnectionUnixProcessID", "s",
                            (service,)) == self.process.pid:
                        return service, path
                except dbus.DBusException:
                    continue
            return None
        self.item = wait_for("the status item", mine, timeout)
        wait_for("the item's picture", lambda: self.item_property("IconPixmap"), timeout)
        return self.item

    def item_property(self, name):
        return self.desktop.property(*self.item, ITEM, name)

    def item_colour(self):
        """The colour of the item's largest picture where it is most opaque."""
        _, _, data = max(self.item_property("IconPixmap"), key=lambda pixmap: pixmap[0])
        raw = bytes(data)
        return max((raw[at:at + 4] for at in range(0, len(raw), 4)),
                   key=lambda pixel: pixel[0])[1:]

    def item_geometry(self):
        """Where Xfce's panel shows status items, once it has come to rest; ours is the only one."""
        seen = []

        def at_rest():
            windows = self.desktop.windows("--class", "wrapper-2.0")
            seen.append(self.desktop.geometry(windows[-1]) if windows else None)
            return seen[-1] if seen[-1] in seen[-3:-1] else None
        return wait_for("the item in the panel", at_rest)

    def click_item(self, button=1):
        x, y, width, height = self.item_geometry()
        self.desktop.click(x + width // 2, y + height // 2, button)

    def choose_from_menu(self, label):
        """As a host does that shows the item's menu."""
        menu = (self.item[0], str(self.item_property("Menu")))
        _, (_, _, children) = self.desktop.call(
            *menu, MENU, "GetLayout", 0, -1, dbus.Array([], signature="s"), signature="iias")
        entries = {str(properties["label"]): number for number, properties, _ in children}
        self.desktop.call(*menu, MENU, "Event", entries[label], "clicked", dbus.Int32(0),
                          dbus.UInt32(0), signature="isvu")

    # -- windows ------------------------------------------------------------------------------

    def windows(self):
        """{(x, y, width, height) in pixels: window} of what the program shows."""
        found = self.desktop.windows("--pid", str(self.process.pid))
        places = {self.desktop.geometry(window): window for window in found}
        return {place: window for place, window in places.items() if place}

    def window(self, size):
        """The geometry of a window of that size in points, or None."""
        size = tuple(int(self.desktop.scale * length) for length in size)
        return next((each for each in self.windows() if each[2:] == size), None)

    def panel(self):
        """The geometry of the open panel, or None."""
        return self.window(PANEL_SIZE)

    def process_window(self):
        """The geometry of the open process window, or None."""
        return self.window(PROCESS_WINDOW_SIZE)

    def wait_for_panel(self):
        return wait_for("the panel", self.panel)

    def wait_for_focus(self, geometry):
        """Until the window that is there has the input focus."""
        wait_for(f"the focus on {geometry}", lambda: self.desktop.output(
            "xdotool", "getwindowfocus").strip() == self.windows().get(geometry))

    def wait_for_open_window(self):
        """The geometry of the panel, which is lower than usual on a low screen."""
        width = PANEL_SIZE[0] * self.desktop.scale
        return wait_for("a window as wide as the panel", lambda: next(
            (each for each in self.windows() if abs(each[2] - width) < 1), None))

    def wait_for_no_panel(self):
        wait_for("the panel's end", lambda: not self.panel())

    def question(self):
        """The geometry of a question that the program asks, or None."""
        return next((each for each in self.windows() if each[2] > 150 * self.desktop.scale
                     and 80 * self.desktop.scale < each[3] < 300 * self.desktop.scale), None)

    def answer_question(self, key):
        wait_for("the question", self.question)
        self.desktop.press(key)
        wait_for("the question's end", lambda: not self.question())

    def label_window(self):
        """The geometry of the label window, or None."""
        scale = self.desktop.scale
        return next((each for each in self.windows()
                     if each[2] > 60 * scale and 20 * scale < each[3] < 60 * scale), None)

    # -- store --------------------------------------------------------------------------------

    def store_file(self):
        return store_file(self.desktop)

    def history(self):
        """The saved history: {"memoryPressureArray": [...], ...}, or None."""
        try:
            store = json.loads(self.store_file().read_text())
        except FileNotFoundError:
            return None
        entry = store.get("_dataContainer")
        return json.loads(base64.b64decode(entry["data"])) if entry else None
