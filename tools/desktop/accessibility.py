"""What assistive technology reads of the programs on a Desktop."""

import dbus
from desktop import wait_for

ACCESSIBLE = "org.a11y.atspi.Accessible"
CHECKED, ENABLED, FOCUSED, SHOWING = 4, 8, 12, 25  # states


class ScreenReader:
    def __init__(self, desktop):
        """Starts the accessibility bus of the desktop, as a screen reader does."""
        desktop.start("/usr/libexec/at-spi-bus-launcher", "--launch-immediately",
                      environment={"GSETTINGS_BACKEND": "memory"})
        wait_for("the accessibility bus", lambda: desktop.owner("org.a11y.Bus"))
        desktop.call("org.a11y.Bus", "/org/a11y/bus", "org.freedesktop.DBus.Properties",
                     "Set", "org.a11y.Status", "IsEnabled", dbus.Boolean(True), signature="ssv")
        self.bus = desktop.bus(str(desktop.call(
            "org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress")))

    def ask(self, node, interface, method, signature="", arguments=()):
        return self.bus.call_blocking(*node, interface, method, signature, arguments, timeout=5)

    def property(self, node, interface, name):
        return self.ask(node, "org.freedesktop.DBus.Properties", "Get", "ss", (interface, name))

    def is_in_state(self, node, state):
        low, high = self.ask(node, ACCESSIBLE, "GetState")
        return bool((low | high << 32) >> state & 1)

    def role(self, node):
        return str(self.ask(node, ACCESSIBLE, "GetRoleName"))

    def name(self, node):
        return str(self.property(node, ACCESSIBLE, "Name"))

    def children(self, node):
        return [tuple(map(str, child)) for child in self.ask(node, ACCESSIBLE, "GetChildren")]

    def middle(self, node):
        """Where its middle is on the screen, in pixels."""
        x, y, width, height = self.ask(node, "org.a11y.atspi.Component", "GetExtents", "u", (0,))
        return x + width // 2, y + height // 2

    def described(self, node, lists=True):
        """{(role, name): node} of everything below a node, or all but the rows of lists."""
        found = {}
        for child in self.children(node):
            key = (self.role(child), self.name(child))
            found[key] = child
            if lists or key[0] != "list":
                found.update(self.described(child, lists))
        return found

    def programs(self):
        root = ("org.a11y.atspi.Registry", "/org/a11y/atspi/accessible/root")
        wait_for("the program on the accessibility bus", lambda: self.children(root))
        return root

    def parts(self, lists=True):
        """{(role, name): node} of all that the program shows, or all but the rows of lists."""
        return self.described(self.programs(), lists)

    def focused(self, node=None):
        """The innermost node that has the focus, or None."""
        for child in self.children(node or self.programs()):
            found = self.focused(child)
            if found or self.is_in_state(child, FOCUSED):
                return found or child
        return None
