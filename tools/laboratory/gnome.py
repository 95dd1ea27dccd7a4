"""GNOME Shell without a screen: driven from inside, by what its own debugger evaluates."""

import json
import os
import pathlib
import signal
import time

from PIL import Image
from desktop import DesktopError, wait_for
from desktops import RealDesktop
from screens import LEFT, Area, Window

SHELL = ("org.gnome.Shell", "/org/gnome/Shell", "org.gnome.Shell")
SWITCH = ("org.gnome.desktop.notifications.application:"
          "/org/gnome/desktop/notifications/application/net-tidewell-tidewell/")
DEVICES = """(() => {
    const C = imports.gi.Clutter;
    const seat = global.stage.get_context().get_backend().get_default_seat();
    global.person = {
        pointer: seat.create_virtual_device(C.InputDeviceType.POINTER_DEVICE),
        keys: seat.create_virtual_device(C.InputDeviceType.KEYBOARD_DEVICE),
    };
    return 1;
})()"""
WINDOWS = """global.get_window_actors().filter(a => a.visible).map(a => {
    const w = a.meta_window, r = w.get_frame_rect();
    return {title: w.get_title(), process: w.get_pid(), area: [r.x, r.y, r.width, r.height],
            focus: w.has_focus(), listed: !w.skip_taskbar};
})"""
KEY_SYMBOLS = {"Escape": 0xff1b, "ctrl": 0xffe3, "alt": 0xffe9, "comma": 0x2c, "F4": 0xffc1,
               "Return": 0xff0d}


class Gnome(RealDesktop):
    lists = ("trees/gnome",)
    versions = ("gnome-shell", "gnome-shell-extension-appindicator")
    session = {"XDG_CURRENT_DESKTOP": "GNOME", "XDG_SESSION_TYPE": "wayland",
               "XDG_SESSION_DESKTOP": "gnome", "DESKTOP_SESSION": "gnome"}
    bar = Area(0, 0, 1280, 32)
    shows_tooltips = False
    shows_labels = True
    extension = "'ubuntu-appindicators@ubuntu.com'"
    notifies = True
    outlives_notifier = False  # its shell is the daemon
    has_notification_switch = True

    def start_session(self):
        for schema, key, value in (
                ("org.gnome.shell", "enabled-extensions", f"[{self.extension}]"),
                ("org.gnome.shell", "welcome-dialog-last-shown-version", "99"),
                ("org.gnome.desktop.interface", "enable-animations", "false"),
                ("org.gnome.desktop.notifications", "show-banners", "false"),
                ("org.gnome.desktop.background", "picture-options", "none"),
                ("org.gnome.desktop.background", "primary-color", "#335577")):
            self.run("gsettings", "set", schema, key, value)
        width, height = self.size
        self.start("gnome-shell", "--headless", "--wayland", "--unsafe-mode",
                   "--virtual-monitor", f"{width}x{height}")
        wait_for("GNOME Shell", lambda: self.answers("1 + 1") == 2, timeout=90)
        runtime = pathlib.Path(self.environment["XDG_RUNTIME_DIR"])
        self.environment["WAYLAND_DISPLAY"] = next(runtime.glob("wayland-?")).name
        others = {":" + path.name[1:] for path in pathlib.Path("/tmp/.X11-unix").iterdir()}
        self.environment["DISPLAY"] = min(others)
        self.environment["XAUTHORITY"] = str(next(runtime.glob(".mutter-Xwaylandauth.*")))
        self.tell_services()
        if self.hosts_items:
            self.wait_for_host()
        # It starts in its overview, once its start-up animation is over.
        wait_for("the start-up's end",
                 lambda: self.answers("Main.layoutManager._startingUp") is False)
        wait_for("the overview's end",
                 lambda: self.answers("Main.overview.hide(); Main.overview.visible") is False)
        self.evaluate(DEVICES)

    def show_banners(self, are_shown):
        self.run("gsettings", "set", "org.gnome.desktop.notifications", "show-banners",
                 str(are_shown).lower())

    def begin_to_notify(self):
        self.show_banners(True)

    def end_to_notify(self):
        os.kill(self.notifier_process(), signal.SIGCONT)
        # While nobody moves the pointer a banner stays.
        self.evaluate("Main.messageTray.getSources().forEach(each => each.destroy()); 1")
        self.show_banners(False)
        self.switch_notifications(True)

    def switch_notifications(self, are_on):
        self.run("gsettings", "set", SWITCH, "enable", str(are_on).lower())

    def evaluate(self, script):
        succeeded, answer = self.call(*SHELL, "Eval", script, signature="s")
        if not succeeded:
            raise DesktopError(f"GNOME Shell: {answer}")
        return json.loads(str(answer)) if answer else None

    def answers(self, script):
        """What a script gives, or None while the shell cannot tell."""
        try:
            return self.evaluate(script)
        except Exception:
            return None

    def use(self, device, action):
        self.evaluate(f"{{ const now = imports.gi.GLib.get_monotonic_time; "
                      f"global.person.{device}.{action}; 1 }}")

    def point(self, x, y):
        start = self.evaluate("global.get_pointer().slice(0, 2)")
        for step in range(1, 13):
            place = [start[i] + ((x, y)[i] - start[i]) * step / 12 for i in (0, 1)]
            self.use("pointer", f"notify_absolute_motion(now(), {place[0]}, {place[1]})")
        time.sleep(0.1)

    def click(self, x, y, button=LEFT):
        self.point(x, y)
        self._click(button)

    def _click(self, button):
        for state in (1, 0):
            self.use("pointer", f"notify_button(now(), {button}, {state})")
            time.sleep(0.05)

    def press(self, keys):
        symbols = [KEY_SYMBOLS[key] for key in keys.split("+")]
        for state, order in ((1, symbols), (0, reversed(symbols))):
            for symbol in order:
                self.use("keys", f"notify_keyval(now(), {symbol}, {state})")

    def act_on(self, item):
        """A double click: a single one opens the item's menu."""
        self.point(*item.middle)
        self._click(LEFT)
        self._click(LEFT)

    def picture(self):
        path = self.folder / "screen.png"
        self.call("org.gnome.Shell.Screenshot", "/org/gnome/Shell/Screenshot",
                  "org.gnome.Shell.Screenshot", "Screenshot", False, False, str(path),
                  signature="bbs")
        return Image.open(path).convert("RGB")

    def windows(self):
        return [Window(each["title"], each["process"], Area(*each["area"]), each["focus"],
                       each["listed"]) for each in self.evaluate(WINDOWS)]

    def start_other_window(self):
        return self.start("foot", "--override=cursor.blink=no")


class GnomeWithoutExtension(Gnome):
    versions = ("gnome-shell",)
    hosts_items = False
    extension = ""
