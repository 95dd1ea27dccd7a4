"""The words that cases are written in: what a person does on a desktop, and what is to be expected
then. An action is a function of a Trial; so is an expectation, which raises Unmet with what was
seen instead."""

import contextlib
import os
import shutil
import signal
import time

import dbus
from desktop import DesktopError, wait_for
from program import PANEL_SIZE, PROCESS_WINDOW_SIZE, Tidewell
from screens import MIDDLE, Area, differences

IDENTIFIER = "net.tidewell.Tidewell"
# In points of the panel.
FIGURES, GAUGES = (175, 290), (175, 90)
BESIDE_PANEL, ABOVE_PANEL_BOTTOM = 24, 129
# How far from the symbol in the bar, or from the label, the panel may lie, in points.
NEAR = 24
# How long an expectation may take to be met, and how long it then has to last.
PATIENCE, LASTING = 4.0, 0.8
GRANTED = "Notification permission granted."
NOT_SHOWN = "Error showing notification: "


class Unmet(Exception):
    """An expectation that was not met; the text says what was seen."""


class Trial:
    """One run of the program on a desktop."""

    def __init__(self, desktop):
        self.desktop = desktop
        self.other = None  # the Area of another program's window
        self._others = []
        self._notifies = False
        self._item = None

    def __enter__(self):
        shutil.rmtree(self.desktop.home / ".config/tidewell", ignore_errors=True)
        self.desktop.point(*self.desktop.neutral)
        self.bare = self.when_still()
        return self

    def __exit__(self, *_):
        self.desktop.point(*self.desktop.neutral)  # else Waybar keeps the tooltip of an item that goes
        if self._notifies:
            self.desktop.end_to_notify()
        with contextlib.suppress(AttributeError):
            if self.tidewell.process.poll() is None:
                self.tidewell.process.send_signal(signal.SIGTERM)
                self.tidewell.process.wait(10)
        for process in self._others:
            process.kill()
            process.wait()
        deadline = time.monotonic() + 30
        while left := self.changes():
            if time.monotonic() > deadline:
                raise DesktopError(f"this is left behind: {'; '.join(map(str, left))}")
            time.sleep(0.1)

    def start(self):
        """The program runs, and what is to be clicked is there."""
        self._start()
        if self.desktop.hosts_items:
            self.tidewell.wait_for_item()
        self.before = self.bare if self.other is None else self.desktop.picture()
        if not self.desktop.hosts_items:
            wait_for("the label", self.label)

    def _start(self):
        self.tidewell = Tidewell(self.desktop)
        wait_for("the program's bus name", lambda: self.desktop.owner(IDENTIFIER))

    def begin_to_notify(self):
        """The desktop shows notifications in this trial."""
        self._notifies = True
        self.told_before = len(self.desktop.log("notifications"))
        self.desktop.begin_to_notify()
        self.capabilities = self.desktop.notifier_capabilities()  # which starts it

    def start_to_notify(self):
        """The program runs, and will notify of its level a second later."""
        self._start()
        self.tidewell.wait_for_log(GRANTED)

    def notification(self):
        """The Area of a notification, or None."""
        bar = self.desktop.bar
        return next((area for area in differences(self.bare, self.desktop.picture())
                     if area.width > 150 and area.height > 30 and not bar.holds(area)), None)

    def start_other_window(self):
        before = self.desktop.picture()
        process = self.desktop.start_other_window()
        self._others.append(process)
        self.other = wait_for("another window", lambda: next(iter(
            differences(before, self.when_still(), least=(200, 200))), None))
        self.other_process = process.pid

    def changes(self):
        """What differs from the screen before anything was started, the bar apart."""
        found = differences(self.bare, self.desktop.picture())
        bar = self.desktop.bar
        return [area for area in found if not (self.desktop.hosts_items and bar.holds(area))]

    def when_still(self):
        """A picture once two in a row are the same."""
        last = None
        for _ in range(40):
            picture = self.desktop.picture()
            if last is not None and picture.tobytes() == last.tobytes():
                return picture
            last = picture
            time.sleep(0.1)
        raise DesktopError("the screen does not come to rest")

    def areas(self):
        return self.desktop.areas_of(self.tidewell.process.pid, self.before)

    def points(self, *lengths):
        return tuple(round(length * self.desktop.scale) for length in lengths)

    def panel(self):
        """The Area of the open panel, or None. On a low screen it is lower than usual."""
        width, height = self.points(*PANEL_SIZE)
        return next((area for area in self.areas()
                     if abs(area.width - width) <= 2 and height // 2 < area.height <= height + 2),
                    None)

    def process_window(self):
        size = self.points(*PROCESS_WINDOW_SIZE)
        return next((area for area in self.areas() if area.has_size(*size)), None)

    def label(self):
        least, most = self.points(60, 20), self.points(300, 60)
        return next((area for area in self.areas() if least[0] < area.width < most[0]
                     and least[1] < area.height < most[1]), None)

    def has_label_in_bar(self):
        """Whether there is text beside the symbol."""
        bar = self.desktop.bar
        pictures = [picture.crop((bar.x, bar.y, bar.right, bar.bottom))
                    for picture in (self.bare, self.desktop.picture())]
        return any(area.width > self.points(60)[0]
                   for area in differences(*pictures, least=(40, 8)))

    def target(self):
        """The Area of what opens the panel: the item, or the label window without a host."""
        if self.desktop.hosts_items:
            if self.desktop.shows_labels and self._item is None:
                wait_for("the label, which moves it", self.has_label_in_bar, timeout=PATIENCE)
            # Plasma paints it in other colours below the pointer.
            self._item = self.desktop.item() or self._item or wait_for(
                "the item in the bar", self.desktop.item, timeout=PATIENCE)
            return self._item
        return wait_for("the label", self.label, timeout=PATIENCE)

    def seen(self):
        return "; ".join(map(str, self.areas())) or "nothing"


def met(condition, otherwise, patience=PATIENCE):
    """Waits for a true value of `condition()`, or raises Unmet with what `otherwise()` says."""
    deadline = time.monotonic() + patience
    while True:
        value = condition()
        if value:
            return value
        if time.monotonic() > deadline:
            raise Unmet(otherwise())
        time.sleep(0.1)


def lasts(condition, otherwise):
    """`condition()` stays true for a while."""
    deadline = time.monotonic() + LASTING
    while time.monotonic() < deadline:
        if not condition():
            raise Unmet(otherwise())
        time.sleep(0.1)


# -- actions --------------------------------------------------------------------------------------


def start(trial):
    trial.start()


def start_other_window(trial):
    trial.start_other_window()


def notify(trial):
    trial.begin_to_notify()


def start_to_notify(trial):
    """The program runs, and will notify of its level a second later."""
    trial.start_to_notify()


def hang_notifier(trial):
    os.kill(trial.desktop.notifier_process(), signal.SIGSTOP)


def kill_notifier(trial):
    os.kill(trial.desktop.notifier_process(), signal.SIGKILL)


def switch_off(trial):
    """As the desktop's own settings do."""
    trial.desktop.switch_notifications(False)


def act_on_item(trial):
    target = trial.target()
    if trial.desktop.hosts_items:
        trial.desktop.act_on(target)
    else:
        trial.desktop.click(*target.middle)


def click_middle_on_item(trial):
    trial.desktop.click(*trial.target().middle, MIDDLE)


def choose_open(trial):
    """As a host does that shows the item's menu."""
    trial.tidewell.choose_from_menu("Open")


def start_again(trial):
    """The program is started a second time, which asks the first to open."""
    Tidewell(trial.desktop).end()


def open_panel(trial):
    act_on_item(trial)
    met(trial.panel, lambda: f"the panel did not open; seen: {trial.seen()}")


def press(keys):
    def press_keys(trial):
        trial.desktop.press(keys)
    return press_keys


def place_on_other_window(trial):
    """Where the panel does not cover it."""
    panel, other = trial.panel(), trial.other
    is_covered = panel is not None and panel.x < other.x + 60 < panel.right
    return other.right - 60 if is_covered else other.x + 60, other.y + other.height // 2


def click_on_other_window(trial):
    trial.desktop.click(*place_on_other_window(trial))


def cross_other_window(trial):
    """The pointer goes over another window, and rests there."""
    trial.desktop.point(*place_on_other_window(trial))
    time.sleep(LASTING)


def click_on_desktop(trial):
    trial.desktop.click(*trial.desktop.neutral)


def click_on_bar(trial):
    bar = trial.desktop.bar
    trial.desktop.click(bar.x + bar.width // 3, bar.y + bar.height // 2)


def hover_figures(trial):
    panel = trial.panel()
    for place in (GAUGES, FIGURES):
        x, y = trial.points(*place)
        trial.desktop.point(panel.x + x, panel.y + y)


def leave(trial):
    """The pointer goes away from all of the program's windows."""
    trial.desktop.point(*trial.desktop.neutral)


def leave_by_process_window(trial):
    """The pointer goes onto the process window, and away from there."""
    trial.desktop.point(*trial.process_window().middle)
    time.sleep(0.3)
    trial.desktop.point(*trial.desktop.neutral)


def open_and_close_settings(trial):
    before = len(trial.areas())
    trial.desktop.press("ctrl+comma")
    met(lambda: len(trial.areas()) > before, lambda: "the settings did not open")
    time.sleep(0.5)
    trial.desktop.close_window()
    met(lambda: len(trial.areas()) <= before, lambda: f"the settings did not close: {trial.seen()}")
    if trial.desktop.lists_focus:
        met(lambda: trial.desktop.focused() == trial.tidewell.process.pid,
            lambda: "the panel did not get the focus back")


def show_second_workspace(trial):
    trial.desktop.show_workspace(1)
    time.sleep(0.5)


def show_first_workspace(trial):
    trial.desktop.show_workspace(0)
    time.sleep(0.5)


# -- expectations ---------------------------------------------------------------------------------


def symbol_is_in_bar(trial):
    met(trial.desktop.item, lambda: "no symbol of the level's colour is in the bar")


def figure_is_told(trial):
    """In the tooltip's title, which every host shows that shows tooltips, and as a label."""
    def told(name):
        try:
            return trial.tidewell.item_property(name)
        except dbus.DBusException:
            return ""  # there is no such property
    # The label comes a moment after the rest, when the host has read that.
    figure = met(lambda: told("XAyatanaLabel"), lambda: "no label")
    title, spoken = told("ToolTip")[2], told("IconAccessibleDesc")
    if figure not in title or figure not in spoken:
        raise Unmet(f"label '{figure}', tooltip's title '{title}', description '{spoken}'")


def label_is_in_bar(trial):
    """The figure is written beside the symbol, which makes what is new in the bar broader."""
    met(trial.has_label_in_bar, lambda: "there is no text beside the symbol")


def tooltip_is_shown(trial):
    """By the bar, where the pointer rests on the item."""
    trial.desktop.point(*trial.target().middle)
    bar = trial.desktop.bar
    met(lambda: any(not bar.holds(area) and area.gap_to(bar) < 40
                    for area in differences(trial.before, trial.desktop.picture())),
        lambda: "no tooltip came up")


def panel_is_beside_item(trial):
    panel, target = met(trial.panel, lambda: f"no panel; seen: {trial.seen()}"), trial.target()
    screen = Area(0, 0, *trial.desktop.size)
    near = round(NEAR * trial.desktop.scale)
    if panel.gap_to(target) > near or not screen.holds(panel):
        raise Unmet(f"panel {panel}, item {target}: {panel.gap_to(target)} pixels between them")


def panel_stays(trial):
    lasts(trial.panel, lambda: f"the panel closed; seen: {trial.seen()}")


def panel_is_gone(trial):
    met(lambda: not trial.panel(), lambda: f"the panel stays at {trial.panel()}")
    lasts(lambda: not trial.panel(), lambda: f"the panel came back at {trial.panel()}")


def process_window_is_beside_panel(trial):
    window = met(trial.process_window, lambda: f"no process window; seen: {trial.seen()}")
    panel = trial.panel()
    if panel is None:
        raise Unmet(f"the panel closed; seen: {trial.seen()}")
    beside, above = trial.points(BESIDE_PANEL, ABOVE_PANEL_BOTTOM)
    has_room = panel.x - beside >= window.width
    across = window.right - (panel.x - beside) if has_room else window.x - (panel.right + beside)
    if max(abs(across), abs(window.bottom - (panel.bottom - above))) > 2:
        raise Unmet(f"process window {window}, panel {panel}")


def process_window_is_gone(trial):
    met(lambda: not trial.process_window(),
        lambda: f"the process window stays at {trial.process_window()}")


def task_bar_lists_none(trial):
    listed = [title for process, title in trial.desktop.task_bar()
              if process == trial.tidewell.process.pid or "tidewell" in title.lower()]
    if listed:
        raise Unmet(f"the task bar lists {', '.join(listed)}")


def notification_is_shown(trial):
    met(lambda: trial.notification() and GRANTED in trial.tidewell.log(),
        lambda: f"no notification; the log: {trial.tidewell.log()}", patience=2 * PATIENCE)
    if "error" in trial.tidewell.log():
        raise Unmet(f"the log: {trial.tidewell.log()}")


def sound_is_asked_for(trial):
    """Where the daemon has sounds."""
    told = trial.desktop.log("notifications")[trial.told_before:]
    sounds = "sound" in trial.capabilities
    if ('"sound-name"' in told) != sounds:
        raise Unmet(f"sounds are {'' if sounds else 'not '}offered; sent: {told}")


def failure_is_logged(trial):
    met(lambda: NOT_SHOWN in trial.tidewell.log(),
        lambda: f"the log: {trial.tidewell.log()}", patience=4 * PATIENCE)


def is_shown_or_failure_is_logged(trial):
    """Another daemon may come up, or none."""
    met(lambda: NOT_SHOWN in trial.tidewell.log() or trial.notification(),
        lambda: f"the log: {trial.tidewell.log()}", patience=4 * PATIENCE)


def is_denied(trial):
    met(lambda: "Notification permission denied." in trial.tidewell.log()
        and "Notification authorization denied" in trial.tidewell.log(),
        lambda: f"the log: {trial.tidewell.log()}")
    lasts(lambda: not trial.notification(), lambda: "there is a notification")


def program_answers(trial):
    trial.desktop.call(IDENTIFIER, "/", "org.freedesktop.DBus.Peer", "Ping")


def label_is_in_corner(trial):
    label = met(trial.label, lambda: f"no label; seen: {trial.seen()}")
    width, height = trial.desktop.size
    far = round(100 * trial.desktop.scale)
    if width - label.right > far or min(label.y, height - label.bottom) > far:
        raise Unmet(f"the label lies at {label}")


def other_window_has_focus(trial):
    focused = trial.desktop.focused()
    if focused not in (None, trial.other_process):
        raise Unmet(f"process {focused} has the focus")
