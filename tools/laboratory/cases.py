"""What has to be right on every desktop: each case is what is done, and what is expected then."""

import dataclasses

from trial import (act_on_item, choose_open, click_middle_on_item, click_on_bar, click_on_desktop,
                   click_on_other_window, cross_other_window, failure_is_logged, figure_is_told,
                   hang_notifier, hover_figures, is_denied, is_shown_or_failure_is_logged,
                   kill_notifier, label_is_in_bar, label_is_in_corner, leave,
                   leave_by_process_window, notification_is_shown, notify,
                   open_and_close_settings, open_panel, other_window_has_focus,
                   panel_is_beside_item, panel_is_gone, panel_stays, press,
                   process_window_is_beside_panel, process_window_is_gone, program_answers,
                   show_first_workspace, show_second_workspace, sound_is_asked_for, start,
                   start_again, start_other_window, start_to_notify, switch_off, symbol_is_in_bar,
                   task_bar_lists_none, tooltip_is_shown)

COLUMNS = ("Item", "Panel", "Closes", "Process window", "Task bar", "Label", "Notifications")


@dataclasses.dataclass(frozen=True)
class Case:
    column: str
    name: str
    steps: tuple
    where: object = lambda desktop: True  # on which desktops


def hosted(desktop):
    return desktop.hosts_items


def unhosted(desktop):
    return not desktop.hosts_items


def shows_tooltips(desktop):
    return desktop.hosts_items and desktop.shows_tooltips


def shows_labels(desktop):
    return desktop.hosts_items and desktop.shows_labels


def has_bar(desktop):
    return desktop.bar is not None


def notifies(desktop):
    return desktop.notifies and desktop.hosts_items


def outlives_notifier(desktop):
    return notifies(desktop) and desktop.outlives_notifier


def has_notification_switch(desktop):
    return notifies(desktop) and desktop.has_notification_switch


def has_workspaces(desktop):
    return unhosted(desktop) and desktop.workspaces > 1


CASES = (
    Case("Item", "symbol", (start, symbol_is_in_bar), hosted),
    Case("Item", "figure", (start, figure_is_told), hosted),
    Case("Item", "label", (start, label_is_in_bar), shows_labels),
    Case("Item", "tooltip", (start, tooltip_is_shown), shows_tooltips),

    Case("Panel", "beside the item", (start, open_panel, panel_is_beside_item, panel_stays)),
    Case("Panel", "over another window",
         (start_other_window, start, open_panel, panel_is_beside_item, panel_stays)),
    Case("Panel", "by the middle button", (start, click_middle_on_item, panel_is_beside_item),
         hosted),
    Case("Panel", "by the menu's Open",
         (start, open_panel, press("Escape"), panel_is_gone, choose_open, panel_is_beside_item),
         hosted),
    Case("Panel", "by a second start", (start, start_again, panel_is_beside_item)),

    Case("Closes", "Escape", (start, open_panel, press("Escape"), panel_is_gone)),
    Case("Closes", "second action", (start, open_panel, act_on_item, panel_is_gone)),
    Case("Closes", "click on another window",
         (start_other_window, start, open_panel, click_on_other_window, panel_is_gone)),
    Case("Closes", "click on the desktop", (start, open_panel, click_on_desktop, panel_is_gone)),
    Case("Closes", "click on the bar", (start, open_panel, click_on_bar, panel_is_gone), has_bar),
    Case("Closes", "not by crossing",
         (start_other_window, start, open_panel, cross_other_window, panel_stays)),
    Case("Closes", "Escape after the process window",
         (start, open_panel, hover_figures, process_window_is_beside_panel, leave,
          process_window_is_gone, press("Escape"), panel_is_gone)),
    Case("Closes", "click after the process window",
         (start_other_window, start, open_panel, hover_figures, process_window_is_beside_panel,
          leave, process_window_is_gone, click_on_other_window, panel_is_gone)),
    Case("Closes", "Escape after the settings",
         (start, open_panel, open_and_close_settings, press("Escape"), panel_is_gone)),

    Case("Process window", "left of the panel",
         (start, open_panel, hover_figures, process_window_is_beside_panel)),
    Case("Process window", "goes with the pointer",
         (start, open_panel, hover_figures, process_window_is_beside_panel, leave,
          process_window_is_gone, panel_stays)),
    Case("Process window", "goes with the pointer from itself",
         (start, open_panel, hover_figures, process_window_is_beside_panel,
          leave_by_process_window, process_window_is_gone, panel_stays)),

    Case("Task bar", "lists none",
         (start, open_panel, hover_figures, process_window_is_beside_panel, task_bar_lists_none)),

    Case("Label", "in its corner", (start, label_is_in_corner), unhosted),
    Case("Label", "takes no focus",
         (start_other_window, start, label_is_in_corner, other_window_has_focus), unhosted),
    Case("Label", "on all workspaces",
         (start, label_is_in_corner, show_second_workspace, label_is_in_corner, open_panel,
          panel_is_beside_item, press("Escape"), panel_is_gone, show_first_workspace,
          label_is_in_corner), has_workspaces),
    Case("Label", "in no task bar", (start, label_is_in_corner, task_bar_lists_none), unhosted),

    Case("Notifications", "shown",
         (notify, start_to_notify, notification_is_shown, sound_is_asked_for), notifies),
    Case("Notifications", "switched off", (notify, switch_off, start, is_denied),
         has_notification_switch),
    Case("Notifications", "hanging daemon",
         (notify, start_to_notify, hang_notifier, failure_is_logged, program_answers), notifies),
    Case("Notifications", "dying daemon",
         (notify, start_to_notify, kill_notifier, is_shown_or_failure_is_logged, program_answers),
         outlives_notifier),
)
