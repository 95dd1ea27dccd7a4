"""The desktops on X11, each on an X server without a screen."""

import pathlib

from desktop import wait_for
from desktops import RealDesktop
from screens import Area, XScreen

XFCE_PANEL = """<?xml version="1.0" encoding="UTF-8"?>
<channel name="xfce4-panel" version="1.0">
  <property name="configver" type="int" value="2"/>
  <property name="panels" type="array">
    <value type="int" value="1"/>
    <property name="panel-1" type="empty">
      <property name="position" type="string" value="p=6;x=0;y=0"/>
      <property name="position-locked" type="bool" value="true"/>
      <property name="length" type="uint" value="100"/>
      <property name="size" type="uint" value="28"/>
      <property name="plugin-ids" type="array">
        <value type="int" value="1"/><value type="int" value="2"/><value type="int" value="3"/>
      </property>
    </property>
  </property>
  <property name="plugins" type="empty">
    <property name="plugin-1" type="string" value="tasklist"/>
    <property name="plugin-2" type="string" value="separator">
      <property name="expand" type="bool" value="true"/>
    </property>
    <property name="plugin-3" type="string" value="systray"/>
  </property>
</channel>
"""


class X11Desktop(RealDesktop):
    def start_session(self):
        self.environment["DISPLAY"] = self.start_display(self.size)
        self.screen = XScreen(self.environment["DISPLAY"])
        self.screen.paint(0x335577)
        self.tell_services()
        self.start_desktop()

    def start_desktop(self):
        raise NotImplementedError

    def start_window_manager(self, *command):
        self.start(*command)
        wait_for(command[0], lambda: "window id" in self.output(
            "xprop", "-root", "_NET_SUPPORTING_WM_CHECK"))

    def windows(self):
        return self.screen.windows()

    def show_workspace(self, number):
        self.screen.show_workspace(number)


class Xfce(X11Desktop):
    lists = ("trees/xfce",)
    notifies = True
    notifier = "lib/*/xfce4/notifyd/xfce4-notifyd"
    versions = ("xfwm4", "xfdesktop4", "xfce4-panel")
    has_wallpaper = True
    session = {"XDG_CURRENT_DESKTOP": "XFCE", "XDG_SESSION_TYPE": "x11"}
    bar = Area(0, 0, 1280, 29)
    workspaces = 4

    def start_desktop(self):
        self.write(".config/xfce4/xfconf/xfce-perchannel-xml/xfce4-panel.xml", XFCE_PANEL)
        self.start_window_manager("xfwm4")
        self.start("xfdesktop")
        if self.hosts_items:
            self.start("xfce4-panel", "--disable-wm-check")
            self.wait_for_host()


class XfceWithoutHost(Xfce):
    hosts_items = False


class Mate(X11Desktop):
    lists = ("trees/mate",)
    notifies = True
    notifier = "lib*/mate-notification-daemon/mate-notification-daemon"
    versions = ("marco", "caja", "mate-panel")
    shows_labels = True
    has_wallpaper = True
    session = {"XDG_CURRENT_DESKTOP": "MATE", "XDG_SESSION_TYPE": "x11"}
    bar = Area(0, 0, 1280, 26)

    def start_desktop(self):
        self.start("/usr/libexec/mate-settings-daemon")
        self.start_window_manager("marco", "--sm-disable")
        self.start("mate-panel")
        self.start("caja", "--force-desktop", "--no-default-window")
        self.wait_for_host()


class Lxqt(X11Desktop):
    lists = ("trees/lxqt",)
    notifies = True
    notifier = "bin/lxqt-notificationd"
    versions = ("lxqt-panel", "openbox")
    session = {"XDG_CURRENT_DESKTOP": "LXQt", "XDG_SESSION_TYPE": "x11",
               "XDG_CONFIG_DIRS": "/etc/xdg:/usr/share"}
    bar = Area(0, 868, 1280, 32)

    def start_desktop(self):
        self.start_window_manager("openbox")
        self.start("lxqt-panel")
        self.wait_for_host()


class Cinnamon(X11Desktop):
    lists = ("trees/cinnamon",)
    versions = ("cinnamon", "xapp-sn-watcher")
    session = {"XDG_CURRENT_DESKTOP": "X-Cinnamon", "XDG_SESSION_TYPE": "x11",
               "XDG_SESSION_DESKTOP": "cinnamon", "DESKTOP_SESSION": "cinnamon",
               "CLUTTER_VBLANK": "none"}
    bar = Area(0, 860, 1280, 40)

    def start_desktop(self):
        self.run("gsettings", "set", "org.cinnamon.desktop.notifications", "display-notifications",
                 "false")
        self.start(str(next(pathlib.Path("/usr").glob("lib*/**/xapp-sn-watcher"))))
        self.start_window_manager("cinnamon")
        self.wait_for_host()


class Plasma5(X11Desktop):
    suite = "bookworm"
    lists = ("trees/plasma5",)
    versions = ("kwin-x11", "plasma-workspace")
    has_wallpaper = True
    session = {"XDG_CURRENT_DESKTOP": "KDE", "XDG_SESSION_DESKTOP": "KDE",
               "KDE_FULL_SESSION": "true", "KDE_SESSION_VERSION": "5", "DESKTOP_SESSION": "plasma",
               "XDG_SESSION_TYPE": "x11", "XDG_MENU_PREFIX": "plasma-",
               "XDG_CONFIG_DIRS": "/etc/xdg", "QT_QUICK_BACKEND": "software"}
    bar = Area(0, 856, 1280, 44)

    def start_desktop(self):
        self.write(".config/plasmanotifyrc", "[DoNotDisturb]\nUntil=2099,1,1,0,0,0\n")
        self.start_window_manager("kwin_x11")
        self.start("kded5")
        self.start(str(next(pathlib.Path("/usr/lib").glob("*/libexec/kactivitymanagerd"))))
        self.start("plasmashell", "--no-respawn")
        self.wait_for_host()
