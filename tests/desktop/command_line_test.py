#!/usr/bin/python3
"""Calls the built program as a shell, a script and the desktop's menu do."""
import contextlib
import os
import pathlib
import re
import subprocess
import unittest

from gi.repository import Gio, GLib

from built_program import PROGRAM, write_settings
from shown_program import ShownProgramTest

from private_desktop import serve_mail, tell, wait_for

BUS_NAME = "example.velmora.Velmora"
SHARE = pathlib.Path(__file__).resolve().parents[2] / "share"
WORDS_STAND_IN = ("man/man1/Velmora.1", "bash-completion/completions/Velmora", "zsh/site-functions/_Velmora",
                  "fish/vendor_completions.d/Velmora.fish")


def call(*words, **more):
    done = subprocess.run([PROGRAM, *words], capture_output=True, text=True, timeout=60, **more)
    return done.returncode, done.stdout, done.stderr


def without_desktop():
    return {name: value for name, value in os.environ.items()
            if name not in ("DISPLAY", "WAYLAND_DISPLAY", "DBUS_SESSION_BUS_ADDRESS", "QT_QPA_PLATFORM")}


class CommandLineTest(ShownProgramTest):
    SUBJECTS = ("One", "Two")

    def write_settings(self, *accounts, **options):
        plain = {"Port": self.ports["plain"]}
        write_settings(self.home, [plain | account for account in accounts], CloseButton=1, RunStartUp=0, **options)

    def test_words_are_answered_where_there_is_no_desktop(self):
        for words, status, out, err in (
                (["--help"], 0, r"Usage: Velmora \[WORD\]\n", "$"),
                (["--version"], 0, r"Velmora \d+\.\d+\.\d+\n$", "$"),
                (["-session", "1a2b", "--version"], 0, "Velmora", "$"),  # X11's session manager
                (["--show", "--hidden"], 2, "$", "Velmora: not understood: --show --hidden; see Velmora --help\n$"),
                (["\x1b[2Jmail"], 2, "$", "Velmora: not understood: \u241b\\[2Jmail;")):
            with self.subTest(words):
                answered, printed, complained = call(*words, env=without_desktop())
                self.assertEqual(answered, status)
                self.assertRegex(printed, "^" + out)
                self.assertRegex(complained, "^" + err)

    def test_every_word_has_its_place_in_the_manual_and_in_each_shell(self):
        words = re.findall(r"^  --([\w=-]+)  ", call("--help")[1], re.M)
        self.assertGreater(len(words), 5)
        for file in WORDS_STAND_IN:
            text = (SHARE / file).read_text().replace("\\-", "-")
            self.assertEqual([word for word in words for part in word.split("=") if part not in text], [], file)

    def test_a_check_without_a_window(self):
        with contextlib.ExitStack() as stack:
            self.check_all_kinds(serve_mail(stack, "secret", {"robin": ()})[1]["plain"])

    def check_all_kinds(self, empty_port):
        works = {"Name": "Work"}
        tls = {"Name": "Safe", "Port": self.ports["tls"], "Secure": 1}
        empty = {"Name": "Empty", "Port": empty_port}
        wrong = {"Name": "Wrong\x1b[2J", "Password": "wrong"}
        disabled = {"Name": "Off", "Enabled": 0, "Password": "wrong"}
        no_port = {"Name": "None", "Port": "pop"}
        for accounts, status, printed, complaint in (
                ([works, tls, disabled], 1, "Work - 2 Messages\nSafe - 2 Messages\n", "$"),
                ([empty], 0, "Empty - No Messages\n", "$"),
                ([wrong, works], 2, "Wrong\u241b[2J - Error Accessing Account\nWork - 2 Messages\n",
                 "Velmora: Wrong\u241b\\[2J: 30007 - "),
                ([no_port], 2, "None - Error Accessing Account\n", "Velmora: None: 13 - Type mismatch\n$"),
                ([disabled], 2, "", "Velmora: No account is enabled\n$")):
            with self.subTest(printed):
                self.write_settings(*accounts)
                before = {file: file.stat().st_mtime_ns for file in self.settings.parent.iterdir()}
                answered, lines, complained = call("--check", env=without_desktop())
                self.assertEqual((answered, lines), (status, printed))
                self.assertRegex(complained, "^" + complaint)
                self.assertEqual({file: file.stat().st_mtime_ns for file in self.settings.parent.iterdir()}, before)
        self.settings.write_text("[Settings]\nAcntNum=1\nAcntName1=Wo")
        self.assertEqual(call("--check"), (2, "", f"Velmora: the settings cannot be used: {self.settings}\n"))

    def test_the_running_one_is_told(self):
        client = self.home / "client.exe"
        client.write_text(f"#!/bin/sh\necho \"$@\" > {self.home}/written\n")
        client.chmod(0o755)
        self.write_settings({"Name": "Work"}, MinimizeStartUp=0, DefaultClient=client)
        self.start("--hidden")
        self.see.wait_for("the program on the bus", lambda: call("--action=new-message") == (0, "", ""))
        wait_for("a new message", (self.home / "written").exists)
        self.assertEqual(self.main_windows(), "", "neither in the tray nor for a message it shows its window")
        other = subprocess.Popen(["xev", "-name", "Other"], stdout=subprocess.DEVNULL)
        self.addCleanup(other.wait)
        self.addCleanup(other.kill)
        for command in ("--show", "--action=check-all"):
            self.work_with("Other")
            tell("wmctrl", "-s", "0" if command == "--show" else "1")
            self.assertEqual(call(command), (0, "", ""))
            wait_for("the window in front", lambda: self.active_window() == "Velmora")
        self.see.wait_for("the end of the check", lambda: self.see.is_checked(self.root))
        for kind in ("(a{ss})", "(as)", "(i)", "()"):
            self.assertIn("Unknown", self.refusal_of("Activate", kind))
        self.assertEqual(call("--hidden"), (0, "", ""))
        self.assertEqual(call("--show", env=os.environ | {"DBUS_SESSION_BUS_ADDRESS": "unix:path=/nowhere"}),
                         (1, "", "Velmora: it runs already and could not be told\n"))
        self.end()
        self.write_settings({"Name": "Work"}, MinimizeStartUp=1)
        self.start("--show")
        self.button("Check All")
        self.end()

    def refusal_of(self, member, kind):
        empty = {"a": [], "i": 1}
        words = GLib.Variant(kind, tuple(empty[each[0]] for each in re.findall(r"a\{ss\}|as|i", kind)))
        bus = Gio.DBusConnection.new_for_address_sync(
            os.environ["DBUS_SESSION_BUS_ADDRESS"],
            Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION)
        with self.assertRaises(GLib.Error) as refused:
            bus.call_sync(BUS_NAME, "/" + BUS_NAME.replace(".", "/"), "org.freedesktop.Application", member, words,
                          None, 0, 5000)
        bus.close_sync()
        return refused.exception.message

    def work_with(self, window):
        wait_for(window, lambda: tell("xdotool", "search", "--onlyvisible", "--name", f"^{window}$"))
        tell("xdotool", "search", "--name", f"^{window}$", "windowactivate", "--sync", "mousemove", "--window", "%1",
             "10", "10", "click", "1")
        wait_for("its being worked with", lambda: self.active_window() == window)

    def main_windows(self):
        return tell("xdotool", "search", "--onlyvisible", "--name", "^Velmora$")

    def active_window(self):
        return tell("xdotool", "getactivewindow", "getwindowname").strip()


if __name__ == "__main__":
    unittest.main(warnings="ignore")
