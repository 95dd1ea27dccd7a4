#!/usr/bin/python3
"""screenshots.py PROGRAM FOLDER [--scale N]: starts the program on virtual desktops as a person
would, opens its panel with a click, and saves pictures of what there is to see. Prints their paths.
"""

import argparse
import os
import pathlib
import signal
import sys

from desktop import Desktop, DesktopError, wait_for
from program import LEVEL_COLOURS, TEXT_COLOUR, Tidewell, meminfo


class Photographer:
    def __init__(self, folder):
        self.folder, self.scale = folder, 1
        self.appearance = ""
        self.can_alter_figures = True

    def path(self, subject):
        size = "" if self.scale == 1 else f"-{self.scale}x"
        return self.folder / f"{subject}-{self.appearance}{size}.png"

    def take(self, desktop, subject, **options):
        print(desktop.picture(self.path(subject), **options), flush=True)

    def when_still(self, desktop, region):
        """Returns when a part of the screen has stopped changing."""
        last = []

        def still():
            last.append(desktop.raw(region))
            return len(last) > 1 and last[-1] == last[-2]
        wait_for("the screen to come to rest", still)

    def strip(self, desktop, region, subject):
        """A small part of the screen, enlarged."""
        self.when_still(desktop, region)
        self.take(desktop, subject, crop=region, enlarged=4)

    def status_item(self, dark):
        with Desktop(host="xfce", notifications="xfce4-notifyd", dark=dark,
                     scale=self.scale) as desktop:
            tidewell = Tidewell(desktop)
            tidewell.wait_for_item()
            region = (desktop.size[0] - 160 * self.scale, 0, 160 * self.scale, 32 * self.scale)
            self.strip(desktop, region, "status-item")
            tidewell.click_item()
            x, y, width, height = tidewell.wait_for_panel()
            self.when_still(desktop, (x, y, width, height))
            self.take(desktop, "desktop")
            margin = 16 * self.scale
            self.take(desktop, "panel", crop=(x - margin, 0, desktop.size[0] - x + margin,
                                              y + height + margin))
            self.end(tidewell)
            for level in LEVEL_COLOURS:
                tidewell = self.start_at(desktop, level)
                if tidewell:
                    tidewell.wait_for_item()
                    self.wait_for_level(tidewell, level, dark)
                    self.strip(desktop, region, f"status-item-{level}")
                    self.end(tidewell)

    def label_window(self, dark):
        with Desktop(host=None, dark=dark, scale=self.scale) as desktop:
            for level in LEVEL_COLOURS:
                # Where the figures cannot be altered, one picture shows the machine's own.
                tidewell = self.start_at(desktop, level) or (
                    Tidewell(desktop) if level == "none" else None)
                if tidewell:
                    x, y, _, height = wait_for(
                        "the label window", lambda: self.label_at(desktop, tidewell, level, dark))
                    margin = 12 * self.scale
                    region = (x - margin, max(y - margin, 0), desktop.size[0] - x + margin,
                              height + 2 * margin)
                    self.strip(desktop, region, f"label-window-{level}")
                    self.end(tidewell)

    def label_at(self, desktop, tidewell, level, dark):
        """The label window's geometry once it has the level's colour."""
        geometry = tidewell.label_window()
        colour = (TEXT_COLOUR if level == "none" else LEVEL_COLOURS[level])[dark]
        return geometry if geometry and desktop.shows(colour, geometry) else None

    def start_at(self, desktop, level):
        """A run of the program at a level; None where the system allows no such thing."""
        file = desktop.folder / "meminfo"
        file.write_text(meminfo(level))
        tidewell = Tidewell(desktop, meminfo=file)
        if not tidewell.wait_for_start():
            if self.can_alter_figures:
                print("No pictures of the levels: mount namespaces are not allowed here.")
            self.can_alter_figures = False
            return None
        return tidewell

    def wait_for_level(self, tidewell, level, dark):
        if level != "none":  # at which the picture keeps the colour of text
            wait_for(f"the level {level}", lambda: tidewell.item_colour() ==
                     bytes(LEVEL_COLOURS[level][dark]))

    def end(self, tidewell):
        status = tidewell.end(signal.SIGTERM)
        if status != 0:
            raise DesktopError(f"the program ended with {status}:\n{tidewell.log()}")


def command_line(description):
    """A parser of PROGRAM FOLDER."""
    parser = argparse.ArgumentParser(description=description)
    parser.add_argument("program")
    parser.add_argument("folder", type=pathlib.Path)
    return parser


def photograph(parser, take):
    """Has `take(photographer, arguments)` fill the folder that the command names, and returns the
    exit status."""
    arguments = parser.parse_args()
    os.environ["TIDEWELL"] = str(pathlib.Path(arguments.program).resolve())
    arguments.folder.mkdir(parents=True, exist_ok=True)
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(1))
    try:
        take(Photographer(arguments.folder.resolve()), arguments)
    except DesktopError as error:
        print(f"{parser.prog}: {error}", file=sys.stderr)
        return 1
    return 0


def take_all(photographer, arguments):
    photographer.scale = arguments.scale
    for dark in (False, True):
        photographer.appearance = "dark" if dark else "light"
        photographer.status_item(dark)
        photographer.label_window(dark)


def main():
    parser = command_line(__doc__)
    parser.add_argument("--scale", type=int, default=1)
    return photograph(parser, take_all)


if __name__ == "__main__":
    sys.exit(main())
