#!/usr/bin/python3
"""reader_walk.py PROGRAM: goes through the whole program with the keyboard alone, and prints at each
step what has the focus then, as the accessibility bus tells it to screen readers: the walk of
docs/accessibility.md.
"""

import os
import pathlib
import sys
import time

import dbus
from accessibility import ACCESSIBLE, CHECKED, ENABLED, SHOWING, ScreenReader
from desktop import Desktop, DesktopError, wait_for
from program import Tidewell, meminfo, write_history

VALUE = "org.a11y.atspi.Value"
WITH_STATE = ("check box",)
WITH_VALUE = ("slider", "progress bar")


class Walk:
    def __init__(self, desktop, tidewell):
        self.desktop, self.tidewell = desktop, tidewell
        self.reader = ScreenReader(desktop)

    def spoken(self, node):
        """The node's words in the order in which readers say them."""
        role, words = self.reader.role(node), [self.reader.name(node)]
        if role in WITH_STATE:
            words.append("checked" if self.reader.is_in_state(node, CHECKED) else "not checked")
        if role in WITH_VALUE:
            words.append(f"{float(self.reader.property(node, VALUE, 'CurrentValue')):g}")
        if not self.reader.is_in_state(node, ENABLED):
            words.append("disabled")
        words.append(str(self.reader.property(node, ACCESSIBLE, "Description")))
        return f"{role}: " + "; ".join(word.replace("\n", ", ") for word in words if word)

    def focus(self):
        """What has the focus once it has come to rest."""
        seen = []

        def at_rest():
            try:
                seen.append(self.reader.focused())
            except dbus.DBusException:  # gone meanwhile
                seen.append(None)
            return seen[-1] if seen[-1] and seen[-1] == (seen[-2:-1] or [None])[0] else None
        return self.spoken(wait_for("a focus", at_rest))

    def press(self, key, times=1):
        for _ in range(times):
            self.desktop.press(key)
            time.sleep(0.3)  # as a person does, who listens
            print(f"| {key} | {self.focus()} |", flush=True)

    def tab_around(self):
        """By Tab through a window until it begins anew."""
        seen = []
        while True:
            self.desktop.press("Tab")
            time.sleep(0.3)
            now = self.focus()
            if now in seen:
                return
            seen.append(now)
            print(f"| Tab | {now} |", flush=True)

    def read_all(self, node, depth=0):
        """What a reader finds that goes from object to object."""
        for child in self.reader.children(node):
            if not self.reader.is_in_state(child, SHOWING) and depth > 0:
                continue
            role = self.reader.role(child)
            is_silent = role in ("filler", "layered pane")
            if not is_silent:
                print("    " * depth + "- " + self.spoken(child), flush=True)
            if role != "list":
                self.read_all(child, depth + (0 if is_silent else 1))


def go(walk):
    print("From object to object:\n")
    walk.read_all(walk.reader.programs())
    print("\nBy keyboard:\n\n| Key | What is read |\n|---|---|", flush=True)
    walk.tab_around()  # and is at the first button again
    walk.press("Tab", 3)
    walk.press("Down", 3)
    walk.press("End")
    walk.press("Return")  # the process window
    walk.press("Down", 2)
    walk.press("Escape")
    walk.press("Tab")
    walk.press("Left", 2)
    walk.press("Tab")
    walk.press("Left")
    walk.press("Home")
    walk.press("Right")
    walk.press("Escape")
    walk.press("ctrl+comma")
    walk.tab_around()
    walk.press("Tab")
    walk.press("space")
    walk.press("Tab", 2)
    walk.press("Left")
    walk.press("Escape")
    walk.press("shift+Tab", 5)
    walk.press("Return")  # about
    walk.press("Escape")
    walk.press("ctrl+q")
    walk.press("Tab")
    walk.press("Escape")
    walk.desktop.press("ctrl+q")
    wait_for("the question", walk.tidewell.question)
    walk.desktop.press("Return")
    print(f"\nThe program has ended with the status {walk.tidewell.end()}.")


def main():
    os.environ["TIDEWELL"] = str(pathlib.Path(sys.argv[1]).resolve())
    with Desktop(host="xfce", notifications="xfce4-notifyd") as desktop:
        figures = desktop.folder / "meminfo"
        figures.write_text(meminfo("warn"))
        write_history(desktop, "warn", 20)
        tidewell = Tidewell(desktop, meminfo=figures)
        walk = Walk(desktop, tidewell)
        if not tidewell.wait_for_start():
            raise DesktopError("mount namespaces are not allowed here")
        tidewell.wait_for_item()
        tidewell.choose_from_menu("Open")
        tidewell.wait_for_panel()
        go(walk)
    return 0


if __name__ == "__main__":
    sys.exit(main())
