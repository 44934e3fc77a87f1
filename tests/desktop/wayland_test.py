#!/usr/bin/python3
"""Works the built program by the keyboard alone in a session without X11, whose bar hosts the tray."""
import re
import unittest

from ordinary_user import become_ordinary

become_ordinary()
from built_program import PROGRAM, write_settings
from shown_program import ShownProgramTest
from wayland_desktop import open_wayland_desktop, press, shown_windows

from private_desktop import tell, wait_for

RULES = """[Rules]
RuleCount=1
Show=1
Time=30
[Rule1]
Name=Casinos
Enabled=1
Account=All Accounts
Action=2
DescCount=1
Description1=Subject Contains casino\x20
"""
WATCHER = ("org.kde.StatusNotifierWatcher", "/StatusNotifierWatcher")


def call(service, path, method, *arguments):
    return tell("gdbus", "call", "--session", "--dest", service, "--object-path", path, "--method", method, *arguments)


class WaylandTest(ShownProgramTest):
    SUBJECTS = ("Minutes of the meeting", "A casino near you")

    @classmethod
    def open_desktop(cls, stack, home):
        cls.compositor = open_wayland_desktop(stack, home, PROGRAM)

    def key(self, *keys):
        press(*keys)

    def setUp(self):
        write_settings(self.home, [{"Name": "Work", "Port": self.ports["plain"]}])
        data = self.home / "Kestrum" / "Velmora"
        data.mkdir(parents=True, exist_ok=True)
        (data / "Rules.ini").write_text(RULES)
        self.start()
        self.wait_for_window("Velmora")

    def wait_for_keyboard(self, title, kind):
        wanted = {"type": kind, "app_id": "Velmora", "focused": True}
        wait_for(f"{title}, {wanted}", lambda: wanted.items() <= shown_windows().get(title, {}).items())

    def wait_for_window(self, title, kind="con"):
        """A window of its own, or one that floats, has the keyboard."""
        self.wait_for_keyboard(title, kind)
        return self.see.wait_for(title, lambda: self.see.window(self.root, title))

    def wait_for_end_of(self, title):
        wait_for("the end of " + title, lambda: title not in shown_windows())

    def close_to_tray(self):
        press("super+q")
        wait_for("the end of the window", lambda: not shown_windows())

    def tray_icon(self):
        """Where on the bus the tray has found it."""
        icons = call(*WATCHER, "org.freedesktop.DBus.Properties.Get", WATCHER[0], "RegisteredStatusNotifierItems")
        return re.search("'([^/]+)(/[^']+)'", icons)

    def click_tray_icon(self, method):
        """As the tray does."""
        call(*self.tray_icon().groups(), "org.kde.StatusNotifierItem." + method, "0", "0")

    def close(self, title):
        press("Escape")
        wait_for("the end of " + title, lambda: title not in shown_windows())
        self.wait_for_window("Velmora")

    def test_a_check_and_what_it_brings_and_the_way_to_the_tray_and_back(self):
        see = self.see
        self.button("Check All")
        press("F5")
        report, preview = "Velmora - Rule Report Notification", "Velmora - Preview"
        self.wait_for_window(report, "floating_con")
        see.wait_for("the end of the check", lambda: see.is_checked(self.root))
        self.close(report)
        press("Down", "Return")
        window = self.wait_for_window(preview, "floating_con")
        self.assertIn("for every ear", see.showing(window, see.FIELDS, "Body")[0].queryText().getText(0, -1))
        self.close(preview)
        wait_for("the icon", self.tray_icon)
        self.close_to_tray()
        self.click_tray_icon("Activate")
        self.wait_for_window("Velmora")
        self.assertEqual(see.messages(self.root).nRows, 2)
        self.close_to_tray()
        self.click_tray_icon("ContextMenu")
        self.wait_for_keyboard("Velmora", "floating_con")
        press("Down", "Return")  # its first entry
        self.wait_for_window("Velmora")
        for away in (self.close_to_tray, lambda: tell("swaymsg", "workspace", "elsewhere")):
            away()
            press("super+v")
            self.wait_for_window("Velmora")
        tell("swaymsg", "workspace", "farther")
        tell("env", "XDG_ACTIVATION_TOKEN=worthless", PROGRAM, "--show")
        self.wait_for_window("Velmora")
        press("ctrl+q")
        self.expect_end(self.program)


if __name__ == "__main__":
    unittest.main(warnings="ignore")
