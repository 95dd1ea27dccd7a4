import shutil
import subprocess
import unittest

import dbus
from case import DesktopCase
from desktop import wait_for

ACCESSIBLE = "org.a11y.atspi.Accessible"
UNITS = {"bytes": 0, "byte": 0, "KB": 1, "MB": 2, "GB": 3, "TB": 4}
NOISE = 256 << 20  # what the machine may do between two readings


def bytes_of(text):
    """(bytes, half of the last digit's worth) of a text like "15.49 GB"."""
    number, unit = text.split()
    scale = 1024 ** UNITS[unit]
    return float(number) * scale, scale / 10 ** len(number.partition(".")[2]) / 2


class LiveFigures(DesktopCase):
    """The panel's figures, read as a screen reader does, against those of `free`."""

    def setUp(self):
        super().setUp()
        shutil.copy("/usr/share/dbus-1/services/org.a11y.Bus.service",
                    self.desktop.folder / "services")

    def accessible_texts(self, bus, service, path):
        yield str(bus.call_blocking(service, path, "org.freedesktop.DBus.Properties", "Get", "ss",
                                    (ACCESSIBLE, "Name")))
        for child in bus.call_blocking(service, path, ACCESSIBLE, "GetChildren", "", ()):
            yield from self.accessible_texts(bus, *map(str, child))

    def figures(self, bus):
        """{label: bytes and precision} of the panel; empty while it has none."""
        root = ("org.a11y.atspi.Registry", "/org/a11y/atspi/accessible/root")
        try:
            texts = list(self.accessible_texts(bus, *root))
        except dbus.DBusException:
            return {}  # still on its way up
        figures = {}
        for label, value in zip(texts, texts[1:]):
            if value.partition(" ")[2] in UNITS:
                figures[label] = bytes_of(value)
        return figures if "Physical Memory" in figures else {}

    def test_agree_with_free(self):
        tidewell = self.start(environment={"QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1"})
        tidewell.wait_for_item()
        tidewell.click_item()
        tidewell.wait_for_panel()
        bus = self.desktop.bus(str(self.desktop.call(
            "org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress")))
        figures = wait_for("the panel's figures", lambda: self.figures(bus))
        memory, swap = (
            [int(field) for field in line.split()[1:]]
            for line in subprocess.check_output(["free", "-b"], text=True).splitlines()[1:3])
        total, _, free, shared, cache, _ = memory

        expected = {
            "Physical Memory": (total, 0),
            "Swap Used": (swap[1], 0),
            "Cached Files": (cache - shared, NOISE),
            "Free Memory": (free + cache - shared, NOISE),
            "Memory Used": (total - free - cache + shared, NOISE),
        }
        if swap[1]:
            expected["Swap Total"] = (swap[0], 0)
        for label, (value, noise) in expected.items():
            shown, precision = figures[label]
            self.assertAlmostEqual(shown, value, delta=precision * 1.01 + noise, msg=label)
        parts = ("App Memory", "Wired Memory", "Compressed")
        self.assertAlmostEqual(sum(figures[part][0] for part in parts), figures["Memory Used"][0],
                               delta=4 * figures["Memory Used"][1])


if __name__ == "__main__":
    unittest.main()
