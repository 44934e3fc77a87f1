"""Sees and works a Velmora of the same desktop session as a screen reader does.

Needs Debian's python3-pyatspi, which only the system's own Python has.
"""

import functools

import gi
import private_desktop
import pyatspi
from private_desktop import tell

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib

BUTTONS = {pyatspi.ROLE_PUSH_BUTTON, pyatspi.ROLE_TOGGLE_BUTTON}
LISTS = {pyatspi.ROLE_TABLE, pyatspi.ROLE_TREE_TABLE, pyatspi.ROLE_TREE, pyatspi.ROLE_LIST}
TABS = {pyatspi.ROLE_PAGE_TAB}
FIELDS = {pyatspi.ROLE_TEXT, pyatspi.ROLE_PASSWORD_TEXT, pyatspi.ROLE_CHECK_BOX}
BOXES = {pyatspi.ROLE_COMBO_BOX, pyatspi.ROLE_RADIO_BUTTON, pyatspi.ROLE_SPIN_BUTTON}
LABELS = {pyatspi.ROLE_LABEL}
CLOSED = BUTTONS | LISTS | TABS | FIELDS | LABELS  # nothing in them is looked through


# A widget may go away while it is being looked at.
wait_for = functools.partial(private_desktop.wait_for, forgive=GLib.Error)


def velmora(process=None):
    """The program's root, None while it is not there. One that has just ended may still be listed."""
    for application in pyatspi.Registry.getDesktop(0):
        if application and application.name == "Velmora" and process in (None, application.get_process_id()):
            # Without events from a main loop, what is remembered would never change.
            application.set_cache_mask(Atspi.Cache.NONE)
            return application
    return None


def has(widget, state):
    return widget.getState().contains(state)


def showing(root, roles, name=None):
    """What can be seen of these roles, and of this name where one is given. What is hidden hides all that is in it."""
    found, left = [], [root]
    while left:
        each = left.pop()
        if each is None:
            continue
        role = each.getRole()
        if role != pyatspi.ROLE_APPLICATION and not has(each, pyatspi.STATE_SHOWING):
            continue
        if role in roles and name in (None, each.name):
            found.append(each)
        if role not in CLOSED:
            left.extend(each[i] for i in range(each.childCount))
    return found


def window(root, title):
    """The window of this title, None while it is not there."""
    found = (each for each in root if each and each.name == title and has(each, pyatspi.STATE_SHOWING))
    return next(found, None)


def press(root, name):
    button = wait_for(f'the button "{name}"', lambda: showing(root, BUTTONS, name))[0]
    button.queryAction().doAction(0)


def place(widget):
    """The middle of it, on the screen."""
    box = widget.queryComponent().getExtents(pyatspi.DESKTOP_COORDS)
    return box.x + box.width // 2, box.y + box.height // 2


def click(widget):
    """With the mouse: unlike a screen reader it need not wait for the end of what the click begins."""
    x, y = place(widget)
    tell("xdotool", "mousemove", str(x), str(y), "click", "1")


def messages(root):
    """The list of messages, as a table."""
    return wait_for("the list", lambda: showing(root, LISTS, "Messages"))[0].queryTable()


def is_checked(root):
    """All tabs of accounts show a count, and no check runs."""
    strips = {}
    for tab in showing(root, TABS):
        strips.setdefault(tab.parent.name, []).append(tab.name)
    counted = any(all(name.endswith(")") for name in names) for names in strips.values())
    return counted and not showing(root, BUTTONS, "Stop Retrieval") and messages(root).nRows > 0
