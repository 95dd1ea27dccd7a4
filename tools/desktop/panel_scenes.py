#!/usr/bin/python3
"""panel_scenes.py PROGRAM FOLDER [SCENE...]: pictures of the open panel in the states that matter,
or in the named ones only. Prints their paths.
"""

import argparse
import dataclasses
import os
import pathlib
import sys

from desktop import Desktop, DesktopError
from program import Tidewell, meminfo, write_history
from screenshots import Photographer

# Where the pointer goes, in points of the panel.
FIGURES, GAUGES = (175, 290), (175, 90)
SWAP_BAR = (300, 575)
LEFT, MIDDLE, RIGHT = (27, 715), (176, 715), (323, 715)


@dataclasses.dataclass(frozen=True)
class Scene:
    level: str = "low"
    samples: int = 100
    pointer: tuple | None = None
    dark: bool = False
    scale: float = 1
    locale: str = "C.UTF-8"
    size: tuple = (1280, 900)
    notifications: str | None = "xfce4-notifyd"


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
    "history-empty": Scene(samples=0),
    "history-short": Scene(samples=3),
    "scale-one-and-a-half": Scene(scale=1.5),
    "german": Scene(locale="de_DE.UTF-8"),
    "arabic": Scene(locale="ar_EG.UTF-8"),
    "low-screen": Scene(size=(1024, 600)),
}


def photograph(photographer, name, scene):
    photographer.scale = scene.scale
    with Desktop(host="xfce", notifications=scene.notifications, dark=scene.dark,
                 scale=scene.scale, size=scene.size) as desktop:
        desktop.environment["LC_ALL"] = scene.locale
        desktop.environment["LANGUAGE"] = scene.locale
        figures = desktop.folder / "meminfo"
        figures.write_text(meminfo(scene.level))
        write_history(desktop, scene.level, scene.samples)
        tidewell = Tidewell(desktop, meminfo=figures)
        if not tidewell.wait_for_start():
            raise DesktopError("mount namespaces are not allowed here")
        tidewell.wait_for_item()
        tidewell.click_item()
        x, y, width, height = tidewell.wait_for_open_window()
        if scene.pointer:
            desktop.move_pointer(x + scene.scale * scene.pointer[0],
                                 y + scene.scale * scene.pointer[1])
        margin = int(16 * scene.scale)
        left = x - margin if scene.pointer != FIGURES else 0
        photographer.when_still(desktop, (x, y, width, int(150 * scene.scale)))
        print(desktop.picture(photographer.folder / f"{name}.png",
                              crop=(left, 0, desktop.size[0] - left,
                                    min(y + height + margin, desktop.size[1]))), flush=True)


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("program")
    parser.add_argument("folder", type=pathlib.Path)
    parser.add_argument("scene", nargs="*", choices=[[], *SCENES])
    arguments = parser.parse_args()
    os.environ["TIDEWELL"] = str(pathlib.Path(arguments.program).resolve())
    arguments.folder.mkdir(parents=True, exist_ok=True)
    photographer = Photographer(arguments.folder.resolve(), 1)
    try:
        for name in arguments.scene or SCENES:
            photograph(photographer, name, SCENES[name])
    except DesktopError as error:
        print(f"panel_scenes: {error}", file=sys.stderr)
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
