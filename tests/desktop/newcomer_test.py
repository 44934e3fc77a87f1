#!/usr/bin/python3
"""Comes to the built program as a new user does, with real keys and a real mouse: from no settings at all to the first
message, and to accounts that are changed, put in another order and deleted.
"""
import configparser
import ctypes
import poplib
import shutil
import socket
import unittest

from built_program import write_settings
from shown_program import ShownProgramTest

from private_desktop import tell

SUCCESS, FAILURE = "Velmora - Test Connection Successfull", "Velmora - Test Connection Failure"
DRAG_PICTURE = 32 * 32  # the pixels of the pointers of a drag; no other pointer here is as large


class PointerImage(ctypes.Structure):
    """What XFixes tells of the mouse pointer."""
    _fields_ = [("x", ctypes.c_short), ("y", ctypes.c_short), ("width", ctypes.c_ushort), ("height", ctypes.c_ushort),
                ("xhot", ctypes.c_ushort), ("yhot", ctypes.c_ushort), ("serial", ctypes.c_ulong),
                ("pixels", ctypes.POINTER(ctypes.c_ulong))]


class Pointer:
    def __init__(self):
        self.x11, self.fixes = ctypes.CDLL("libX11.so.6"), ctypes.CDLL("libXfixes.so.3")
        self.x11.XOpenDisplay.restype = ctypes.c_void_p
        self.fixes.XFixesGetCursorImage.restype = ctypes.POINTER(PointerImage)
        self.display = ctypes.c_void_p(self.x11.XOpenDisplay(None))

    def close(self):
        self.x11.XCloseDisplay(self.display)

    def picture(self):
        found = self.fixes.XFixesGetCursorImage(self.display)
        image = found.contents
        pixels = tuple(image.pixels[:image.width * image.height])
        self.x11.XFree(found)
        return pixels


class NewcomerTest(ShownProgramTest):
    SUBJECTS = ("Welcome aboard",)

    def setUp(self):
        shutil.rmtree(self.settings.parent, ignore_errors=True)

    def start_with(self, *names):
        """With accounts that need no welcome."""
        write_settings(self.home, [{"Name": name} for name in names])
        self.start()
        self.go_to("Accounts", "Add Account")

    def kept(self, key):
        """The values of all accounts in the settings file."""
        file = configparser.RawConfigParser(strict=False)
        file.read(self.settings)
        values = file["Settings"]
        return [values.get(f"{key}{number}", "") for number in range(1, int(values["AcntNum"]) + 1)]

    def go_to(self, page, button):
        self.press(page)
        self.button(button)

    def type_into(self, name, text):
        field = self.field(name)
        self.wait_for_focus(field)
        tell("xdotool", "key", "ctrl+a", "type", text)
        shown, hidden = field.queryText(), name == "Password:"  # all but its length
        self.see.wait_for(f"{text} in {name}", lambda: shown.characterCount == len(text) and
                          (shown.getText(0, -1) == text) != hidden)

    def fill(self, letter, name, text):
        tell("xdotool", "key", "alt+" + letter)
        self.type_into(name, text)

    def set_secure(self, on):
        box = self.field("Server Requires Secure Connection")
        if self.has(box, "CHECKED") != on:
            tell("xdotool", "key", "alt+r")
            self.see.wait_for("the tick", lambda: self.has(box, "CHECKED") == on)

    def save(self, by_key=True):
        button = self.button("Save Account")
        self.see.wait_for("changes", lambda: self.has(button, "SENSITIVE"))
        tell("xdotool", "key", "ctrl+s") if by_key else self.see.click(button)
        self.see.wait_for("the save", lambda: not self.has(button, "SENSITIVE"))

    def tab(self, name):
        return self.find(self.see.TABS, name)

    def tabs(self):
        return [tab.name for tab in sorted(self.see.showing(self.root, self.see.TABS), key=self.see.place)]

    def wait_for_tabs(self, *names):
        self.see.wait_for(f"the tabs {names}", lambda: self.tabs() == list(names))

    def test_from_nothing_to_mail(self):
        self.start()
        welcome = "Velmora - First Time Use"
        box = self.see.wait_for("the welcome", lambda: self.see.window(self.root, welcome))
        self.assertTrue(self.see.showing(box, self.see.LABELS, "Welcome to Velmora"))
        self.wait_for_focus(self.see.showing(box, self.see.BUTTONS, "Close")[0])
        tell("xdotool", "key", "space")
        self.see.wait_for("the end of the welcome", lambda: not self.see.window(self.root, welcome))
        self.go_to("Accounts", "Add Account")
        self.find(self.see.LABELS, "No Accounts - Please use Add Accounts to create an Account")
        self.assertEqual(self.see.showing(self.root, self.see.FIELDS), [], "there is no account")

        self.press("Add Account")
        self.type_into("Account:", "Post")
        tell("xdotool", "key", "Tab")
        self.type_into("Server:", "127.0.0.1")
        self.fill("p", "Port:", self.ports["plain"])
        self.see.click(self.field("Login ID:"))
        self.type_into("Login ID:", "robin")
        self.fill("w", "Password:", "secret")
        self.save(by_key=False)
        self.wait_for_tabs("Post")
        self.try_connections()

        self.fill("a", "Account:", "Work")
        tell("xdotool", "key", "alt+c")
        self.wait_for_focus(self.button("Red"))
        tell("xdotool", "key", "Left")
        self.wait_for_focus(self.button("Magenta"))
        tell("xdotool", "key", "space")
        self.save()
        self.wait_for_tabs("Work")
        self.go_to("Email", "Check")
        self.wait_for_tabs("Work")
        self.press("Check")
        self.see.wait_for("the end of the check", lambda: self.see.is_checked(self.root))
        self.assertEqual(self.see.messages(self.root).getAccessibleAt(0, 2).name, "Welcome aboard")
        self.see.messages(self.root).addRowSelection(0)
        self.press("Delete")
        self.answer("Velmora - Ready to Delete Message(s)", "1 Message(s) from 'Work'", "Return", "Yes")
        self.wait_for_tabs("Work")
        server = poplib.POP3("127.0.0.1", int(self.ports["plain"]))
        self.addCleanup(server.close)
        server.user("robin")
        server.pass_("secret")
        self.assertEqual(server.stat()[0], 0)
        self.end()
        self.assertEqual(self.settings.stat().st_mode & 0o777, 0o600)
        self.assertEqual((self.kept("AcntName"), self.kept("AcntColourIndex")), (["Work"], ["4"]))
        self.start()
        self.wait_for_tabs("Work")
        self.end()

    def try_connections(self):
        """Of the account that is showing, which is right."""
        closed = socket.socket()
        self.addCleanup(closed.close)
        closed.bind(("127.0.0.1", 0))  # nobody else gets the port, and nobody listens
        plain, nobodys = self.ports["plain"], str(closed.getsockname()[1])
        tell("xdotool", "key", "ctrl+t")
        self.answer(SUCCESS, "The Connection Succeeded.", "Return", "OK")
        for secure, letter, name, text, title, words in (
                (False, "w", "Password:", "wrong", FAILURE, "30007 - The server refused the user name or password."),
                (False, "p", "Port:", nobodys, FAILURE, "10061 - Connection refused"),
                (True, "p", "Port:", plain, FAILURE, "60000 - SSL Handshake Error: This may be caused by using SSL"),
                (True, "w", "Password:", "secret", FAILURE, "60000 - "),
                (True, "p", "Port:", self.ports["tls"], SUCCESS, "The Connection Succeeded."),
                (True, "s", "Server:", "localhost", SUCCESS, "The Connection Succeeded.")):
            with self.subTest(words, text=text):
                self.set_secure(secure)
                self.fill(letter, name, text)
                self.save()
                self.press("Test Account") if text == "wrong" else tell("xdotool", "key", "ctrl+t")
                self.answer(title, words, "Return", "OK")
                self.wait_for_focus(self.field(name))

    def test_changes_that_are_not_saved(self):
        self.start_with("Work")
        self.press("Add Account")
        self.type_into("Account:", "Home")
        self.save()
        for key, text, names in (("Tab Return", "Post", ("Work", "Home")), ("Tab Tab Return", "Work", ("Work", "Home")),
                                 ("Return", "Work", ("Work", "Post"))):
            with self.subTest(key):
                self.see.click(self.tab("Home"))
                self.fill("a", "Account:", "Post")
                self.see.click(self.tab("Work"))
                self.answer("Changes Not Saved!", "Account Name: 'Home'", key, "Yes")
                self.wait_for_tabs(*names)
                shown = self.field("Account:").queryText()
                self.see.wait_for("the account", lambda: shown.getText(0, -1) == text)
        for keys in ("Escape", "alt+y"):
            self.press("Delete Account")
            self.answer("Delete Account - Proceed With Caution", "'Work'", keys, "Yes")
        self.wait_for_tabs("Post")
        self.end()
        self.assertEqual(self.kept("AcntName"), ["Post"])

    def test_tabs_are_dragged_with_the_mouse(self):
        pointer = Pointer()
        self.addCleanup(pointer.close)
        self.start_with("One", "Two", "Three")
        self.wait_for_tabs("One", "Two", "Three")
        self.drag(pointer, "One", "Three")
        self.wait_for_tabs("Three", "Two", "One")
        self.go_to("Email", "Check")
        self.wait_for_tabs("Three", "Two", "One")
        self.drag(pointer, "Two", "One")
        self.wait_for_tabs("Three", "One", "Two")
        self.go_to("Accounts", "Add Account")
        self.wait_for_tabs("Three", "One", "Two")
        self.end()
        self.assertEqual(self.kept("AcntName"), ["Three", "One", "Two"])
        self.start()
        self.wait_for_tabs("Three", "One", "Two")
        self.end()

    def drag(self, pointer, name, target):
        """Holds the mouse until the pointer carries the tab, takes it past the row and then to the target."""
        (x, y), end = (self.see.place(self.tab(each)) for each in (name, target))
        tell("xdotool", "mousemove", str(x), str(y), "mousedown", "1")
        self.see.wait_for("the drag", lambda: len(pointer.picture()) == DRAG_PICTURE)
        carries = pointer.picture()
        tell("xdotool", "mousemove", str(x), str(y + 100))
        self.see.wait_for("the pointer beside the row", lambda: pointer.picture() != carries)
        tell("xdotool", "mousemove", *map(str, end))
        self.see.wait_for("the pointer over the row", lambda: pointer.picture() == carries)
        tell("xdotool", "mouseup", "1")


if __name__ == "__main__":
    unittest.main(warnings="ignore")
