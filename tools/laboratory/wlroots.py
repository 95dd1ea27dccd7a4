"""sway and labwc, each in a window of an X server's screen, with Waybar."""

import json
import os
import pathlib

from desktop import wait_for
from desktops import RealDesktop
from screens import Area, Window, XScreen, differences, parts

BAR_HEIGHT = 30
BAR_STYLE = """* { font-family: "DejaVu Sans"; font-size: 12px; min-height: 0 }
#tray { padding: 0 8px }
"""
TRAY = {"icon-size": 20, "spacing": 8}


class WlrootsDesktop(RealDesktop):
    """What the two have in common. Neither tells where Wayland's windows lie: they are known by
    what changed on the screen."""

    xwayland = False
    lists_focus = False  # of the layer shell's surfaces
    compositor = ()  # the command
    workspaces = 2

    def __init__(self, folder):
        super().__init__(folder)
        self.bar = Area(0, 0, self.size[0], round(BAR_HEIGHT * self.scale))

    def start_session(self):
        outer = self.start_display(self.size)
        self.screen = XScreen(outer)
        self.write_settings()
        self.start(*self.compositor, environment={
            "DISPLAY": outer, "WLR_BACKENDS": "x11", "WLR_RENDERER": "pixman"})
        self.environment.pop("DISPLAY", None)
        runtime = pathlib.Path(self.environment["XDG_RUNTIME_DIR"])
        self.environment["WAYLAND_DISPLAY"] = wait_for(
            self.compositor[0],
            lambda: next((path.name for path in runtime.glob("wayland-?")), None))
        if self.xwayland:
            self.environment["DISPLAY"] = wait_for("XWayland", lambda: next(
                (":" + name[1:] for name in os.listdir("/tmp/.X11-unix")
                 if ":" + name[1:] != outer), None))
        self.tell_services()
        self.came_up()
        if self.hosts_items:
            self.start_bar()

    def start_bar(self):
        self.write(".config/waybar/config", json.dumps({
            "layer": "top", "position": "top", "height": BAR_HEIGHT, "modules-right": ["tray"],
            "tray": TRAY}))
        self.write(".config/waybar/style.css", BAR_STYLE)
        self.start("waybar")
        self.wait_for_host()

    def write_settings(self):
        raise NotImplementedError

    def came_up(self):
        """The compositor takes clients."""

    def start_other_window(self):
        return self.start("foot", "--override=cursor.blink=no",
                          "--override=csd.preferred=none")

    def areas_of(self, process, before):
        after = self.picture()
        if not self.hosts_items:
            # The panel lies so close to the label that only a fine look tells them apart.
            return [part for area in differences(before, after)
                    for part in parts(before, after, area)]
        free = Area(0, self.bar.bottom, self.size[0], self.size[1] - self.bar.bottom)
        return [area for area in differences(before, after) if free.holds(area)]

    def task_bar(self):
        """By the protocol that task bars use: a line is "program: title"."""
        return [(None, line) for line in self.output("wlrctl", "toplevel", "list").splitlines()]


class Sway(WlrootsDesktop):
    lists = ("trees/sway",)
    versions = ("sway", "waybar")
    session = {"XDG_CURRENT_DESKTOP": "sway", "XDG_SESSION_TYPE": "wayland"}
    compositor = ("sway",)
    notifies = True
    notifier = "bin/mako"

    def write_settings(self):
        width, height = self.size
        self.write(".config/sway/config", f"""xwayland {"enable" if self.xwayland else "disable"}
output X11-1 resolution {width}x{height} scale {self.scale} bg #335577 solid_color
default_border none
""")

    def came_up(self):
        runtime = pathlib.Path(self.environment["XDG_RUNTIME_DIR"])
        self.environment["SWAYSOCK"] = str(
            wait_for("sway", lambda: next(runtime.glob("sway-ipc*"), None)))

    def windows(self):
        found, nodes = [], [json.loads(self.output("swaymsg", "-t", "get_tree"))]
        while nodes:
            node = nodes.pop()
            nodes += node.get("nodes", []) + node.get("floating_nodes", [])
            if node.get("pid"):
                place = node["rect"]
                found.append(Window(
                    node["name"], node["pid"],
                    Area(place["x"], place["y"], place["width"], place["height"]), node["focused"]))
        return found

    def close_window(self):
        self.run("swaymsg", "--quiet", "kill")

    def show_workspace(self, number):
        self.run("swaymsg", "--quiet", "workspace", "number", str(number + 1))


class SwayWithXWayland(Sway):
    xwayland = True


class SwayWithoutHost(Sway):
    hosts_items = False


class SwayWithXWaylandWithoutHost(SwayWithXWayland):
    hosts_items = False


class Labwc(WlrootsDesktop):
    lists = ("trees/labwc",)
    versions = ("labwc", "waybar")
    session = {"XDG_CURRENT_DESKTOP": "labwc:wlroots", "XDG_SESSION_TYPE": "wayland"}
    compositor = ("labwc",)

    def write_settings(self):
        width, height = self.size
        self.started = self.home / "labwc-is-up"
        # A frame that tells of the focus would be a change of the picture.
        self.write(".config/labwc/rc.xml", '''<?xml version="1.0"?>
<labwc_config>
  <windowRules><windowRule identifier="foot" serverDecoration="no"/></windowRules>
  <desktops number="2"/>
  <keyboard>
    <default/>
    <keybind key="W-1"><action name="GoToDesktop" to="1"/></keybind>
    <keybind key="W-2"><action name="GoToDesktop" to="2"/></keybind>
  </keyboard>
</labwc_config>
''')
        self.write(".config/labwc/autostart", f"""wlr-randr --output X11-1 \\
    --custom-mode {width}x{height} --scale {self.scale}
swaybg -c '#335577' &
touch {self.started}
""")

    def came_up(self):
        wait_for("labwc", self.started.exists)

    def windows(self):
        active = self.output("wlrctl", "toplevel", "list", "state:active").splitlines()
        return [Window(line, self._process(line.partition(":")[0]), None, line in active)
                for line in self.output("wlrctl", "toplevel", "list").splitlines()]

    def _process(self, application):
        """By the name of its command, which foot's windows have."""
        return next((child.pid for child in self.children
                     if child.args[0] == application and child.poll() is None), 0)

    def show_workspace(self, number):
        self.press(f"super+{number + 1}")


class LabwcWithXWayland(Labwc):
    xwayland = True


class LabwcWithoutHost(Labwc):
    hosts_items = False
