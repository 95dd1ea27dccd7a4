#!/usr/bin/python3
"""footprint.py BUILD: what the program costs, on a virtual desktop with a panel that hosts status
items: its panel never opened and a check for updates behind it, against the least program with a tray
icon and the least that reads its files; the same natively on Wayland, and with Plasma's theme
installed in a session that calls itself Plasma, where these can be had; then its panel open, against
other monitors that are installed. Takes five minutes, in two of which it counts.
"""

import os
import pathlib
import re
import shutil
import signal
import sys
import tempfile
import threading
import time

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "tools/desktop"))
from desktop import Desktop, DesktopError, wait_for  # noqa: E402
from installation import UpdateServer, enable_automatic_checks, install  # noqa: E402
from program import Tidewell, meminfo, write_history  # noqa: E402

SETTLING = 20  # seconds until the start is long over: D-Bus time-outs, the first alarms
COUNTING = 60  # seconds
PLASMA_THEME = "lib/*/qt6/plugins/platformthemes/KDEPlasmaPlatformTheme6.so"
PLASMA = {"XDG_CURRENT_DESKTOP": "KDE", "KDE_FULL_SESSION": "true", "KDE_SESSION_VERSION": "6"}

TEXT_WINDOW = """conky.config = { own_window = true, own_window_type = 'desktop', use_xft = true,
    double_buffer = true, update_interval = 1, font = 'Inter:size=10', alignment = 'top_left' }
conky.text = [[Memory $mem of $memmax, $memperc%
Free $memfree, cached $cached, buffers $buffers
Swap $swap of $swapmax, $swapperc%]]
"""


def memory(process):
    """Kilobytes by kind, from the kernel."""
    lines = pathlib.Path(f"/proc/{process}/smaps_rollup").read_text().splitlines()[1:]
    figures = {line.split(":")[0]: int(line.split()[1]) for line in lines}
    return {"private dirty": figures["Private_Dirty"], "proportional": figures["Pss"],
            "resident": figures["Rss"]}


def spent(process):
    """By thread, the nanoseconds on the processor, and how often it went to sleep, each of which ends
    with a wake-up."""
    threads = {}
    for thread in pathlib.Path(f"/proc/{process}/task").iterdir():
        time_on_processor = int((thread / "schedstat").read_text().split()[0])
        switches = re.search(r"^voluntary_ctxt_switches:\s*(\d+)",
                             (thread / "status").read_text(), re.MULTILINE)[1]
        threads[thread.name] = (time_on_processor, int(switches))
    return threads


def costs(processes):
    """Of each process in the same minute: milliseconds a minute, and wake-ups a second."""
    start = [spent(process) for process in processes]
    time.sleep(COUNTING)
    for process, before in zip(processes, start):
        grown = [[now - then for now, then in zip(count, before.get(thread, (0, 0)))]
                 for thread, count in spent(process).items()]
        busy, switches = map(sum, zip(*grown))
        yield busy / 1e6 * 60 / COUNTING, switches / COUNTING


def settled(desktop, program, environment=None):
    """Starts a program and returns it once it has shown its item and calmed down."""
    before = len(desktop.status_items())
    process = desktop.start(str(program), name=program.name, environment=environment)
    wait_for("the status item", lambda: len(desktop.status_items()) > before)
    time.sleep(SETTLING)
    return process


def has_loaded(process, library):
    return library in pathlib.Path(f"/proc/{process.pid}/maps").read_text()


def start_sway(desktop):
    """Its Wayland display, without a screen."""
    configuration = desktop.folder / "sway.conf"
    configuration.write_text("xwayland disable\n")
    desktop.start("sway", "--config", str(configuration),
                  environment={"WLR_BACKENDS": "headless", "WLR_RENDERER": "pixman"})
    return wait_for("sway", lambda: next(
        (desktop.folder / "runtime").glob("wayland-?"), None)).name


def print_elsewhere(desktop, program, tidewell, on_xfce):
    """A line for each other kind of session, whose programs are all hosted by Xfce's panel."""
    print(f"{'private dirty, kB':36}{'Xfce':>9}{'there':>10}{'ratio':>8}")
    sessions = {}
    if not next(pathlib.Path("/usr").glob(PLASMA_THEME), None):
        print("called Plasma: left out, Plasma's theme is not installed")
    else:
        sessions["called Plasma"] = PLASMA
    if not shutil.which("sway") or not has_loaded(tidewell, "libLayerShellQtInterface"):
        print("Wayland: left out, there is no sway, or the program was built without layer-shell-qt")
    else:
        sessions["Wayland"] = {"DISPLAY": "", "WAYLAND_DISPLAY": start_sway(desktop)}
    for name, environment in sessions.items():
        items = len(desktop.status_items())
        tidewell.send_signal(signal.SIGTERM)
        tidewell.wait()
        wait_for("the item's end", lambda items=items: len(desktop.status_items()) < items)
        tidewell = settled(desktop, program, environment)
        assert has_loaded(tidewell, "/libqwayland") == (name == "Wayland"), "on a wrong display"
        size = memory(tidewell.pid)["private dirty"]
        print(f"{name:36}{on_xfce:9}{size:10}{size / on_xfce:8.2f}   (at most 1.15)")


def measure_hidden(build):
    with (Desktop(host="xfce") as desktop, UpdateServer(build) as updates,
          tempfile.TemporaryDirectory(dir=build) as folder):
        updates.put_feed()
        enable_automatic_checks(desktop)
        loop = desktop.start(str(build / "bin/bare_loop"))
        bare = settled(desktop, build / "bin/bare_tray")
        program = install(build, pathlib.Path(folder), updates)
        tidewell = settled(desktop, program)
        assert updates.asked == ["/feed.xml"], "no check for updates was made"
        baseline, own = memory(bare.pid), memory(tidewell.pid)
        print(f"{'panel closed':36}{'bare':>9}{'Tidewell':>10}{'ratio':>8}")
        for kind, size in own.items():
            limit = "   (at most 1.05)" if kind == "private dirty" else ""
            print(f"{kind + ', kB':36}{baseline[kind]:9}{size:10}"
                  f"{size / baseline[kind]:8.2f}{limit}")
        (least, _), (busy, rate) = costs([loop.pid, tidewell.pid])
        print(f"{'on the processor, ms a minute':36}{least:9.1f}{busy:10.1f}{busy / least:8.2f}"
              "   (at most 1.6)")
        print(f"{'wake-ups a second, all threads':46}{rate:9.2f}{'':8}   (at most 1.2)")
        print_elsewhere(desktop, program, tidewell, own["private dirty"])


def start_other_monitors(desktop):
    """{name: process} of those that are installed."""
    settings = desktop.folder / "conky.conf"
    settings.write_text(TEXT_WINDOW)
    commands = {"conky": ("conky", "-c", str(settings)), "psensor": ("psensor",)}
    started = {}
    for name, command in commands.items():
        if shutil.which(name):
            started[name] = desktop.start(*command, environment={"GSETTINGS_BACKEND": "memory"})
        else:
            print(f"No row of {name}: it is not installed.")
    return started


def keep_changing(file, stop):
    """Other figures every second, of the same length: the program may be reading."""
    for step in range(1_000_000):
        if stop.wait(1):
            return
        text = re.sub(r"^(MemFree|MemAvailable|AnonPages):( *)(\d+)", lambda line: (
            f"{line[1]}:{line[2]}{int(line[3]) + 40_000 * (step % 7):{len(line[3])}}"),
            meminfo("low"), flags=re.MULTILINE)
        with file.open("r+") as figures:
            figures.write(text)


def measure_open(build):
    """Full histories, figures that change every second, and a pointer that rests."""
    with Desktop(host="xfce") as desktop:
        others = start_other_monitors(desktop)
        for name in others:
            wait_for(f"the window of {name}", lambda name=name: desktop.windows("--class", name))
        write_history(desktop, "low", 100)
        figures = desktop.folder / "meminfo"
        figures.write_text(meminfo("low"))
        stop = threading.Event()
        changing = threading.Thread(target=keep_changing, args=(figures, stop))
        changing.start()
        try:
            os.environ["TIDEWELL"] = str(build / "bin/tidewell")
            tidewell = Tidewell(desktop, meminfo=figures)
            if not tidewell.wait_for_start():
                raise DesktopError("mount namespaces are not allowed here")
            tidewell.wait_for_item()
            tidewell.click_item()
            tidewell.wait_for_panel()
            time.sleep(SETTLING)
            processes = others | {"Tidewell, panel open": tidewell.process}
            figures_of_all = costs([each.pid for each in processes.values()])
            print(f"\n{'windows open, in the same minute':36}{'ms a minute':>13}{'wake-ups/s':>12}"
                  f"{'threads':>9}")
            for (name, process), (busy, rate) in zip(processes.items(), figures_of_all):
                print(f"{name:36}{busy:13.1f}{rate:12.2f}{len(spent(process.pid)):9}")
            assert tidewell.panel(), "the panel has closed"
        finally:
            stop.set()
            changing.join()


def main():
    build = pathlib.Path(sys.argv[1]).resolve()
    measure_hidden(build)
    measure_open(build)


if __name__ == "__main__":
    main()
