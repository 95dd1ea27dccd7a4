"""What a person has of a screen: a pointer, a keyboard, and eyes. And what there is to see: windows
as a desktop lists them, and whatever differs from an earlier look."""

import dataclasses
import time

from PIL import Image, ImageChops
from Xlib import X, XK, Xatom, display, error
from Xlib.ext import xtest
from Xlib.protocol import event

LEFT, MIDDLE, RIGHT = 1, 2, 3
MODIFIERS = {"ctrl": "Control_L", "alt": "Alt_L", "shift": "Shift_L", "super": "Super_L"}


@dataclasses.dataclass(frozen=True)
class Area:
    x: int
    y: int
    width: int
    height: int

    @property
    def right(self):
        return self.x + self.width

    @property
    def bottom(self):
        return self.y + self.height

    @property
    def middle(self):
        return self.x + self.width // 2, self.y + self.height // 2

    def has_size(self, width, height, tolerance=2):
        return abs(self.width - width) <= tolerance and abs(self.height - height) <= tolerance

    def holds(self, other):
        return (self.x <= other.x and self.y <= other.y and other.right <= self.right
                and other.bottom <= self.bottom)

    def gap_to(self, other):
        """How many pixels lie between the two, in the direction in which there are more."""
        return max(other.x - self.right, self.x - other.right, other.y - self.bottom,
                   self.y - other.bottom, 0)

    def __str__(self):
        return f"{self.width}x{self.height} at {self.x},{self.y}"


@dataclasses.dataclass(frozen=True)
class Window:
    """A window as its desktop lists it. None is what the desktop does not tell."""
    title: str
    process: int
    area: Area | None
    focus: bool | None = None
    in_task_bar: bool | None = None


def difference_of(before, after):
    """White where two pictures differ, black elsewhere."""
    return ImageChops.difference(before, after).convert("L").point(lambda v: 255 * (v > 8))


def parts(before, after, area):
    """The parts of an area between which lie rows in which two pictures do not differ."""
    box = (area.x, area.y, area.right, area.bottom)
    difference = difference_of(before.crop(box), after.crop(box))
    rows = [difference.crop((0, y, area.width, y + 1)).getbbox() for y in range(area.height)]
    found = []
    for y, row in enumerate(rows):
        if row is None:
            continue
        if y == 0 or rows[y - 1] is None:
            found.append([*row[::2], y, y + 1])
        left, right, top, _ = found[-1]
        found[-1] = [min(left, row[0]), max(right, row[2]), top, y + 1]
    return [Area(area.x + left, area.y + top, right - left, bottom - top)
            for left, right, top, bottom in found]


def differences(before, after, least=(40, 16), cell=8):
    """The areas in which two pictures differ, those smaller than `least` left out."""
    difference = difference_of(before, after)
    width, height = -(-difference.width // cell), -(-difference.height // cell)
    # A cell is marked where any pixel of it differs.
    padded = Image.new("L", (width * cell, height * cell))
    padded.paste(difference)
    marks = padded.reduce(cell).point(lambda v: 255 * (v > 0)).load()
    left = {(x, y) for x in range(width) for y in range(height) if marks[x, y]}
    found = []
    while left:
        cells, edge = set(), [left.pop()]
        while edge:
            x, y = edge.pop()
            cells.add((x, y))
            beside = {(x + 1, y), (x - 1, y), (x, y + 1), (x, y - 1)} & left
            left -= beside
            edge.extend(beside)
        xs, ys = [x for x, _ in cells], [y for _, y in cells]
        corner = (min(xs) * cell, min(ys) * cell)
        box = difference.crop((*corner, (max(xs) + 1) * cell, (max(ys) + 1) * cell)).getbbox()
        area = Area(corner[0] + box[0], corner[1] + box[1], box[2] - box[0], box[3] - box[1])
        if area.width >= least[0] and area.height >= least[1]:
            found.append(area)
    return sorted(found, key=lambda area: (area.x, area.y))


class XScreen:
    """An X server's screen, with the pointer and the keyboard of a person at it."""

    def __init__(self, name):
        self.name = name
        self.display = display.Display(name)
        self.root = self.display.screen().root

    def paint(self, colour):
        """Gives the desktop a colour, in the way that compositing window managers look for."""
        size = self.root.get_geometry()
        pixmap = self.root.create_pixmap(size.width, size.height, size.depth)
        pixmap.fill_rectangle(pixmap.create_gc(foreground=colour), 0, 0, size.width, size.height)
        self.root.change_attributes(background_pixmap=pixmap)
        self.root.clear_area(0, 0, 0, 0)
        self.root.change_property(self.display.intern_atom("_XROOTPMAP_ID"), Xatom.PIXMAP, 32,
                                  [pixmap.id])
        self.display.sync()

    # -- hands ----------------------------------------------------------------------------------

    def point(self, x, y):
        """Moves the pointer to a place as a hand does, by way of what lies between."""
        at = self.root.query_pointer()
        for step in range(1, 13):
            self._fake(X.MotionNotify, x=round(at.root_x + (x - at.root_x) * step / 12),
                       y=round(at.root_y + (y - at.root_y) * step / 12))
            time.sleep(0.01)

    def click(self, button=LEFT):
        self._fake(X.ButtonPress, button)
        time.sleep(0.05)
        self._fake(X.ButtonRelease, button)

    def press(self, keys):
        """Presses a key, such as Escape or ctrl+comma."""
        codes = [self.display.keysym_to_keycode(XK.string_to_keysym(MODIFIERS.get(key, key)))
                 for key in keys.split("+")]
        for code in codes:
            self._fake(X.KeyPress, code)
        for code in reversed(codes):
            self._fake(X.KeyRelease, code)

    def _fake(self, kind, detail=0, **place):
        xtest.fake_input(self.display, kind, detail, **place)
        self.display.sync()

    # -- eyes -----------------------------------------------------------------------------------

    def picture(self):
        size = self.root.get_geometry()
        raw = self.root.get_image(0, 0, size.width, size.height, X.ZPixmap, 0xffffffff)
        return Image.frombytes("RGB", (size.width, size.height), raw.data, "raw", "BGRX")

    def windows(self):
        """The visible windows of programs, with the window manager's view of them."""
        active = self._property(self.root, "_NET_ACTIVE_WINDOW")
        managed = self._property(self.root, "_NET_CLIENT_LIST")
        found = []
        for window in self._all(self.root):
            try:
                found.append(self._described(window, active, managed))
            except error.XError:
                continue  # gone meanwhile
        return [window for window in found if window]

    def _described(self, window, active, managed):
        process = self._property(window, "_NET_WM_PID")
        attributes = window.get_attributes()
        if not process or attributes.map_state != X.IsViewable:
            return None
        size = window.get_geometry()
        corner = window.translate_coords(self.root, 0, 0)
        states = {self.display.get_atom_name(atom)
                  for atom in self._property(window, "_NET_WM_STATE")}
        kinds = {self.display.get_atom_name(atom)
                 for atom in self._property(window, "_NET_WM_WINDOW_TYPE")[:1]}
        name = window.get_full_property(self.display.intern_atom("_NET_WM_NAME"), X.AnyPropertyType)
        return Window(
            title=name.value.decode(errors="replace") if name else "", process=process[0],
            area=Area(-corner.x, -corner.y, size.width, size.height), focus=window.id in active,
            in_task_bar=window.id in managed and "_NET_WM_STATE_SKIP_TASKBAR" not in states
            and not kinds & {"_NET_WM_WINDOW_TYPE_DOCK", "_NET_WM_WINDOW_TYPE_DESKTOP"})

    def _all(self, window):
        try:
            for child in window.query_tree().children:
                yield child
                yield from self._all(child)
        except error.XError:
            return

    def _property(self, window, name):
        found = window.get_full_property(self.display.intern_atom(name), X.AnyPropertyType)
        return list(found.value) if found else []

    def show_workspace(self, number):
        """Asks the window manager to go to a workspace, counted from 0."""
        self._ask_manager("_NET_CURRENT_DESKTOP", number)

    def _ask_manager(self, name, value):
        message = event.ClientMessage(window=self.root, client_type=self.display.intern_atom(name),
                                      data=(32, [value, X.CurrentTime, 0, 0, 0]))
        self.root.send_event(message,
                             event_mask=X.SubstructureRedirectMask | X.SubstructureNotifyMask)
        self.display.sync()
