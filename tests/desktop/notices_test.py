#!/usr/bin/python3
"""Has the built program show notifications by a service of a private bus that notes what it is told, by one that fails,
and by none at all.

Only the system's own Python has what this needs.
"""
import contextlib
import json
import subprocess
import unittest

from built_program import write_settings
from gi.repository import Gio, GLib
from shown_program import MAIL, ShownProgramTest

from private_desktop import DOVECOT, open_bus, open_desktop, run_beside

NAME, PATH = "org.freedesktop.Notifications", "/org/freedesktop/Notifications"

# The bus starts nothing but what screen readers need, whatever the machine has.
BUS = """<busconfig><type>session</type><listen>unix:dir={folder}</listen><servicedir>{folder}</servicedir>
<policy context="default"><allow send_destination="*" eavesdrop="true"/><allow eavesdrop="true"/><allow own="*"/></policy>
</busconfig>"""


def open_bare_desktop(stack, home):
    open_desktop(stack, home)
    folder = home / "services"
    folder.mkdir()
    (folder / "org.a11y.Bus.service").symlink_to("/usr/share/dbus-1/services/org.a11y.Bus.service")
    (home / "bus.conf").write_text(BUS.format(folder=folder))
    open_bus(stack, f"--config-file={home / 'bus.conf'}")


def call(name, path, interface, method, types="()", *arguments):
    bus = Gio.bus_get_sync(Gio.BusType.SESSION)
    return bus.call_sync(name, path, interface, method, GLib.Variant(types, arguments), None, 0, -1, None).unpack()


def ask_bus(method, *arguments):
    return call("org.freedesktop.DBus", "/", "org.freedesktop.DBus", method, *arguments)[0]


class NoticesTest(ShownProgramTest):
    SUBJECTS = ("Lunch",)
    open_desktop = staticmethod(open_bare_desktop)

    def begin(self, *logins, **options):
        """With two accounts of one mailbox, and one more for each login."""
        accounts = [{"Name": name, "Port": self.ports["plain"]} for name in ("Work", "Home", *logins)]
        for account, login in zip(accounts[2:], logins):
            account["LoginID"] = login
        write_settings(self.home, accounts, EmailCheckStartUp=1, Hours=0, Minutes=0, **options)
        self.start()

    def serve(self, *words):
        """A service for notifications, until the test ends."""
        beside = contextlib.ExitStack()
        self.addCleanup(beside.close)
        run_beside(beside, "/usr/bin/python3", "-m", "dbusmock", *words)
        self.see.wait_for("the service", lambda: ask_bus("NameHasOwner", "(s)", NAME))

    def serve_well(self, capabilities):
        self.serve("--template", "notification_daemon", "-p", json.dumps({"capabilities": capabilities}))

    def told(self, method, condition=bool):
        """The arguments of the calls of a method, in order, once they are as they should be."""
        def calls():
            noted = call(NAME, PATH, "org.freedesktop.DBus.Mock", "GetCalls")[0]
            found = [arguments for _, name, arguments in noted if name == method]
            return condition(found) and found
        return self.see.wait_for(method, calls)

    def choose(self, number, key):
        signal = ("", "ActionInvoked", "us", [GLib.Variant("u", number), GLib.Variant("s", key)])
        call(NAME, PATH, "org.freedesktop.DBus.Mock", "EmitSignal", "(sssav)", *signal)

    def wait_until_heard(self):
        """The program hears one thing after the other."""
        name = next(name for name in ask_bus("ListNames") if ".On" in name)
        path = "/" + name.rpartition(".On")[0].replace(".", "/").replace("-", "_")
        call(name, path, "org.freedesktop.Application", "Activate", "(a{sv})", {})

    def deliver(self, subject):
        mail = self.home / "mail"
        mail.write_bytes(MAIL.format(subject=subject).encode())
        subprocess.run([DOVECOT, "deliver", self.post, "robin", mail], check=True)

    def shows(self, account):
        return any(tab.parent.name.startswith(account) for tab in self.see.showing(self.root, self.see.TABS))

    def test_a_click_opens_the_account(self):
        self.deliver("=?utf-8?q?1_<b>&_=E2=80=AEx=0Ay=E2=80=AA?=")
        self.serve_well("body body-markup actions")
        self.begin(NotifyNew=1)
        name, replaced, icon, summary, body, actions, hints, expiry = self.told("Notify")[0]
        self.assertEqual((name, replaced, icon, expiry), ("Velmora", 0, "Velmora", -1))
        self.assertRegex(summary, "^[2-9] new messages in 2 accounts$")
        self.assertEqual(len(body.split("\n")), 5)
        self.assertIn("Zoë &lt;zoe@example.org&gt;: 1 &lt;b&gt;&amp; \ufffdx y", body)
        self.assertEqual(actions, ["default", "Show", "1", "Home"])
        self.assertEqual(hints, {"urgency": 1, "category": "email.arrived", "desktop-entry": "Velmora",
                                 "suppress-sound": True})
        self.see.wait_for("the end of the check", lambda: self.see.is_checked(self.root) and self.shows("Work"))
        for number, key in ((9, "1"), (0, "1"), (1, "01")):
            self.choose(number, key)
        self.wait_until_heard()
        self.assertTrue(self.shows("Work"))
        self.choose(1, "1")
        self.see.wait_for("the tab", lambda: self.shows("Home"))
        self.end()

    def test_each_kind_has_its_place(self):
        self.serve_well("")
        self.begin("zoe", NotifyNew=1, NotifyFailures=1, UseInterval=1)
        first, *others = self.told("Notify", lambda calls: len(calls) > 2)
        self.assertEqual((first[1], others[0][1], others[1][1]), (0, 0, 2))
        self.assertEqual(others[0][3:7], ["1 account could not be checked", "", [], {
            "urgency": 0, "category": "network.error", "desktop-entry": "Velmora", "suppress-sound": True}])
        self.deliver("Dinner")
        self.told("Notify", lambda calls: (1, "2 new messages in 2 accounts") in [(each[1], each[3]) for each in calls])
        subprocess.run([DOVECOT, "user", self.post, "zoe", "secret"], check=True)
        self.assertEqual(self.told("CloseNotification")[0], [2])
        self.end()

    def test_boxes_come_where_nothing_shows_notifications(self):
        for service in ([], [NAME, PATH, NAME]):
            if service:
                self.serve(*service)
            self.begin("nobody", NotifyNew=1, NotifyFailures=1)
            self.answer("Velmora - Error Establishing Connection", "Account: nobody", "Return", "OK")
            self.end()


if __name__ == "__main__":
    unittest.main(warnings="ignore")
