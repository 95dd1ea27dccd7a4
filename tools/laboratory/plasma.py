"""Plasma 6: KWin on Wayland in a window of an X server's screen, with plasmashell."""

import json
import os
import pathlib
import signal

from desktop import wait_for
from desktops import NOTIFICATIONS, RealDesktop
from screens import Area, Window, XScreen

# KWin runs it, and writes the answer to its log.
LIST_WINDOWS = """console.info("WINDOWS " + JSON.stringify(
    workspace.windowList().filter(w => w.managed && !w.minimized && !w.hidden && !w.deleted).map(w => (
        {title: w.caption, process: w.pid, listed: !w.skipTaskbar && !w.popupWindow, focus: w.active,
         area: [w.frameGeometry.x, w.frameGeometry.y, w.frameGeometry.width,
                w.frameGeometry.height]}))));
"""


class Plasma(RealDesktop):
    lists = ("trees/plasma",)
    versions = ("kwin-wayland", "plasma-workspace")
    session = {"XDG_CURRENT_DESKTOP": "KDE", "XDG_SESSION_DESKTOP": "KDE",
               "KDE_FULL_SESSION": "true", "KDE_SESSION_VERSION": "6", "DESKTOP_SESSION": "plasma",
               "XDG_SESSION_TYPE": "wayland", "XDG_MENU_PREFIX": "plasma-",
               "XDG_CONFIG_DIRS": "/etc/xdg", "QT_QUICK_BACKEND": "software"}
    edge = "bottom"  # at which its bar is
    bar = Area(0, 840, 1280, 60)
    has_wallpaper = True
    notifies = True
    has_notification_switch = True

    def start_session(self):
        outer = self.start_display(self.size)
        self.screen = XScreen(outer)
        self.environment["DISPLAY"] = outer
        self.write(".config/kscreenlockerrc", "[Daemon]\nAutolock=false\n")
        self.write(".config/kwinoutputconfig.json", json.dumps(self.outputs()))
        width, height = (round(length / self.scale) for length in self.size)  # it takes points
        self.start("kwin_wayland", "--x11-display", outer, "--width", str(width), "--height",
                   str(height), "--scale", str(self.scale), "--no-lockscreen", "--xwayland",
                   "--socket", "wayland-9", environment={
                       "KWIN_COMPOSE": "Q", "QT_FORCE_STDERR_LOGGING": "1"})
        runtime = pathlib.Path(self.environment["XDG_RUNTIME_DIR"])
        wait_for("KWin", (runtime / "wayland-9").exists)
        self.environment["WAYLAND_DISPLAY"] = "wayland-9"
        self.environment["DISPLAY"] = wait_for("XWayland", lambda: next(
            (":" + name[1:] for name in os.listdir("/tmp/.X11-unix") if ":" + name[1:] != outer),
            None))
        keys = sorted(runtime.glob("xauth_*"))
        if keys:
            self.environment["XAUTHORITY"] = str(keys[0])
        self.tell_services()
        wait_for("KWin's scripts", lambda: self.owner("org.kde.KWin"))
        self.start("kded6")
        self.start(str(next(pathlib.Path("/usr/lib").glob("*/libexec/kactivitymanagerd"))))
        self.start_shell()
        self.call("org.kde.plasmashell", "/PlasmaShell", "org.kde.PlasmaShell", "evaluateScript",
                  f"panels().forEach(panel => panel.location = '{self.edge}');", signature="s")

    def outputs(self):
        """As KWin's own settings say it. Without them it finds a scale by itself."""
        width, height = self.size
        return [{"name": "outputs", "data": [
                    {"connectorName": "X11-0", "scale": self.scale,
                     "mode": {"width": width, "height": height, "refreshRate": 60000}}]},
                {"name": "setups", "data": [
                    {"lidClosed": False, "outputs": [
                        {"enabled": True, "outputIndex": 0, "position": {"x": 0, "y": 0},
                         "priority": 0}]}]}]

    def start_shell(self):
        self.start("plasmashell", "--no-respawn", environment={"QT_QPA_PLATFORM": "wayland"})
        self.wait_for_host()
        wait_for("its scripts", lambda: self.owner("org.kde.plasmashell"))
        wait_for("notifications", lambda: self.owner(NOTIFICATIONS), timeout=60)

    def begin_to_notify(self):
        pass  # the shell is the daemon, and shows them always

    def end_to_notify(self):
        self.switch_notifications(True)
        if self.owner(NOTIFICATIONS):
            os.kill(self.notifier_process(), signal.SIGCONT)
        else:
            self.start_shell()

    def switch_notifications(self, are_on):
        self.write(".config/plasmanotifyrc", f"[Applications][net.tidewell.Tidewell]\n"
                   f"ShowPopups={str(are_on).lower()}\n")

    def windows(self):
        script = self.folder / "list-windows.js"
        script.write_text(LIST_WINDOWS)
        known = self.log("kwin_wayland").count("WINDOWS [")
        scripting = ("org.kde.KWin", "/Scripting", "org.kde.kwin.Scripting")
        number = self.call(*scripting, "loadScript", str(script), "windows", signature="ss")
        self.call("org.kde.KWin", f"/Scripting/Script{number}", "org.kde.kwin.Script", "run")
        wait_for("KWin's answer", lambda: self.log("kwin_wayland").count("WINDOWS [") > known)
        self.call(*scripting, "unloadScript", "windows", signature="s")
        answer = self.log("kwin_wayland").rpartition("WINDOWS ")[2].splitlines()[0]
        return [Window(each["title"], each["process"],
                       Area(*(round(length * self.scale) for length in each["area"])),
                       each["focus"], each["listed"]) for each in json.loads(answer)]

    def start_other_window(self):
        return self.start("foot", "--override=cursor.blink=no")


class PlasmaScaled(Plasma):
    """Its screen is as large in points."""

    size = (1920, 1350)
    scale = 1.5
    bar = Area(0, 1260, 1920, 90)


class PlasmaTop(Plasma):
    edge = "top"
    bar = Area(0, 0, 1280, 60)


class PlasmaLeft(Plasma):
    edge = "left"
    bar = Area(0, 0, 60, 900)
    neutral = (1150, 820)


class PlasmaRight(Plasma):
    edge = "right"
    bar = Area(1220, 0, 60, 900)
