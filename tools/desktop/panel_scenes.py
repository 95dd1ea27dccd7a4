#!/usr/bin/python3
"""panel_scenes.py PROGRAM FOLDER [SCENE...]: pictures of the open panel in the states that matter,
or in the named ones only. Prints their paths. Under `unshare --pid --fork --mount-proc` the process
window shows the desktop's own processes alone.
"""

import dataclasses
import subprocess
import sys

import dbus
from desktop import Desktop, DesktopError, wait_for
from program import ITEM, Tidewell, meminfo, write_history
from screenshots import command_line, photograph

# Where the pointer goes, in points of the panel; TIP goes on to a row of the process window.
FIGURES, GAUGES = (175, 290), (175, 90)
SWAP_BAR = (300, 575)
LEFT, MIDDLE, RIGHT = (27, 715), (176, 715), (323, 715)


# Name, icon and mebibytes of programs to look at.
APPLICATIONS = (
    ("Web Browser", "web-browser", 84), ("Mail", "mail-unread", 78),
    ("Files", "system-file-manager", 48), ("Terminal", "utilities-terminal", 32),
    ("Photos and Pictures of the Family, Including Those that Nobody Has Yet Sorted by Year",
     "emblem-photos", 71), ("Text Editor", "accessories-text-editor", 29),
    ("Music", "multimedia-player", 44), ("Calculator", "accessories-calculator", 15),
    ("Calendar", "appointment-new", 23), ("Dictionary", "accessories-dictionary", 13),
    ("Software", "system-software-install", 60), ("Characters", "accessories-character-map", 12),
    ("Screenshot", "applets-screenshooter", 11), ("Help", "help-browser", 20),
    ("Ledger", "no-such-icon", 17), ("Passwords", "dialog-password", 14),
    ("الخرائط", "mark-location", 26), ("日本語入力", "preferences-desktop-locale", 16),
)
CHILDREN = 12  # of the first one
# Mebibytes that the program is told to be in swap.
SWAPPED = {"Web Browser": 612, "Mail": 171, "Calendar": 90}
SHARES = "Rss: {0} kB\nPss: {0} kB\nPss_Anon: {0} kB\nAnonymous: {0} kB\nSwapPss: {1} kB\n"
APPLICATION = """import os, sys, time
memory = bytearray(b'x') * (int(sys.argv[1]) << 20)
for child in range(int(sys.argv[2])):
    if os.fork() == 0:
        break
time.sleep(300)
"""
ENTRY = "[Desktop Entry]\nType=Application\nName={}\nIcon={}\nExec=/usr/bin/python3 {} %F\n"


@dataclasses.dataclass(frozen=True)
class Scene:
    level: str = "low"
    samples: int = 100
    pointer: tuple | None = None
    dark: bool = False
    contrast: bool = False
    scale: float = 1
    locale: str = "C.UTF-8"
    size: tuple = (1280, 960)  # the alerts at its lower edge are not in the pictures
    notifications: str | None = "xfce4-notifyd"
    applications: bool = False
    font: str = "Inter 10"
    tip: int | None = None  # the row of the process window at which the pointer rests
    item_left: bool = False


PROCESSES = Scene(level="none", pointer=FIGURES, applications=True)
SCENES = {
    "panel-light": Scene(scale=2),
    "panel-dark": Scene(scale=2, dark=True),
    "no-swap": Scene(level="none"),
    "no-swap-dark": Scene(level="none", dark=True),
    "warn": Scene(level="warn"),
    "high": Scene(level="high", dark=True),
    "prompt": Scene(notifications=None),
    "prompt-dark": Scene(notifications=None, dark=True),
    "hover-left": Scene(pointer=LEFT),
    "hover-middle": Scene(pointer=MIDDLE, dark=True),
    "hover-right": Scene(pointer=RIGHT, scale=2),
    "hover-swap": Scene(pointer=SWAP_BAR, scale=2),
    "hover-figures": Scene(pointer=FIGURES, scale=2),
    "hover-figures-dark": Scene(pointer=FIGURES, dark=True),
    "processes": PROCESSES,
    "processes-dark": dataclasses.replace(PROCESSES, dark=True),
    "processes-2x": dataclasses.replace(PROCESSES, scale=2),
    "processes-dark-2x": dataclasses.replace(PROCESSES, dark=True, scale=2),
    "processes-arabic": dataclasses.replace(PROCESSES, locale="ar_EG.UTF-8"),
    "processes-swap": dataclasses.replace(PROCESSES, level="low", tip=0),
    "processes-swap-dark": dataclasses.replace(PROCESSES, level="warn", tip=0, dark=True),
    "processes-swap-arabic": dataclasses.replace(PROCESSES, level="high", tip=2,
                                                 locale="ar_EG.UTF-8"),
    "processes-right": dataclasses.replace(PROCESSES, level="low", item_left=True),
    "history-empty": Scene(samples=0),
    "history-short": Scene(samples=3),
    "scale-one-and-a-half": Scene(scale=1.5),
    "german": Scene(locale="de_DE.UTF-8"),
    "arabic": Scene(locale="ar_EG.UTF-8"),
    "japanese": Scene(locale="ja_JP.UTF-8", font="IPAPGothic 10"),
    "hindi": Scene(locale="hi_IN.UTF-8", font="Lohit Devanagari 10"),
    "thai": Scene(locale="th_TH.UTF-8", font="Loma 10"),
    "contrast-light": Scene(level="warn", contrast=True, scale=2),
    "contrast-dark": Scene(level="warn", contrast=True, dark=True, scale=2),
    "contrast-processes": dataclasses.replace(PROCESSES, contrast=True),
    "contrast-prompt": Scene(notifications=None, contrast=True, dark=True),
    "scale-one-and-a-quarter": Scene(scale=1.25),
    "large-font": Scene(font="Inter 20", notifications=None),
    "large-font-german": Scene(font="Inter 20", locale="de_DE.UTF-8"),
    "low-screen": Scene(size=(1024, 600)),
    "laptop-screen": Scene(size=(1366, 768)),
    "half-of-1080": Scene(size=(960, 540), scale=2),
}


# How the four levels look to those who lack a kind of cone: Machado, Oliveira and Fernandes, 2009, of
# linear red, green and blue.
COLOUR_BLIND = {
    "protanopia": "0.152286 1.052583 -0.204868 0.114503 0.786281 0.099216 "
                  "-0.003882 -0.048116 1.051998",
    "deuteranopia": "0.367322 0.860646 -0.227968 0.280085 0.672501 0.047413 "
                    "-0.011820 0.042940 0.968881",
    "tritanopia": "1.255528 -0.076749 -0.178779 -0.078411 0.930809 0.147602 "
                  "0.004733 0.691367 0.303900",
}


def start_applications(desktop):
    """Files that tell of the applications' memory, by the paths where they are read."""
    files = {}
    entries = desktop.folder / "data/applications"
    entries.mkdir()
    for number, (name, icon, mebibytes) in enumerate(APPLICATIONS):
        program = desktop.folder / f"application-{number}.py"
        program.write_text(APPLICATION)
        (entries / f"application-{number}.desktop").write_text(ENTRY.format(name, icon, program))
        children = CHILDREN if number == 0 else 0
        process = desktop.start("/usr/bin/python3", str(program), str(mebibytes), str(children),
                                name="application")
        if name in SWAPPED:
            shares = desktop.folder / f"shares-{number}"
            shares.write_text(SHARES.format(mebibytes << 10, SWAPPED[name] << 10))
            files[f"/proc/{process.pid}/smaps_rollup"] = shares
    return files


def open_panel(tidewell, item_left):
    if item_left:
        tidewell.desktop.move_pointer(60, 12)
        tidewell.desktop.call(*tidewell.item, ITEM, "Activate", dbus.Int32(60), dbus.Int32(12),
                              signature="ii")
    else:
        tidewell.click_item()
    return tidewell.wait_for_open_window()


def take_scene(photographer, name, scene):
    photographer.scale = scene.scale
    with Desktop(host="xfce", notifications=scene.notifications, dark=scene.dark,
                 contrast=scene.contrast, scale=scene.scale, size=scene.size,
                 font=scene.font) as desktop:
        # Alerts come up at the lower left, out of the picture and of the item's way.
        desktop.call("org.xfce.Xfconf", "/org/xfce/Xfconf", "org.xfce.Xfconf", "SetProperty",
                     "xfce4-notifyd", "/notify-location", dbus.UInt32(1), signature="ssv")
        desktop.environment["LC_ALL"] = scene.locale
        desktop.environment["LANGUAGE"] = scene.locale
        figures = desktop.folder / "meminfo"
        figures.write_text(meminfo(scene.level))
        write_history(desktop, scene.level, scene.samples)
        files = start_applications(desktop) if scene.applications else {}
        tidewell = Tidewell(desktop, meminfo=figures,
                            files=files if scene.level != "none" else {})
        if not tidewell.wait_for_start():
            raise DesktopError("mount namespaces are not allowed here")
        tidewell.wait_for_item()
        x, y, width, height = open_panel(tidewell, scene.item_left)
        if scene.pointer:
            desktop.move_pointer(x + scene.scale * scene.pointer[0],
                                 y + scene.scale * scene.pointer[1])
        if scene.pointer == FIGURES:
            window = wait_for("the process window", tidewell.process_window)
            photographer.when_still(desktop, window)
            if scene.tip is not None:
                desktop.move_pointer(window[0] + 120, window[1] + 62 + 22 * scene.tip)
                wait_for("the tip", lambda: any(
                    each[:2] != window[:2] and each[2] < width for each in tidewell.windows()))
        margin = int(16 * scene.scale)
        left = x - margin if scene.pointer != FIGURES else 0
        photographer.when_still(desktop, (x, y, width, int(150 * scene.scale)))
        return desktop.picture(photographer.folder / f"{name}.png",
                               crop=(left, 0, desktop.size[0] - left,
                                     min(y + height + margin, desktop.size[1])))


def take_levels(photographer, name):
    """The four levels side by side, as they are seen with that colour blindness."""
    levels = [take_scene(photographer, f"level-{level}",
                         Scene(level=level, notifications=None))  # no alerts on it
              for level in ("none", "low", "warn", "high")]
    picture = photographer.folder / f"{name}.png"
    subprocess.run(["convert", *map(str, levels), "+append", "-colorspace", "RGB",
                    "-color-matrix", COLOUR_BLIND[name], "-colorspace", "sRGB", str(picture)],
                   check=True)
    return picture


def take_scenes(photographer, arguments):
    for name in arguments.scene or (*SCENES, *COLOUR_BLIND):
        print(take_scene(photographer, name, SCENES[name]) if name in SCENES
              else take_levels(photographer, name), flush=True)


def main():
    parser = command_line(__doc__)
    parser.add_argument("scene", nargs="*", choices=[[], *SCENES, *COLOUR_BLIND])
    return photograph(parser, take_scenes)


if __name__ == "__main__":
    sys.exit(main())
