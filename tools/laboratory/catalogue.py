"""The desktops that there are, by name, in the order in which they are tried and shown."""

from gnome import Gnome, GnomeWithoutExtension
from plasma import Plasma, PlasmaLeft, PlasmaRight, PlasmaScaled, PlasmaTop
from wlroots import (Labwc, LabwcWithoutHost, LabwcWithXWayland, Sway, SwayWithoutHost,
                     SwayWithXWayland, SwayWithXWaylandWithoutHost)
from x11 import Cinnamon, Lxqt, Mate, Plasma5, Xfce, XfceWithoutHost

DESKTOPS = {
    "sway": Sway,
    "sway-label": SwayWithoutHost,
    "sway-xwayland": SwayWithXWayland,
    "sway-xwayland-label": SwayWithXWaylandWithoutHost,
    "xfce": Xfce,
    "xfce-label": XfceWithoutHost,
    "labwc": Labwc,
    "labwc-label": LabwcWithoutHost,
    "labwc-xwayland": LabwcWithXWayland,
    "plasma": Plasma,
    "plasma-scaled": PlasmaScaled,
    "plasma-top": PlasmaTop,
    "plasma-left": PlasmaLeft,
    "plasma-right": PlasmaRight,
    "gnome": Gnome,
    "gnome-label": GnomeWithoutExtension,
    "lxqt": Lxqt,
    "mate": Mate,
    "cinnamon": Cinnamon,
    "plasma5": Plasma5,
}
