#!/usr/bin/python3
"""Has the machine sleep and lose its network, as the services of a private system bus tell it, and looks what the built
program does; and what it writes of all that is said to a real server.
"""
import contextlib
import os
import re
import stat
import sys
import unittest

from built_program import write_settings
from gi.repository import Gio, GLib
from shown_program import ShownProgramTest

from private_desktop import run_beside, wait_for

OFFLINE, ONLINE = 20, 70
PATHS = {"login1": "/org/freedesktop/login1", "NetworkManager": "/org/freedesktop/NetworkManager"}


class MachineTest(ShownProgramTest):
    SUBJECTS = ("One",)

    def setUp(self):
        self.stack = contextlib.ExitStack()
        self.addCleanup(self.stack.close)
        bus = run_beside(self.stack, "dbus-daemon", "--session", "--nofork", "--print-address")
        os.environ["DBUS_SYSTEM_BUS_ADDRESS"] = address = bus.stdout.readline().strip()
        flags = Gio.DBusConnectionFlags
        self.bus = Gio.DBusConnection.new_for_address_sync(
            address, flags.AUTHENTICATION_CLIENT | flags.MESSAGE_BUS_CONNECTION, None, None)

    def call(self, name, path, interface, method, arguments=None):
        return self.bus.call_sync(name, path, interface, method, arguments, None, 0, -1, None).unpack()

    def serve(self, template):
        stack = contextlib.ExitStack()
        self.stack.push(stack)
        run_beside(stack, sys.executable, "-m", "dbusmock", "--system", "--template", template)
        service = "org.freedesktop." + {"logind": "login1", "networkmanager": "NetworkManager"}[template]
        wait_for(template, lambda: service in self.call("org.freedesktop.DBus", "/", "org.freedesktop.DBus",
                                                        "ListNames")[0])
        return stack

    def mock(self, service, method, arguments):
        self.call("org.freedesktop." + service, PATHS[service], "org.freedesktop.DBus.Mock", method, arguments)

    def set_network(self, state):
        self.mock("NetworkManager", "SetGlobalConnectionState", GLib.Variant("(u)", (state,)))

    def sleep(self, begins):
        self.mock("login1", "EmitSignal", GLib.Variant("(sssav)", (
            "org.freedesktop.login1.Manager", "PrepareForSleep", "b", [GLib.Variant("b", begins)])))

    def start(self, **options):
        write_settings(self.home, [{"Name": "Work", "Port": self.ports["plain"]}],
                       **{"UseInterval": 1, "Hours": 0, "Minutes": 30, "PlaySound": 0, "FollowMachine": 1} | options)
        super().start()
        self.button("Check All")

    def wait_for_label(self, pattern):
        self.see.wait_for(pattern, lambda: any(re.match(pattern, each.name) for each in
                                               self.see.showing(self.root, self.see.LABELS)))

    def test_a_check_waits_for_the_network(self):
        self.serve("logind")
        for back in (lambda: self.set_network(ONLINE), lambda: manager.close()):
            manager = self.serve("networkmanager")
            self.set_network(OFFLINE)
            self.start(Minutes=0)  # due at once
            self.wait_for_label("Auto Check: Offline$")
            self.wait_for_label("Not Checked$")
            back()
            self.wait_for_label("Checked at: ")
            self.end()
            manager.close()

    def test_a_check_comes_soon_after_sleep(self):
        self.serve("logind")
        self.start()  # it listens before its window shows
        self.wait_for_label("Not Checked$")
        self.sleep(True)
        self.sleep(False)
        self.wait_for_label("Checked at: ")
        self.end()

    def test_without_the_services_it_checks_as_before(self):
        for follows in (0, 1):
            self.start(Minutes=0, FollowMachine=follows)
            self.wait_for_label("Checked at: ")
            self.end()

    def test_the_log_of_a_session(self):
        self.start(UseInterval=0)
        self.key("ctrl+4")
        self.wait_for_focus(self.find(self.see.LISTS, "Sections"))
        self.key("End")
        tick = self.field("Write a protocol log until Velmora ends")
        show = self.button("Show Log")
        self.assertFalse(self.has(show, "SENSITIVE"))
        self.see.click(tick)
        self.see.wait_for("the tick", lambda: self.has(tick, "CHECKED"))
        self.key("ctrl+s")
        self.see.wait_for("the log", lambda: self.has(show, "SENSITIVE"))
        self.key("ctrl+1")
        self.press("Check All")
        self.wait_for_label("Checked at: ")
        self.end()
        log = next(self.home.rglob("protocol.log"))
        self.assertEqual(stat.S_IMODE(log.stat().st_mode), 0o600)
        text = log.read_text()
        for part in ("connecting to 127.0.0.1:", "> USER robin", "> PASS ***", "< +OK Logged in.", "> RETR 1"):
            self.assertRegex(text, r"(?m)^\d{4}-\d\d-\d\d \d\d:\d\d:\d\d\.\d{3} .*" + re.escape(part))
        for private in ("secret", "Text of", "Subject"):
            self.assertNotIn(private, text)


if __name__ == "__main__":
    unittest.main(warnings="ignore")
