#!/usr/bin/python3
"""Has the built program show notifications by a service of a private bus that notes what it is told, by one that fails,
and by none at all.

Only the system's own Python has what this needs.
"""
import contextlib
import json
import socketserver
import subprocess
import threading
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


class EmptyMailbox(socketserver.StreamRequestHandler):
    def handle(self):
        self.wfile.write(b"+OK\r\n")
        for line in self.rfile:
            self.wfile.write(b"-ERR\r\n" if line.startswith(b"CAPA") else b"+OK 0 0\r\n")


class NoticesTest(ShownProgramTest):
    SUBJECTS = ("Lunch",)
    open_desktop = staticmethod(open_bare_desktop)

    def begin(self, *accounts, **options):
        known = {"Work": self.ports["plain"], "Home": self.ports["plain"]} | dict(accounts)
        write_settings(self.home, [{"Name": name, "Port": port} for name, port in known.items()], EmailCheckStartUp=1,
                       Hours=0, Minutes=0, **options)
        self.start()

    def serve(self, *words):
        """A service for notifications, until the test ends."""
        beside = contextlib.ExitStack()
        self.addCleanup(beside.close)
        run_beside(beside, "/usr/bin/python3", "-m", "dbusmock", *words)
        self.bus = Gio.bus_get_sync(Gio.BusType.SESSION)
        asked = GLib.Variant("(s)", (NAME,))
        self.see.wait_for("the service", lambda: self.bus.call_sync(
            "org.freedesktop.DBus", "/", "org.freedesktop.DBus", "NameHasOwner", asked, None, 0, -1, None).unpack()[0])

    def serve_well(self, capabilities):
        self.serve("--template", "notification_daemon", "-p", json.dumps({"capabilities": capabilities}))

    def told(self, method, count=1):
        """The arguments of so many calls of a method, in order."""
        def calls():
            all_calls = self.bus.call_sync(NAME, PATH, "org.freedesktop.DBus.Mock", "GetCalls", None, None, 0, -1, None)
            found = [arguments for _, name, arguments in all_calls.unpack()[0] if name == method]
            return len(found) >= count and found
        return self.see.wait_for(f"{method}, {count} times", calls)

    def choose(self, number, key):
        signal = GLib.Variant("(sssav)", ("", "ActionInvoked", "us", [GLib.Variant("u", number), GLib.Variant("s", key)]))
        self.bus.call_sync(NAME, PATH, "org.freedesktop.DBus.Mock", "EmitSignal", signal, None, 0, -1, None)

    def wait_until_heard(self):
        """The program hears one thing after the other."""
        names = self.bus.call_sync("org.freedesktop.DBus", "/", "org.freedesktop.DBus", "ListNames", None, None, 0, -1, None)
        name = next(name for name in names.unpack()[0] if ".On" in name)
        path = "/" + name.rpartition(".On")[0].replace(".", "/").replace("-", "_")
        self.bus.call_sync(name, path, "org.freedesktop.Application", "Activate", GLib.Variant("(a{sv})", ({},)), None, 0, -1, None)

    def deliver(self, subject):
        mail = self.home / "mail"
        mail.write_bytes(MAIL.format(subject=subject).encode())
        subprocess.run([DOVECOT, "deliver", self.post, "robin", mail], check=True)

    def is_selected(self, account):
        return any(tab.parent.name.startswith(account) for tab in self.see.showing(self.root, self.see.TABS))

    def test_a_click_opens_the_account(self):
        self.deliver("=?utf-8?q?1_<b>&_=E2=80=AEx=0Ay=E2=80=AA?=")
        self.serve_well("body body-markup actions")
        self.begin(NotifyNew=1)
        name, replaced, icon, summary, body, actions, hints, expiry = self.told("Notify")[0]
        self.assertEqual((name, replaced, icon, expiry), ("Velmora", 0, "Velmora", -1))
        count = summary.split()[0]
        self.assertRegex(summary, "^[2-9] new messages in 2 accounts$")
        self.assertEqual(len(body.split("\n")), 5)
        self.assertIn("Zoë &lt;zoe@example.org&gt;: 1 &lt;b&gt;&amp; \ufffdx y", body)
        self.assertEqual(actions, ["default", "Show", "1", "Home"])
        self.assertEqual(hints, {"urgency": 1, "category": "email.arrived", "desktop-entry": "Velmora",
                                 "suppress-sound": True})
        self.see.wait_for("the end of the check", lambda: self.see.is_checked(self.root) and self.is_selected("Work"))
        for number, key in ((9, "1"), (0, "1"), (1, "01")):
            self.choose(number, key)
        self.wait_until_heard()
        self.assertTrue(self.is_selected("Work"))
        self.choose(1, "1")
        self.see.wait_for("the tab", lambda: self.is_selected("Home"))
        self.end()

    def test_each_kind_has_its_place(self):
        self.serve_well("")
        server = socketserver.ThreadingTCPServer(("127.0.0.1", 0), EmptyMailbox, bind_and_activate=False)
        server.server_bind()  # and refuses whoever connects
        self.addCleanup(server.server_close)
        self.begin(("Gone", server.server_address[1]), NotifyNew=1, NotifyFailures=1, UseInterval=1)
        places = [(summary, replaced) for _, replaced, _, summary, *_ in self.told("Notify", 3)[:3]]
        self.assertRegex(places[0][0], "new messages in 2 accounts$")
        self.assertEqual([replaced for _, replaced in places], [0, 0, 2])
        self.assertEqual({summary for summary, _ in places[1:]}, {"1 account could not be checked"})
        self.assertEqual(self.told("Notify", 3)[1][4:7], ["", [], {"urgency": 0, "category": "network.error",
                                                                  "desktop-entry": "Velmora", "suppress-sound": True}])
        self.deliver("Dinner")
        self.see.wait_for("the news", lambda: ("2 new messages in 2 accounts", 1) in
                          [(call[3], call[1]) for call in self.told("Notify")])
        server.server_activate()
        threading.Thread(target=server.serve_forever, daemon=True).start()
        self.addCleanup(server.shutdown)
        self.assertEqual(self.told("CloseNotification")[0], [2])
        self.end()

    def test_boxes_come_where_nothing_shows_notifications(self):
        for service in ([], [NAME, PATH, NAME]):
            if service:
                self.serve(*service)
            self.begin(("Gone", 1), NotifyNew=1, NotifyFailures=1)
            self.answer("Velmora - Error Establishing Connection", "Account: Gone", "Return", "OK")
            self.end()


if __name__ == "__main__":
    unittest.main(warnings="ignore")
