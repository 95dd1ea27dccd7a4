"""A private desktop on a virtual display: X server, buses, window manager and, as asked for, a
panel that hosts status items or an old-style tray, and a notification daemon.

Nothing of it is shared with the desktop that it runs on, and nothing is left when it is closed: its
processes are known by a mark in their environment, its files lie in one temporary folder.
"""

import ctypes
import os
import pathlib
import shutil
import signal
import socket
import subprocess
import tempfile
import time

import dbus
import dbus.bus

LINUX_PR_SET_PDEATHSIG = 1
LOGIN = ("org.freedesktop.login1", "/org/freedesktop/login1")
MARK = "TIDEWELL_DESKTOP"

BUS_CONFIGURATION = """<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>{type}</type>
  <listen>unix:path={socket}</listen>
  <auth>EXTERNAL</auth>
  <servicedir>{services}</servicedir>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>
"""

PANEL_SETTINGS = """<?xml version="1.0" encoding="UTF-8"?>
<channel name="xfce4-panel" version="1.0">
  <property name="configver" type="int" value="2"/>
  <property name="panels" type="array">
    <value type="int" value="1"/>
    <property name="dark-mode" type="bool" value="{dark}"/>
    <property name="panel-1" type="empty">
      <property name="position" type="string" value="p=6;x=0;y=0"/>
      <property name="position-locked" type="bool" value="true"/>
      <property name="length" type="uint" value="100"/>
      <property name="size" type="uint" value="28"/>
      <property name="icon-size" type="uint" value="22"/>
      <property name="plugin-ids" type="array">
        <value type="int" value="1"/>
        <value type="int" value="2"/>
      </property>
    </property>
  </property>
  <property name="plugins" type="empty">
    <property name="plugin-1" type="string" value="separator">
      <property name="expand" type="bool" value="true"/>
      <property name="style" type="uint" value="0"/>
    </property>
    <property name="plugin-2" type="string" value="systray"/>
  </property>
</channel>
"""

FONT_SETTINGS = """<?xml version="1.0"?>
<!DOCTYPE fontconfig SYSTEM "urn:fontconfig:fonts.dtd">
<fontconfig>
  <alias><family>sans-serif</family><prefer><family>Inter</family></prefer></alias>
</fontconfig>
"""

THEME_SETTINGS = """<?xml version="1.0" encoding="UTF-8"?>
<channel name="xsettings" version="1.0">
  <property name="Net" type="empty">
    <property name="ThemeName" type="string" value="{theme}"/>
  </property>
  <property name="Gtk" type="empty">
    <property name="FontName" type="string" value="{font}"/>
  </property>
</channel>
"""


class DesktopError(Exception):
    """Something of the desktop, or the program on it, did not do what was waited for."""


def wait_for(what, condition, timeout=20.0):
    """The first true value of `condition()`; DesktopError where there is none in time."""
    deadline = time.monotonic() + timeout
    while True:
        value = condition()
        if value:
            return value
        if time.monotonic() > deadline:
            raise DesktopError(f"waited {timeout:g} s in vain for {what}")
        time.sleep(0.05)


def die_with_parent():
    ctypes.CDLL(None).prctl(LINUX_PR_SET_PDEATHSIG, signal.SIGKILL)


class Session:
    """The programs of a desktop, whose logs lie in a folder, and the buses that they talk over."""

    def __init__(self, folder):
        self.folder = folder
        self.environment = {}
        self._connections = {}
        self.bus_processes = {}
        self.children = []

    # -- programs -----------------------------------------------------------------------------

    def start(self, *command, name=None, pass_fds=(), environment=None):
        """Starts a program on the desktop; what it says goes to the log of its name."""
        name = name or pathlib.Path(command[0]).name
        with open(self.folder / f"{name}.log", "ab") as log:
            child = subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=log, stderr=log,
                                     pass_fds=pass_fds, preexec_fn=die_with_parent,
                                     env={**self.environment, **(environment or {})})
        self.children.append(child)
        return child

    def start_display(self, size, scale=1):
        """Starts an X server with a screen of a size in pixels, and gives its name."""
        read, write = os.pipe()
        width, height = size
        self.display_process = self.start(
            "Xvfb", "-displayfd", str(write), "-screen", "0", f"{width}x{height}x24",
            "-dpi", str(int(96 * scale)), "-nolisten", "tcp", "-noreset", pass_fds=(write,))
        os.close(write)
        with os.fdopen(read) as pipe:
            number = pipe.readline().strip()
        if not number:
            raise DesktopError("the X server did not start:\n" + self.log("Xvfb"))
        return ":" + number

    def log(self, name):
        path = self.folder / f"{name}.log"
        return path.read_text(errors="replace") if path.exists() else ""

    def run(self, *command):
        subprocess.run(command, env=self.environment, check=True, stdin=subprocess.DEVNULL)

    def output(self, *command):
        """What a command prints, whether or not it succeeds."""
        return subprocess.run(command, env=self.environment, stdin=subprocess.DEVNULL, text=True,
                              stdout=subprocess.PIPE, stderr=subprocess.DEVNULL).stdout

    # -- buses --------------------------------------------------------------------------------

    def bus(self, address=None):
        address = address or self.environment["DBUS_SESSION_BUS_ADDRESS"]
        if address not in self._connections:
            self._connections[address] = dbus.bus.BusConnection(address)
        return self._connections[address]

    def forget_buses(self):
        """Closes the connections, so that a bus can go and come back."""
        for connection in self._connections.values():
            connection.close()
        self._connections.clear()

    def owner(self, name):
        """The bus name's owner, or None."""
        try:
            return str(self.bus().get_name_owner(name))
        except dbus.DBusException:
            return None

    def call(self, service, path, interface, method, *arguments, signature=None):
        return self.bus().call_blocking(service, path, interface, method, signature,
                                        arguments, timeout=20)

    def property(self, service, path, interface, name):
        return self.call(service, path, "org.freedesktop.DBus.Properties", "Get", interface, name,
                         signature="ss")

    def hosts_status_items(self):
        watcher = "org.kde.StatusNotifierWatcher"
        try:
            return self.owner(watcher) and bool(self.property(
                watcher, "/StatusNotifierWatcher", watcher, "IsStatusNotifierHostRegistered"))
        except dbus.DBusException:
            return False

    def status_items(self):
        """(bus name, object path) of every registered status item."""
        watcher = "org.kde.StatusNotifierWatcher"
        try:
            items = self.property(watcher, "/StatusNotifierWatcher", watcher,
                                  "RegisteredStatusNotifierItems")
        except dbus.DBusException:
            return []
        # Some tell no path: the usual one, then.
        parts = [str(item).partition("/") for item in items]
        return [(service, "/" + (path or "StatusNotifierItem")) for service, _, path in parts]


def accepts(path):
    """Whether somebody listens at the socket."""
    with socket.socket(socket.AF_UNIX) as client:
        return client.connect_ex(str(path)) == 0


class Desktop(Session):
    """Use as a context manager.

    host: "xfce" (status items), "trayer" (XEmbed only) or None. notifications: "xfce4-notifyd",
    "dunst" or None. Sizes are in points: pixels are `scale` times as many.
    """

    def __init__(self, host="xfce", notifications=None, dark=False, scale=1, size=(1280, 900),
                 window_manager=("openbox", "--sm-disable"), contrast=False, font="Inter 10"):
        self.host, self.notifications, self.dark, self.scale = host, notifications, dark, scale
        self.contrast, self.font = contrast, font
        self.window_manager = window_manager
        self.size = tuple(int(scale * length) for length in size)
        super().__init__(pathlib.Path(tempfile.mkdtemp(prefix="tidewell-desktop-")))

    # -- life ---------------------------------------------------------------------------------

    def __enter__(self):
        try:
            self._start()
        except BaseException:
            self.close()
            raise
        return self

    def __exit__(self, *_):
        self.close()

    def _start(self):
        for name in ("config", "data", "cache", "state", "home", "services", "system-services"):
            (self.folder / name).mkdir()
        (self.folder / "runtime").mkdir(mode=0o700)
        usual, high = ("Adwaita-dark", "HighContrastInverse") if self.dark else (
            "Adwaita", "HighContrast")
        theme = high if self.contrast else usual
        self.environment = {
            MARK: str(self.folder),
            "PATH": "/usr/local/bin:/usr/bin:/bin",
            "HOME": str(self.folder / "home"),
            "LC_ALL": "C.UTF-8",
            "LANGUAGE": "en",
            "XDG_CONFIG_HOME": str(self.folder / "config"),
            "XDG_DATA_HOME": str(self.folder / "data"),
            "XDG_CACHE_HOME": str(self.folder / "cache"),
            "XDG_STATE_HOME": str(self.folder / "state"),
            "XDG_RUNTIME_DIR": str(self.folder / "runtime"),
            "XDG_CURRENT_DESKTOP": "XFCE",
            "XDG_SESSION_TYPE": "x11",
            "NO_AT_BRIDGE": "1",
            "GTK_THEME": theme.replace("-", ":"),
            "GDK_SCALE": str(int(self.scale)),
            "QT_SCALE_FACTOR": str(self.scale),
        }
        settings = self.folder / "config/xfce4/xfconf/xfce-perchannel-xml"
        settings.mkdir(parents=True)
        (settings / "xfce4-panel.xml").write_text(
            PANEL_SETTINGS.format(dark=str(self.dark).lower()))
        (settings / "xsettings.xml").write_text(THEME_SETTINGS.format(theme=theme, font=self.font))
        fonts = self.folder / "config/fontconfig"
        fonts.mkdir()
        (fonts / "fonts.conf").write_text(FONT_SETTINGS)

        self.display = self.start_display(self.size, self.scale)
        self.environment["DISPLAY"] = self.display
        self.environment["DBUS_SESSION_BUS_ADDRESS"] = self.start_bus("session", "services")
        # Programs find no system bus unless a test starts one.
        self.environment["DBUS_SYSTEM_BUS_ADDRESS"] = f"unix:path={self.folder}/no-system-bus"
        service = pathlib.Path("/usr/share/dbus-1/services/org.xfce.Xfconf.service")
        if service.exists():
            shutil.copy(service, self.folder / "services")
        self.run("xsetroot", "-solid", "#33383f" if self.dark else "#c9d3df")
        self.start(*self.window_manager)
        wait_for("the window manager", lambda: "window id" in self.output(
            "xprop", "-root", "_NET_SUPPORTING_WM_CHECK"))
        # Xfce's settings are there whether or not its panel is.
        self.call("org.xfce.Xfconf", "/org/xfce/Xfconf", "org.xfce.Xfconf", "ListChannels")
        if self.notifications:
            self.start_notifications(self.notifications)
        if self.host:
            self.start_host()

    def start_bus(self, kind, services):
        """Starts a bus daemon of our own and gives its address."""
        path = self.folder / f"{kind}-bus"
        configuration = self.folder / f"{kind}.conf"
        configuration.write_text(BUS_CONFIGURATION.format(
            type=kind, socket=path, services=self.folder / services))
        self.bus_processes[kind] = self.start(
            "dbus-daemon", f"--config-file={configuration}", "--nofork", "--nopidfile",
            name=f"{kind}-bus")
        wait_for(f"the {kind} bus", lambda: accepts(path))
        return f"unix:path={path}"

    def close(self):
        self.forget_buses()
        for number, patience in ((signal.SIGTERM, 3), (signal.SIGKILL, 5)):
            processes = self.processes()
            for process in processes:
                for each in (signal.SIGCONT, number):
                    try:
                        os.kill(process, each)
                    except ProcessLookupError:
                        break
            deadline = time.monotonic() + patience
            while self.processes() and time.monotonic() < deadline:
                time.sleep(0.02)
        shutil.rmtree(self.folder, ignore_errors=True)

    def processes(self):
        """Everything that runs on this desktop, whoever started it."""
        mark = f"{MARK}={self.folder}".encode()
        found = []
        for process in pathlib.Path("/proc").glob("[0-9]*"):
            try:
                if mark in (process / "environ").read_bytes().split(b"\0"):
                    found.append(int(process.name))
            except OSError:
                continue  # gone, or not ours
        # Our own children stay until they are waited for.
        ended = {child.pid for child in self.children if child.poll() is not None}
        return [number for number in found if number not in ended]

    def names_of_processes(self):
        return {pathlib.Path(f"/proc/{each}/comm").read_text().strip()
                for each in self.processes()}

    # -- what is on it ------------------------------------------------------------------------

    def start_host(self):
        if self.host == "xfce":
            self.host_process = self.start("xfce4-panel", "--disable-wm-check")
            wait_for("the panel's status items", self.hosts_status_items)
        else:
            self.host_process = self.start("trayer", "--edge", "top", "--align", "right",
                                           "--widthtype", "request", "--height", "26")
            wait_for("the tray", lambda: self.windows("--class", "trayer"))

    def kill_host(self):
        self.host_process.kill()
        self.host_process.wait()
        wait_for("the end of the panel's plugins", lambda: not self.hosts_status_items())

    def start_notifications(self, daemon):
        path = {"xfce4-notifyd": "lib/*/xfce4/notifyd/xfce4-notifyd", "dunst": "bin/dunst"}
        program = next(pathlib.Path("/usr").glob(path[daemon]))
        self.notification_process = self.start(str(program))
        wait_for(daemon, lambda: self.owner("org.freedesktop.Notifications"))

    def start_compositor(self):
        """Makes the desktop one of Wayland's, without X11 and without a screen that one sees."""
        configuration = self.folder / "sway.conf"
        configuration.write_text("xwayland disable\n")
        runtime = self.folder / "runtime"
        self.environment.pop("DISPLAY", None)
        # It refuses to be root.
        as_user = ("unshare", "--user", "--map-user=1000", "--map-group=1000")
        self.compositor_process = self.start(
            *(as_user if os.geteuid() == 0 else ()), "sway", "-c", str(configuration), name="sway",
            environment={"WLR_BACKENDS": "headless", "WLR_RENDERER": "pixman",
                         "WLR_LIBINPUT_NO_DEVICES": "1"})
        self.environment["WAYLAND_DISPLAY"] = wait_for("sway", lambda: next(
            (path.name for path in runtime.glob("wayland-?") if accepts(path)), None))
        return self.compositor_process

    def start_login_manager(self):
        """Starts a stand-in of login1, on a system bus of our own."""
        if "system" not in self.bus_processes:
            self.environment["DBUS_SYSTEM_BUS_ADDRESS"] = self.start_bus(
                "system", "system-services")
        self.login_process = self.start(
            "/usr/bin/python3", "-m", "dbusmock", "--template", "logind")
        wait_for("the login manager", lambda: self.system_bus().name_has_owner(LOGIN[0]))

    def system_bus(self):
        return self.bus(self.environment["DBUS_SYSTEM_BUS_ADDRESS"])

    def announce_power_off(self, comes):
        """Has the login manager say that the machine goes down, or that it does not."""
        self.system_bus().call_blocking(
            *LOGIN, "org.freedesktop.DBus.Mock", "EmitSignal", "sssav",
            (f"{LOGIN[0]}.Manager", "PrepareForShutdown", "b", [dbus.Boolean(comes)]))

    # -- screen -------------------------------------------------------------------------------

    def plug_in(self, monitor, width, height, x, output="none"):
        """Makes a monitor of a part of the screen that begins so far from its left edge. The first
        one takes the output "screen"."""
        self.run("xrandr", "--setmonitor", monitor, f"{width}/{width}x{height}/{height}+{x}+0",
                 output)

    def unplug(self, monitor):
        self.run("xrandr", "--delmonitor", monitor)

    def windows(self, *search):
        """Identifiers of the visible windows that xdotool's search finds."""
        return self.output("xdotool", "search", "--onlyvisible", *search).split()

    def geometry(self, window):
        """(x, y, width, height) of a window on the screen, in pixels, or None when it has gone."""
        # Of windows with a frame xdotool tells a wrong place.
        lines = self.output("xwininfo", "-id", window).splitlines()
        values = dict(line.strip().split(":", 1) for line in lines if ":" in line)
        place = [values.get(key) for key in ("Absolute upper-left X", "Absolute upper-left Y",
                                             "Width", "Height")]
        return tuple(map(int, place)) if all(place) else None

    def click(self, x, y, button=1):
        # Not with --sync: where the pointer is there already, that waits for it to move.
        self.run("xdotool", "mousemove", str(x), str(y), "click", str(button))

    def move_pointer(self, x, y):
        self.run("xdotool", "mousemove", str(int(x)), str(int(y)))

    def glide(self, *places):
        """Moves the pointer from place to place as a hand does, by way of what lies between."""
        steps = (tuple(str(int(start + (end - start) * step / 12)) for start, end in zip(*pair))
                 for pair in zip(places, places[1:]) for step in range(13))
        self.run("xdotool", *(word for x, y in steps
                              for word in ("mousemove", x, y, "sleep", "0.01")))

    def press(self, *keys):
        self.run("xdotool", "key", *keys)

    def drag(self, start, end, meanwhile=lambda: None):
        self.run("xdotool", "mousemove", *map(str, start), "mousedown", "1")
        self.glide(start, end)
        meanwhile()
        self.run("xdotool", "mouseup", "1")

    def picture(self, path, crop=None, enlarged=1):
        """Saves the screen, or the part (x, y, width, height) of it, as a PNG file."""
        command = ["import", "-display", self.display, "-window", "root"]
        if crop:
            x, y, width, height = crop
            command += ["-crop", f"{width}x{height}+{x}+{y}", "+repage"]
        if enlarged != 1:
            command += ["-filter", "point", "-resize", f"{enlarged * 100}%"]
        self.run(*command, str(path))
        return path

    def raw(self, crop):
        """A part of the screen, three bytes a pixel."""
        x, y, width, height = crop
        return subprocess.run(
            ["import", "-display", self.display, "-window", "root", "-crop",
             f"{width}x{height}+{x}+{y}", "-depth", "8", "rgb:-"],
            env=self.environment, check=True, stdin=subprocess.DEVNULL,
            stdout=subprocess.PIPE).stdout

    def shows(self, colour, crop):
        """Whether a pixel of that part of the screen has exactly the colour."""
        raw = self.raw(crop)
        return any(raw[at:at + 3] == bytes(colour) for at in range(0, len(raw), 3))
