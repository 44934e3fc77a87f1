#!/usr/bin/python3
"""Hands messages of a real server to other programs by the keyboard alone: to a registered mail program that notes what
it is given, to a portal on the bus, and to nobody. And saves one as its server has it.

Only the system's own Python has what this needs.
"""
import base64
import json
import os
import pathlib
import subprocess
import unittest
import urllib.parse

from built_program import write_settings
from gi.repository import Gio, GLib
from shown_program import ShownProgramTest

from private_desktop import rest, tell

PRINT_SERVICE = pathlib.Path(__file__).resolve().parents[2] / "scripts" / "print_service"

PICTURE = bytes(range(256)) * 40
LETTER = b"""From: "Doe, John <boss@example.org>" <r&d@example.org>\r
To: robin@example.com\r
Date: Sun, 15 Nov 2026 16:22:05 +0000\r
Subject: Lunch?&bcc=eve@example.org\r
MIME-Version: 1.0\r
Content-Type: multipart/mixed; boundary="b"\r
\r
--b\r
Content-Type: text/plain; charset=utf-8\r
\r
Caf\xc3\xa9 & more: 100 %\r
.dotted\r
--b\r
Content-Type: image/png\r
Content-Disposition: attachment; filename="../a b.png"\r
Content-Transfer-Encoding: base64\r
\r
""" + base64.encodebytes(PICTURE).replace(b"\n", b"\r\n") + b"--b--\r\n"

QUOTED = ("\r\n-----Original Message-----\r\nFrom: Doe, John <boss@example.org> <randd@example.org>\r\n"
          "To: robin@example.com\r\nSent: Sunday, November 15, 2026 at 4:22 PM\r\n"
          "Subject: Lunch?&bcc=eve@example.org\r\n\r\n\r\n>Café & more: 100 %\r\n>.dotted")

# Notes its arguments, and what a file among them holds.
STAND_IN = """#!/usr/bin/python3
import json, os, sys
held = [open(path, newline="", encoding="utf-8").read() for path in sys.argv[1:] if os.path.isfile(path)]
with open({notes!r}, "a") as notes:
    notes.write(json.dumps([sys.argv[1:], held]) + "\\n")
"""

ENTRY = """[Desktop Entry]
Type=Application
Name=Stand-in
Exec={program} {field}
MimeType={kinds}
DBusActivatable=true
"""


def let_the_bus_work():
    if not GLib.MainContext.default().iteration(False):
        rest()


class Portal:
    """The desktop's portal for mail, which answers as it is told to."""

    NAME, PATH = "org.freedesktop.portal.Desktop", "/org/freedesktop/portal/desktop"
    INTERFACE = Gio.DBusNodeInfo.new_for_xml("""<node><interface name="org.freedesktop.portal.Email">
        <method name="ComposeEmail"><arg type="s" direction="in"/><arg type="a{sv}" direction="in"/>
        <arg type="o" direction="out"/></method></interface></node>""").interfaces[0]

    def __init__(self, response):
        self.response, self.asked = response, []
        self.bus = Gio.bus_get_sync(Gio.BusType.SESSION)
        self.object = self.bus.register_object(self.PATH, self.INTERFACE, self.compose)
        self.owned = Gio.bus_own_name_on_connection(self.bus, self.NAME, 0)

    def compose(self, bus, sender, path, interface, method, parameters, invocation):
        options = parameters.unpack()[1]
        request = f"{self.PATH}/request/{sender[1:].replace('.', '_')}/{options.pop('handle_token')}"
        self.asked.append(options)
        invocation.return_value(GLib.Variant("(o)", (request,)))
        bus.emit_signal(sender, request, "org.freedesktop.portal.Request", "Response",
                        GLib.Variant("(ua{sv})", (self.response, {})))

    def go(self):
        Gio.bus_unown_name(self.owned)
        self.bus.unregister_object(self.object)
        self.bus.flush_sync()


class HandingOnTest(ShownProgramTest):
    MAILS = (LETTER,)
    maxDiff = None

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        # The desktop knows kinds of files, and no program of this machine.
        shared = cls.home / "share"
        shared.mkdir()
        (shared / "mime").symlink_to("/usr/share/mime")
        os.environ["XDG_DATA_DIRS"] = str(shared)
        cls.notes = cls.home / "notes"
        cls.stand_in = cls.home / "stand in.exe"
        cls.stand_in.write_text(STAND_IN.format(notes=str(cls.notes)))
        cls.stand_in.chmod(0o700)

    def register(self, **kinds):
        """Each kind with the field of its command line that stands for what is opened."""
        folder = self.home / "applications"
        folder.mkdir(exist_ok=True)
        for old in folder.iterdir():
            old.unlink()
        for name, (kind, field) in kinds.items():
            entry = ENTRY.format(program=f'"{self.stand_in}"', field=field, kinds=kind + ";")
            (folder / f"org.example.{name}.desktop").write_text(entry)  # which nothing on the bus starts
        lines = [f"{kind}=org.example.{name}.desktop" for name, (kind, _) in kinds.items()]
        (self.home / "mimeapps.list").write_text("\n".join(["[Default Applications]", *lines, ""]))

    def begin(self, **options):
        self.notes.unlink(missing_ok=True)
        write_settings(self.home, [{"Name": "Work", "Port": self.ports["plain"]}], **options)
        self.start()
        self.press("Check")
        self.see.wait_for("the end of the check", lambda: self.see.is_checked(self.root))
        self.see.messages(self.root).addRowSelection(0)
        self.see.wait_for("Reply to be on", lambda: self.has(self.button("Reply"), "SENSITIVE"))

    def noted(self, count):
        """What the stand-in was given, so many times."""
        def lines():
            found = self.notes.read_text().splitlines() if self.notes.exists() else []
            return len(found) >= count and found
        return [json.loads(line) for line in self.see.wait_for(f"the mail program, {count} times", lines, rest=let_the_bus_work)]

    def open_preview(self):
        self.key("Return")
        self.see.wait_for("the preview", lambda: self.see.showing(self.root, self.see.BUTTONS, "Exit Preview"))

    def close_preview(self):
        self.key("Escape")
        self.see.wait_for("its end", lambda: not self.see.showing(self.root, self.see.BUTTONS, "Exit Preview"))

    def expect_reply(self, address):
        self.assertTrue(address.startswith("mailto:r%26d@example.org?subject="), address)
        fields = [field.partition("=") for field in address.partition("?")[2].split("&")]
        self.assertEqual([(name, urllib.parse.unquote(text)) for name, _, text in fields],
                         [("subject", "Re: Lunch?&bcc=eve@example.org"), ("body", QUOTED)])

    def test_to_what_the_desktop_has(self):
        self.register(writer=("x-scheme-handler/mailto", "%F"), reader=("message/rfc822", "%f"))
        self.begin()
        for keys, count in (("ctrl+shift+r", 1), ("ctrl+n", 2), ("ctrl+o", 3)):
            self.key(keys)
            self.noted(count)
        self.open_preview()
        for keys, count in (("ctrl+shift+r", 4), ("ctrl+o", 5)):
            self.key(keys)
            self.noted(count)
        noted = self.noted(5)
        for reply in (noted[0], noted[3]):
            self.expect_reply(reply[0][0])
        self.assertEqual(noted[1][0], ["mailto:"])
        header = LETTER.partition(b"\r\n\r\n")[0].decode()
        for opened in (noted[2], noted[4]):
            path = pathlib.Path(opened[0][0])
            self.assertEqual(path.name, "temporary.eml")
            self.assertEqual(opened[1], [header + "\r\n\r\nCafé & more: 100 %\r\n.dotted\r\n"])
        self.assertEqual([oct(each.stat().st_mode & 0o777) for each in (path, path.parent)], ["0o600", "0o700"])
        self.close_preview()
        self.assertFalse(path.exists())
        self.end()

    def test_to_the_portal_and_to_nobody(self):
        self.register()
        for response in (0, 1, 2):
            portal = Portal(response)
            self.begin()
            self.key("ctrl+shift+r")
            self.see.wait_for("the portal", lambda: portal.asked, rest=let_the_bus_work)
            self.assertEqual(portal.asked[0], {"address": "r&d@example.org", "body": QUOTED,
                                               "subject": "Re: Lunch?&bcc=eve@example.org"})
            if response == 2:
                self.answer("Velmora - Nothing to Open With", "no program here that writes", "Return", "OK")
            self.end()
            portal.go()
        self.begin()
        for keys, title in (("ctrl+n", "Velmora - Nothing to Open With"), ("ctrl+o", "Velmora - Open Message Failed")):
            self.key(keys)
            self.answer(title, "", "Return", "OK")
        self.end()

    def test_to_the_chosen_client(self):
        self.register(writer=("x-scheme-handler/mailto", "%u"))
        self.begin(DefaultClient=f'"{self.stand_in}"')
        self.key("ctrl+shift+r")
        self.expect_reply(self.noted(1)[0][0][0])
        self.end()

    def test_on_paper(self):
        folder = self.home / "printer"
        folder.mkdir()
        service = subprocess.Popen([PRINT_SERVICE, folder], stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True)
        for end in (service.stdout.close, service.wait, service.stdin.close):
            self.addCleanup(end)
        os.environ["CUPS_SERVER"] = service.stdout.readline().strip().partition("=")[2]
        self.begin()
        self.open_preview()
        for number, tab in (("1", "ctrl+1"), ("2", "ctrl+2")):
            self.key(tab, "ctrl+p")
            pages = folder / "printed" / f"{number}.pdf"
            self.see.wait_for("the pages", lambda: tell("pdftotext", "-layout", str(pages), "-").endswith("\f"))
            text = tell("pdftotext", "-layout", str(pages), "-")
            lines = [" ".join(line.split()) for line in text.splitlines()]
            self.assertEqual(lines[:5], ["From: Doe, John <boss@example.org> <randd@example.org>",
                                         "To: robin@example.com", "Date: Nov 15, 2026 04:22:05 PM",
                                         "Subject: Lunch?&bcc=eve@example.org", "_" * 97])
            self.assertEqual("MIME-Version: 1.0" in text, tab == "ctrl+2")
            self.assertLess(text.index("Café & more: 100 %"), text.index(".dotted"))
            self.assertIn("Bold", tell("pdffonts", str(pages)))
            button = self.button("Print")
            self.see.wait_for("Print to be on", lambda: self.has(button, "SENSITIVE"))
        (folder / "hold").write_text("media-empty-error")
        self.key("ctrl+p")
        self.answer("Velmora - Printer Waits", "media-empty", "Return", "OK")
        self.end()
        os.environ["CUPS_SERVER"] = str(folder / "nobody")
        self.begin()
        self.open_preview()
        self.key("ctrl+p")
        self.answer("Velmora - Printing Failed", "does not answer", "Return", "OK")
        self.end()

    def test_the_original_and_its_attachment(self):
        self.begin()
        self.save_as("ctrl+shift+s", self.home / "whole.eml")
        self.assertEqual((self.home / "whole.eml").read_bytes(), LETTER)
        self.open_preview()
        self.find({self.see.pyatspi.ROLE_COMBO_BOX}, "1. ../a b.png (image/png, 10 KB)")
        self.save_as("ctrl+shift+a", self.home / "picture.png")
        self.assertEqual((self.home / "picture.png").read_bytes(), PICTURE)
        self.close_preview()
        self.end()

    def save_as(self, keys, path):
        self.key(keys)
        dialog = self.see.wait_for("the dialog", lambda: self.see.window(self.root, "Save As"))
        self.wait_for_focus(self.see.showing(dialog, {self.see.pyatspi.ROLE_TEXT})[0])
        self.key("ctrl+a")
        tell("xdotool", "type", str(path))
        self.key("Return")
        self.see.wait_for("the file", path.exists)
        # A key that is pressed before would reach the window that tells how far it has come, or none at all.
        is_over = lambda: not self.see.showing(self.root, self.see.BUTTONS, "Stop") and self.focused()
        self.see.wait_for("the keyboard", is_over)


if __name__ == "__main__":
    unittest.main(warnings="ignore")
