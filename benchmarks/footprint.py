#!/usr/bin/python3
"""footprint.py BUILD: memory and wake-ups of the program, its panel never opened and a check for
updates behind it, against the least program with a tray icon, on a virtual desktop with a panel that
hosts status items. Takes two minutes, one of which counts wake-ups.
"""

import pathlib
import sys
import tempfile
import time

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "tools/desktop"))
from desktop import Desktop, wait_for  # noqa: E402
from installation import UpdateServer, enable_automatic_checks, install  # noqa: E402

SETTLING = 20  # seconds until the start is long over: D-Bus time-outs, the first alarms
COUNTING = 60  # seconds


def memory(process):
    """Kilobytes by kind, from the kernel."""
    lines = pathlib.Path(f"/proc/{process}/smaps_rollup").read_text().splitlines()[1:]
    figures = {line.split(":")[0]: int(line.split()[1]) for line in lines}
    return {"private dirty": figures["Private_Dirty"], "proportional": figures["Pss"],
            "resident": figures["Rss"]}


def voluntary_switches(process):
    """By thread, how often it went to sleep, each of which ends with a wake-up."""
    return {status.parent.name: int(line.split()[1])
            for status in pathlib.Path(f"/proc/{process}/task").glob("*/status")
            for line in status.read_text().splitlines()
            if line.startswith("voluntary_ctxt_switches")}


def settled(desktop, program):
    """Starts a program and returns it once it has shown its item and calmed down."""
    before = len(desktop.status_items())
    process = desktop.start(str(program), name=program.name)
    wait_for("the status item", lambda: len(desktop.status_items()) > before)
    time.sleep(SETTLING)
    return process


def main():
    build = pathlib.Path(sys.argv[1]).resolve()
    with (Desktop(host="xfce") as desktop, UpdateServer(build) as updates,
          tempfile.TemporaryDirectory(dir=build) as folder):
        updates.put_feed()
        enable_automatic_checks(desktop)
        bare = settled(desktop, build / "bin/bare_tray")
        tidewell = settled(desktop, install(build, pathlib.Path(folder), updates))
        assert updates.asked == ["/feed.xml"], "no check for updates was made"
        baseline, own = memory(bare.pid), memory(tidewell.pid)
        print(f"{'':36}{'bare':>9}{'Tidewell':>10}{'ratio':>8}")
        for kind, size in own.items():
            limit = "   (at most 1.25)" if kind == "private dirty" else ""
            print(f"{kind + ', kB':36}{baseline[kind]:9}{size:10}"
                  f"{size / baseline[kind]:8.2f}{limit}")
        start = voluntary_switches(tidewell.pid)
        time.sleep(COUNTING)
        switches = sum(count - start.get(thread, 0)
                       for thread, count in voluntary_switches(tidewell.pid).items())
        rate = switches / COUNTING
        print(f"{'wake-ups a second, all threads':55}{rate:8.2f}   (at most 1.2)")


if __name__ == "__main__":
    main()
