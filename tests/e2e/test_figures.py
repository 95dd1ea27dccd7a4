import subprocess

from case import ScreenReaderCase
from desktop import wait_for

UNITS = {"bytes": 0, "byte": 0, "KB": 1, "MB": 2, "GB": 3, "TB": 4}
NOISE = 256 << 20  # what the machine may do between two readings


def figure_of(text):
    """(label, bytes, half of the last digit's worth) of a row like "Memory Used 15.49 GB"."""
    label, number, unit = text.rsplit(" ", 2)
    scale = 1024 ** UNITS[unit]
    return label, float(number) * scale, scale / 10 ** len(number.partition(".")[2]) / 2


class LiveFigures(ScreenReaderCase):
    """The panel's figures, read as a screen reader does, against those of `free`."""

    def figures(self):
        """{label: bytes and precision} of the panel; empty while it has none."""
        rows = [figure_of(name) for role, name in self.reader.parts()
                if role == "list item" and name.rpartition(" ")[2] in UNITS]
        return {label: figure for label, *figure in rows}

    def test_agree_with_free(self):
        self.start_with_panel()
        figures = wait_for("the panel's figures", self.figures)
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
