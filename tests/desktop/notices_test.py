#!/usr/bin/python3
"""Has the built program show notifications by a service of a private bus that notes what it is told, by one that fails,
and by none at all.

Only the system's own Python has what this needs.
"""
import contextlib
import subprocess
import unittest

from built_program import PROGRAM, write_settings
from gi.repository import Gio, GLib
from shown_program import MAIL, ShownProgramTest

from private_desktop import DOVECOT, open_bus, open_desktop, run_beside

NAME, PATH = "org.freedesktop.Notifications", "/org/freedesktop/Notifications"
BUS_NAME, MOCK, TEMPLATE = "org.freedesktop.DBus", "org.freedesktop.DBus.Mock", "notification_daemon"

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


class NoticesTest(ShownProgramTest):
    SUBJECTS = ("Lunch",)
    open_desktop = staticmethod(open_bare_desktop)

    def begin(self, *logins, **options):
        """With two accounts of one mailbox, and one more for each login."""
        accounts = [{"Name": "Work"}, {"Name": "Home"}, *[{"Name": login, "LoginID": login} for login in logins]]
        write_settings(self.home, [each | {"Port": self.ports["plain"]} for each in accounts],
                       EmailCheckStartUp=1, Hours=0, Minutes=0, **options)
        self.start()

    def serve(self, *words):
        """A service for notifications, until the test ends."""
        run_beside(self.enterContext(contextlib.ExitStack()), "/usr/bin/python3", "-m", "dbusmock", *words)
        self.see.wait_for("the service", lambda: NAME in call(BUS_NAME, "/", BUS_NAME, "ListNames")[0])

    def told(self, method, count=1):
        """The arguments of so many calls of a method, in order."""
        calls = lambda: [noted[2] for noted in call(NAME, PATH, MOCK, "GetCalls")[0] if noted[1] == method]
        return self.see.wait_for(method, lambda: len(found := calls()) >= count and found)

    def choose(self, number, key):
        signal = ("", "ActionInvoked", "us", [GLib.Variant("u", number), GLib.Variant("s", key)])
        call(NAME, PATH, MOCK, "EmitSignal", "(sssav)", *signal)

    def deliver(self, subject):
        mail = self.home / "mail"
        mail.write_bytes(MAIL.format(subject=subject).encode())
        subprocess.run([DOVECOT, "deliver", self.post, "robin", mail], check=True)

    def shows(self, account):
        return any(tab.parent.name.startswith(account) for tab in self.see.showing(self.root, self.see.TABS))

    def test_a_click_opens_the_account(self):
        self.deliver("=?utf-8?q?1_<b>&_=E2=80=AEx=0Ay=E2=80=AA?=")
        self.serve("--template", TEMPLATE, "-p", '{"capabilities": "body body-markup actions"}')
        self.begin(NotifyNew=1)
        name, replaced, icon, summary, body, actions, hints, expiry = self.told("Notify")[0]
        self.assertEqual((name, replaced, icon, expiry), ("Velmora", 0, "Velmora", -1))
        self.assertRegex(summary, "^[2-9] new messages in 2 accounts$")
        self.assertIn("Zoë &lt;zoe@example.org&gt;: 1 &lt;b&gt;&amp; \ufffdx y", body)
        self.assertEqual((actions, hints), (["default", "Show", "1", "Home"], {
            "urgency": 1, "category": "email.arrived", "desktop-entry": "Velmora", "suppress-sound": True}))
        self.see.wait_for("the end of the check", lambda: self.see.is_checked(self.root) and self.shows("Work"))
        for number, key in ((9, "1"), (0, "1"), (1, "01")):
            self.choose(number, key)
        subprocess.run([PROGRAM, "--show"], check=True)  # which it hears behind those
        self.assertTrue(self.shows("Work"))
        self.choose(1, "1")
        self.see.wait_for("the tab", lambda: self.shows("Home"))
        self.end()

    def test_each_kind_has_its_place(self):
        self.serve("--template", TEMPLATE, "-p", '{"capabilities": ""}')
        self.begin("zoe", NotifyNew=1, NotifyFailures=1, UseInterval=1)
        calls = self.told("Notify", 3)
        self.assertEqual([replaced for _, replaced, *_ in calls[:3]], [0, 0, 2])
        self.assertEqual(calls[1][3:6] + [calls[1][6]["urgency"]], ["1 account could not be checked", "", [], 0])
        self.deliver("Dinner")
        self.see.wait_for("the news", lambda: [1, "Velmora", "2 new messages in 2 accounts"] in
                          [noted[1:4] for noted in self.told("Notify")])
        subprocess.run([DOVECOT, "user", self.post, "zoe", "secret"], check=True)
        self.assertEqual(self.told("CloseNotification")[0], [2])
        self.end()

    def test_boxes_come_where_nothing_shows_notifications(self):
        for serve in (lambda: None, lambda: self.serve(NAME, PATH, NAME)):
            serve()
            self.begin("nobody", NotifyNew=1, NotifyFailures=1)
            self.answer("Velmora - Error Establishing Connection", "Account: nobody", "Return", "OK")
            self.end()


if __name__ == "__main__":
    unittest.main(warnings="ignore")
