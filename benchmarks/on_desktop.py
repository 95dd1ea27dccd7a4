#!/usr/bin/python3
"""on_desktop.py PROGRAM: runs a benchmark on a virtual desktop with a window manager and shows what
it prints.
"""

import pathlib
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "tools/desktop"))
from desktop import Desktop  # noqa: E402


def main():
    program = pathlib.Path(sys.argv[1]).resolve()
    with Desktop() as desktop:
        status = desktop.start(str(program), name="benchmark").wait()
        print(desktop.log("benchmark"), end="")
    return status


if __name__ == "__main__":
    sys.exit(main())
