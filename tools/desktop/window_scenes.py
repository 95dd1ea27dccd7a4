#!/usr/bin/python3
"""window_scenes.py PROGRAM FOLDER: pictures of the settings, the about window and an update on its
way, in three languages, light and dark, at scale 1 and 2. Prints their paths.
"""

import itertools
import os
import pathlib
import signal
import sys
import tempfile

from desktop import Desktop, wait_for
from installation import Signer, UpdateServer, enable_automatic_checks, install
from program import Tidewell
from screenshots import command_line, photograph

# The locale of each language, and what the item's menu calls the about window.
LANGUAGES = {"english": ("C.UTF-8", "About"), "german": ("de_DE.UTF-8", "Über"),
             "arabic": ("ar_EG.UTF-8", "حول")}
NOTES = """- The **process window** opens at once, however many programs run
- Swap on several disks is counted [once](https://tidewell.example/notes)
- New translations into French, Spanish and Japanese

## If you build it yourself

`cmake --preset release` is all it takes.
"""


def take_window(photographer, tidewell, subject, fits, still=True):
    """A picture of the window whose geometry fits, with its frame. Returns its size."""
    def found():
        return next((each for each in tidewell.windows() if fits(each)), None)
    x, y, width, height = wait_for(f"the window: {subject}", found)
    if still:
        photographer.when_still(tidewell.desktop, (x, y, width, height))
        x, y, width, height = found()
    side, title = 8 * photographer.scale, 32 * photographer.scale
    photographer.take(tidewell.desktop, subject, crop=(
        x - side, y - title, width + 2 * side, height + title + side))
    return width, height


def take_update(photographer, tidewell, server, file):
    """From the settings' button to a file that turns out to be damaged."""
    seen = []

    def picture(subject, **options):
        # Wider than all others, and each time of another height.
        seen.append(take_window(photographer, tidewell, subject, lambda each: (
            each[2] > 450 * photographer.scale and each[2:] not in seen), **options))
    server.held |= {"/feed.xml", file}
    tidewell.desktop.press("shift+Tab", "space")
    picture("checking", still=False)
    server.held.remove("/feed.xml")
    picture("found")
    tidewell.desktop.press("Return")
    picture("download")
    server.held.clear()
    picture("failure")


def take_windows(photographer, language, dark, server, file):
    photographer.appearance = f"{language}-{'dark' if dark else 'light'}"
    locale, about = LANGUAGES[language]
    with Desktop(host="xfce", dark=dark, scale=photographer.scale) as desktop:
        desktop.environment |= {"LC_ALL": locale, "LANGUAGE": locale}
        enable_automatic_checks(desktop)
        tidewell = Tidewell(desktop)
        tidewell.wait_for_item()
        tidewell.choose_from_menu(about)
        seen = [take_window(photographer, tidewell, "about", lambda each: True)]
        desktop.press("Escape")
        tidewell.click_item()
        seen.append(tidewell.wait_for_panel()[2:])
        desktop.press("ctrl+comma")
        take_window(photographer, tidewell, "settings", lambda each: each[2:] not in seen)
        take_update(photographer, tidewell, server, file)
        tidewell.end(signal.SIGTERM)


def take_all(photographer, arguments):
    build = pathlib.Path(arguments.program).resolve().parent.parent
    with tempfile.TemporaryDirectory(dir=build) as name, UpdateServer(build) as server:
        place = pathlib.Path(name)
        signer = Signer(build, place)
        os.environ["TIDEWELL"] = str(install(build, place, server, key=signer.key))
        file, notes = place / "Tidewell-0.2.0.deb", place / "notes.md"
        file.write_bytes(bytes(31457280))
        notes.write_text(NOTES)
        server.put_feed(signer.item("0.2.0", server.address(f"/{file.name}"), file,
                                    "--notes", notes))
        server.files[f"/{file.name}"] = bytes(31457279) + b"!"
        for photographer.scale, language, dark in itertools.product(
                (1, 2), LANGUAGES, (False, True)):
            take_windows(photographer, language, dark, server, f"/{file.name}")


if __name__ == "__main__":
    sys.exit(photograph(command_line(__doc__), take_all))
