#!/usr/bin/python3
"""run_cases.py DESKTOP [CASE...]: tries the cases, or the named ones, on a desktop of this tree.
Pictures come to /results/DESKTOP, and, where all cases were tried, what came out to cells.json.
Run by tools/desktops.
"""

import json
import os
import pathlib
import subprocess
import sys
import traceback

HERE = pathlib.Path(__file__).resolve().parent
sys.path.insert(0, str(HERE.parent / "desktop"))
os.environ.setdefault("TIDEWELL", "/build/bin/tidewell")

# pylint: disable=wrong-import-position
import cases
from catalogue import DESKTOPS
from desktop import DesktopError
from trial import Trial, Unmet

# The cases whose last picture is worth keeping where all is well.
PICTURED = {"beside the item": "panel", "left of the panel": "processes", "in its corner": "label",
            "tooltip": "tooltip", "shown": "notification"}


def try_case(desktop, case, folder):
    """None, or what was wrong."""
    failed = folder / f"failed-{case.name.replace(' ', '-')}.png"
    try:
        with Trial(desktop) as trial:
            try:
                for step in case.steps:
                    step(trial)
            except (Unmet, DesktopError) as error:
                desktop.picture().save(failed)
                return str(error)
            if case.name in PICTURED:
                desktop.picture().save(folder / f"{PICTURED[case.name]}.png")
        return None
    except Exception as error:  # the laboratory's own: told, and the next case tried
        desktop.picture().save(failed)
        with open(folder / "errors.log", "a", encoding="utf-8") as log:
            log.write(f"{case.name}: {traceback.format_exc()}\n")
        return f"could not be tried: {error}"


def main():
    name, *wanted = sys.argv[1:]
    folder = pathlib.Path("/results") / name
    kind = DESKTOPS[name]
    versions = subprocess.run(
        ["dpkg-query", "--show", "--showformat", "${Package} ${Version}\n", *kind.versions],
        text=True, stdout=subprocess.PIPE, check=True).stdout.splitlines()
    cells = []
    with kind(folder) as desktop:
        for case in cases.CASES:
            if not case.where(desktop) or wanted and case.name not in wanted:
                continue
            wrong = try_case(desktop, case, folder)
            print(f"{name:20} {case.column:15} {case.name:34} {wrong or 'ok'}", flush=True)
            cells.append({"column": case.column, "case": case.name, "wrong": wrong})
    if not wanted:
        (folder / "cells.json").write_text(json.dumps({"versions": versions, "cells": cells}))


if __name__ == "__main__":
    main()
