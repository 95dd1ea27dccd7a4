"""tools/desktops [NAME...] [--case CASE]... [--trees FOLDER] [--show | --footprint]

Tries the program on real desktops, each in a private tree of its Debian release and without a
screen, and prints the table of what is right: all of them where no name is given. --show prints the
table of the last tries instead, --footprint what the program takes of the machine natively on Wayland
and beside Plasma's theme, too. Needs root, the network and some gigabytes below FOLDER, which is
build/desktops unless said otherwise and may be deleted afterwards. Pictures and logs come to
FOLDER/results/NAME. Ends with 1 where something is wrong.
"""

import argparse
import json
import pathlib
import subprocess
import sys

HERE = pathlib.Path(__file__).resolve().parent
sys.path.insert(0, str(HERE.parent / "desktop"))

# pylint: disable=wrong-import-position
from catalogue import DESKTOPS
from table import is_right, table
from tree import Tree, TreeError


def arguments():
    parser = argparse.ArgumentParser(
        prog="desktops", description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("names", nargs="*", metavar="NAME", help=", ".join(DESKTOPS))
    parser.add_argument("--case", action="append", default=[], help="tries only that case, without the table")
    parser.add_argument("--trees", type=pathlib.Path, metavar="FOLDER",
                        default=HERE.parent.parent / "build/desktops")
    parser.add_argument("--show", action="store_true", help="tries nothing")
    parser.add_argument("--footprint", action="store_true", help="tries nothing, but measures")
    given = parser.parse_args()
    for name in given.names:
        if name not in DESKTOPS:
            parser.error(f"there is no desktop {name}; there are {', '.join(DESKTOPS)}")
    return given


def try_on(name, trees, results, cases):
    kind = DESKTOPS[name]
    tree = Tree(trees, kind.suite, results)
    tree.install("build", "trees/common", *kind.lists)
    tree.build("tidewell")
    status = subprocess.call(tree.command("ann", "/usr/bin/python3", "-B",
                                          "/src/tools/laboratory/run_cases.py", name, *cases))
    if status != 0:
        raise TreeError(f"{name} could not be tried: {results / name} tells more")


def measure_footprint(trees, results):
    tree = Tree(trees, "trixie", results)
    tree.install("build", "demo", "trees/sway", "trees/plasma")
    tree.build("tidewell", "tidewell-fetch", "sign-update", "bare_tray", "bare_loop")
    # As root, who alone has the loopback that the check for updates takes.
    return subprocess.call(tree.command("root", "/usr/bin/python3", "-B",
                                        "/src/benchmarks/footprint.py", "/build"))


def main():
    given = arguments()
    trees = given.trees.resolve()
    results = trees / "results"
    if given.footprint:
        return measure_footprint(trees, results)
    names = given.names or list(DESKTOPS)
    if not given.show:
        for name in names:
            try:
                try_on(name, trees, results, given.case)
            except TreeError as error:
                print(f"desktops: {error}", file=sys.stderr)
    if given.case:
        return 0  # what was wrong has been printed
    tried = {name: json.loads((results / name / "cells.json").read_text())
             for name in names if (results / name / "cells.json").exists()}
    print(table(tried))
    return 0 if len(tried) == len(names) and all(map(is_right, tried.values())) else 1


if __name__ == "__main__":
    sys.exit(main())
