#!/usr/bin/python3
"""Presses Velmora's button "Check All" and waits until all mailboxes are checked.

It sees what a screen reader sees. Where there are several Pythons, only the
system's own has Debian's python3-pyatspi, hence the fixed path above.
"""

import re
import sys
import time

import gi
import pyatspi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib

START_LIMIT = 30
CHECK_LIMIT = 120


def wait_for(what, condition, limit):
    until = time.monotonic() + limit
    while True:
        try:
            found = condition()
        except GLib.Error:  # the widget went away while it was being looked at
            found = None
        if found:
            return found
        if time.monotonic() > until:
            sys.exit(f"press_check_all: waited in vain for {what}")
        time.sleep(0.1)


def velmora():
    for application in pyatspi.Registry.getDesktop(0):
        if application and application.name == "Velmora":
            # Without events from a main loop, what is remembered would never change.
            application.set_cache_mask(Atspi.Cache.NONE)
            return application
    return None


def showing(root, roles, name=None):
    def matches(each):
        return (
            each.getRole() in roles
            and each.getState().contains(pyatspi.STATE_SHOWING)
            and name in (None, each.name)
        )

    return pyatspi.findAllDescendants(root, matches)


def button(root, name):
    return showing(root, {pyatspi.ROLE_PUSH_BUTTON, pyatspi.ROLE_TOGGLE_BUTTON}, name)


def rows(root):
    roles = {pyatspi.ROLE_TABLE, pyatspi.ROLE_TREE_TABLE, pyatspi.ROLE_TREE, pyatspi.ROLE_LIST}
    return sum(
        each.queryTable().nRows if "Table" in each.get_interfaces() else each.childCount
        for each in showing(root, roles, "Messages")
    )


def checked(root):
    tabs = [each.name for each in showing(root, {pyatspi.ROLE_PAGE_TAB})]
    counted = tabs and all(re.search(r"\(\d+\)$", name) for name in tabs)
    return counted and not button(root, "Stop Retrieval") and rows(root) > 0


def main():
    root = wait_for("Velmora", velmora, START_LIMIT)
    pressed = wait_for('the button "Check All"', lambda: button(root, "Check All"), START_LIMIT)
    pressed[0].queryAction().doAction(0)
    wait_for("the end of the check", lambda: checked(root), CHECK_LIMIT)


main()
