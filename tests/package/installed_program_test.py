#!/usr/bin/python3
"""Uses the program that a package has installed in a root, which is the argument, as its user does: out of the desktop's
menu and from the shell. Display, bus and mail server are the caller's own. Needs the right to enter roots.
"""
import configparser
import os
import pathlib
import subprocess
import sys
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "desktop"))
from built_program import PROGRAM as ROOT, write_settings
from shown_program import ShownProgramTest

from private_desktop import tell, wait_for

HOME = "/home/robin"
SHARE = pathlib.Path(ROOT) / "usr/share"
OWN = pathlib.Path(ROOT + HOME)
DESKTOP = ("DISPLAY", "DBUS_SESSION_BUS_ADDRESS", "XDG_RUNTIME_DIR", "QT_LINUX_ACCESSIBILITY_ALWAYS_ON")


def names(folder):
    return sorted(each.name for each in folder.iterdir())


class InstalledProgramTest(ShownProgramTest):
    SUBJECTS = ("From afar",)

    def call(self, *words):
        """Starts a program in the root, without the right to enter others."""
        known = [f"{name}={os.environ[name]}" for name in DESKTOP]
        process = subprocess.Popen(
            ["chroot", ROOT, "setpriv", "--inh-caps=-all", "--ambient-caps=-all",
             "env", "--ignore-environment", "--chdir", HOME, "HOME=" + HOME, "LANG=C.UTF-8", *known, *words],
            stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)
        for end in (process.stdout.close, process.stderr.close, process.wait, process.kill):
            self.addCleanup(end)
        return process

    def read_menu(self):
        """What the desktop's menu starts: for the entry itself, and for each of its actions."""
        entry = configparser.RawConfigParser()
        entry.read(SHARE / "applications/Velmora.desktop")
        return {section.split()[-1]: entry[section]["Exec"].split() for section in entry.sections()}

    def test_a_mailbox_is_checked_from_the_menu_and_from_the_shell(self):
        (OWN / ".config").mkdir()
        client = OWN / "client.exe"
        client.write_text("#!/bin/sh\n: > written\n")
        client.chmod(0o700)
        write_settings(OWN / ".config", [{"Name": "Work", "Port": self.ports["tls"], "Secure": 1}],
                       DefaultClient=HOME + "/client.exe")
        menu = self.read_menu()
        self.program = self.call(*menu["Entry"])
        self.root = self.see.wait_for("Velmora", lambda: self.see.velmora(self.program.pid))
        self.button("Check All")
        self.expect_end(self.call(*menu["NewMessage"]))
        wait_for("a new message", (OWN / "written").exists)
        self.expect_end(self.call(*menu["CheckAll"]))
        self.see.wait_for("the end of the check", lambda: self.see.is_checked(self.root))
        self.assertEqual(self.see.messages(self.root).getAccessibleAt(0, 2).name, "From afar")
        icon = tell("xprop", "-name", "Velmora", "_NET_WM_ICON")  # a sketch of it, one character a pixel
        self.assertGreater(len("".join(icon.split())), 1000)
        self.key("F1")
        self.see.wait_for("the help", lambda: self.see.window(self.root, "Velmora Help"))
        self.assertGreater(self.find(self.see.LISTS, "Contents").childCount, 5)
        self.assertEqual(names(OWN / ".local/share/Kestrum/Velmora/Sounds"), names(SHARE / "velmora/sounds"))
        self.end()
        check = self.call("Velmora", "--check")
        self.assertEqual(check.communicate(timeout=60), ("Work - 1 Message\n", ""))
        self.assertEqual(check.returncode, 1)


unittest.main()
