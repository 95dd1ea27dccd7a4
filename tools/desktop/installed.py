#!/usr/bin/python3
"""installed.py PROGRAM FOLDER: starts an installed program on a virtual desktop with Xfce's panel,
clicks on its item, saves a picture of the panel that opens, and ends it. Prints how long it took from
the start to the item: of the first time, and the median of five more."""

import pathlib
import signal
import statistics
import sys
import time

from desktop import Desktop, DesktopError, wait_for
from program import TEXT_COLOUR, Tidewell
from screenshots import command_line, photograph


def start(desktop):
    begin = time.monotonic()
    tidewell = Tidewell(desktop)
    tidewell.wait_for_item()
    return tidewell, time.monotonic() - begin


def end(tidewell):
    status = tidewell.end(signal.SIGTERM)
    if status != 0:
        raise DesktopError(f"the program ended with {status}:\n{tidewell.log()}")


def take(photographer, arguments):
    with Desktop(host="xfce") as desktop:
        tidewell, first = start(desktop)
        tidewell.click_item()
        panel = tidewell.wait_for_panel()
        wait_for("the panel's texts", lambda: desktop.shows(TEXT_COLOUR[0], panel))
        photographer.appearance = "light"
        photographer.take(desktop, pathlib.Path(arguments.program).name)
        end(tidewell)
        later = []
        for _ in range(5):
            tidewell, seconds = start(desktop)
            later.append(seconds)
            end(tidewell)
        print(f"until the item is there: {first * 1000:.0f} ms, "
              f"then {statistics.median(later) * 1000:.0f} ms")


if __name__ == "__main__":
    sys.exit(photograph(command_line(__doc__), take))
