"""Real desktops: how to start each, point, press, and see what is there. Each runs in a tree of its
Debian release, as the user ann."""

import os
import pathlib
import signal
import time

from desktop import Session, wait_for
from program import LEVEL_COLOURS
from screens import LEFT, Area, differences

# All runs are at this level, so that the symbol has a colour that nothing else on screen has.
LEVEL = "low"
DBUS = "org.freedesktop.DBus"
NOTIFICATIONS = "org.freedesktop.Notifications"


class RealDesktop(Session):
    """Use as a context manager. Places and sizes on it are in pixels of its screen, of which
    `scale` make a point."""

    suite = "trixie"
    lists = ()  # of tools/packages, besides those that all take
    versions = ()  # packages whose versions say what was tried
    session = {}  # what its session sets in the environment
    size = (1280, 900)
    scale = 1
    hosts_items = True
    shows_tooltips = True
    shows_labels = False
    bar = None  # the Area of its bar
    neutral = (420, 820)  # a place where nothing is
    has_wallpaper = False  # a picture, which comes up after its bars
    workspaces = 1
    lists_focus = True  # whether it tells of each window whether it has the focus
    notifies = False  # whether notifications are tried on it
    notifier = None  # its daemon's program in /usr, where the bus starts one on demand
    outlives_notifier = True
    has_notification_switch = False

    def __init__(self, folder):
        super().__init__(folder)
        folder.mkdir(parents=True, exist_ok=True)
        self.home = pathlib.Path(os.environ["HOME"])

    def __enter__(self):
        self.environment = {**os.environ, "NO_AT_BRIDGE": "1", "GTK_A11Y": "none",
                            "LIBGL_ALWAYS_SOFTWARE": "1", **self.session}
        address = f"unix:path={os.environ['XDG_RUNTIME_DIR']}/bus"
        self.start("dbus-daemon", "--session", "--nofork", f"--address={address}")
        self.environment["DBUS_SESSION_BUS_ADDRESS"] = address
        wait_for("the session bus", lambda: os.path.exists(f"{os.environ['XDG_RUNTIME_DIR']}/bus"))
        # What the host asks of the item, to be read where a case fails, and what is notified of.
        self.start("dbus-monitor", "--address", address, "interface=org.kde.StatusNotifierItem",
                   name="host")
        self.start("dbus-monitor", "--address", address, f"interface={NOTIFICATIONS}",
                   name="notifications")
        self.let_bus_start("/bin/false")
        self.start_session()
        self.settle()
        return self

    def __exit__(self, *_):
        """The namespaces end what was started."""

    def settle(self):
        """Waits until the desktop has drawn all of itself."""
        seen = []

        def is_still():
            picture = self.picture()
            seen.append(picture.tobytes())
            time.sleep(0.3)
            has_colours = not self.has_wallpaper or picture.getcolors(1000) is None
            return has_colours and len(seen) > 4 and len(set(seen[-5:])) == 1
        wait_for("the desktop to come to rest", is_still, timeout=60)

    def start_session(self):
        raise NotImplementedError

    def write(self, path, text):
        """A file of ann's."""
        file = self.home / path
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_text(text)

    def tell_services(self):
        """Programs that the bus starts get the session's environment as it is now."""
        self.run("dbus-update-activation-environment", "--all")

    def wait_for_host(self):
        wait_for("a host of status items", self.hosts_status_items, timeout=60)

    # -- notifications --------------------------------------------------------------------------

    def let_bus_start(self, notifier):
        """The bus starts that as the notification daemon, whatever else the tree has."""
        self.write(".local/share/dbus-1/services/notifications.service",
                   f"[D-BUS Service]\nName={NOTIFICATIONS}\nExec={notifier}\n")
        self.call(DBUS, "/org/freedesktop/DBus", DBUS, "ReloadConfig")

    def begin_to_notify(self):
        """From here on notifications are shown, as they are not otherwise: they cover what the
        other cases look at."""
        self.let_bus_start(next(pathlib.Path("/usr").glob(self.notifier)))

    def end_to_notify(self):
        self.let_bus_start("/bin/false")
        if self.owner(NOTIFICATIONS):
            os.kill(self.notifier_process(), signal.SIGKILL)

    def switch_notifications(self, are_on):
        """Switches the program's notifications off or on, as the desktop's settings do."""
        raise NotImplementedError

    def notifier_capabilities(self):
        return [str(each) for each in self.call(
            NOTIFICATIONS, "/org/freedesktop/Notifications", NOTIFICATIONS, "GetCapabilities")]

    def notifier_process(self):
        return int(self.call(DBUS, "/org/freedesktop/DBus", DBUS, "GetConnectionUnixProcessID",
                             NOTIFICATIONS))

    # -- a person at it -------------------------------------------------------------------------

    def point(self, x, y):
        self.screen.point(x, y)

    def click(self, x, y, button=LEFT):
        self.screen.point(x, y)
        time.sleep(0.2)
        self.screen.click(button)

    def press(self, keys):
        self.screen.press(keys)

    def close_window(self):
        """Closes the window that has the focus, by the desktop's own way."""
        self.press("alt+F4")

    def picture(self):
        return self.screen.picture()

    def act_on(self, item):
        """The least that opens the panel by the item."""
        self.click(*item.middle)

    def start_other_window(self):
        """Some other program's window, whose process it returns."""
        return self.start("xterm", "-geometry", "70x20+150+250", "-xrm", "*cursorBlink: false")

    # -- what there is to see -------------------------------------------------------------------

    def windows(self):
        """The Windows that the desktop knows of."""
        raise NotImplementedError

    def areas_of(self, process, before):
        """The Areas of a process's windows, told from how the screen looked before where the
        desktop does not tell."""
        return [window.area for window in self.windows()
                if window.process == process and is_seen(window.area, before, self.picture())]

    def task_bar(self):
        """The windows that its task bar lists, as (process or None, title)."""
        return [(window.process, window.title) for window in self.windows() if window.in_task_bar]

    def focused(self):
        """The process that has the focus, or None."""
        return next((window.process for window in self.windows() if window.focus), None)

    def item(self):
        """The Area of the item's symbol in the bar, known by its colour; None where none is."""
        strip = self.bar
        picture = self.picture().crop((strip.x, strip.y, strip.right, strip.bottom))
        pixels = picture.load()
        found = [(x, y) for x in range(strip.width) for y in range(strip.height)
                 if any(close(pixels[x, y], colour) for colour in LEVEL_COLOURS[LEVEL])]
        if not found:
            return None
        xs, ys = [x for x, _ in found], [y for _, y in found]
        return Area(strip.x + min(xs), strip.y + min(ys), max(xs) - min(xs) + 1,
                    max(ys) - min(ys) + 1)

    def show_workspace(self, number):
        """Goes to a workspace, counted from 0."""
        raise NotImplementedError


def close(pixel, colour):
    return all(abs(one - other) < 24 for one, other in zip(pixel, colour))


def is_seen(area, before, now):
    """Whether most of an area shows something new."""
    box = (area.x, area.y, area.right, area.bottom)
    changed = differences(before.crop(box), now.crop(box), least=(8, 8))
    return sum(each.width * each.height for each in changed) > area.width * area.height * 0.6
