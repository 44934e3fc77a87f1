#!/usr/bin/python3
"""Runs the built program as a user would, on a display of its own and with settings of its own."""
import contextlib
import os
import pathlib
import shutil
import signal
import subprocess
import unittest

from gi.repository import GLib

from built_program import PROGRAM, BuiltProgramTest, settings_in

from private_desktop import make_folder, open_desktop, tell, wait_for


def windows(title):
    return tell("xwininfo", "-root", "-tree").count(f'"{title}"')


class ProgramTest(BuiltProgramTest):
    def setUp(self):
        beside = contextlib.ExitStack()
        self.addCleanup(beside.close)
        self.home = make_folder(beside)
        self.settings = settings_in(self.home)
        self.logon = self.home / "autostart" / "Velmora.desktop"
        open_desktop(beside, self.home)

    def start_shown(self):
        process = self.start()
        wait_for("the window", lambda: windows("Velmora") > 0)
        wait_for("the end of the start", lambda: "FirstUse=1" in self.text())
        return process

    def test_first_run_and_the_end_of_the_desktops_session(self):
        for number in (signal.SIGTERM, signal.SIGHUP):
            is_first = number == signal.SIGTERM
            process = self.start_shown()
            self.assertEqual(windows("Velmora - First Time Use"), 1 if is_first else 0)
            self.assertEqual(self.logon.exists(), is_first, "a user who took it away doesn't want it")
            self.assertIn("Options\\RunStartUp=1", self.text())
            wait_for("the sounds", lambda: (self.home / "Kestrum/Velmora/Sounds/Error.wav").exists())
            self.assertEqual(self.settings.stat().st_mode & 0o777, 0o600)
            for own in (self.settings.parent, self.home / "Kestrum/Velmora"):
                self.assertEqual(own.stat().st_mode & 0o777, 0o700)
            self.assertRegex(pathlib.Path(f"/proc/{process.pid}/limits").read_text(), "Max core file size +1 ")
            process.send_signal(number)
            self.expect_end(process)
            self.assertIn("SortOrder=1", self.text())
            if is_first:
                self.assertTrue(self.logon.read_text().startswith("[Desktop Entry]\nType=Application\n"))
                self.assertIn(f'\nExec="{os.path.realpath(PROGRAM)}"\n', self.logon.read_text())
                self.logon.unlink()

    def test_told_twice_to_end_it_ends_at_once(self):
        for second, ends in ((signal.SIGINT, (-signal.SIGTERM, -signal.SIGINT)), (signal.SIGHUP, (0,))):
            process = self.start_shown()
            for number in (signal.SIGSTOP, signal.SIGTERM, second, signal.SIGCONT):
                process.send_signal(number)  # so it gets both before it can do anything
            self.assertIn(process.wait(20), ends)

    def test_a_second_instance_leaves_without_a_word(self):
        first = self.start_shown()
        shown, settings = windows("Velmora"), self.text()
        draft = self.settings.parent / "Velmora.aBc123.draft"
        draft.touch()
        os.utime(draft, (0, 0))
        self.expect_end(self.start())
        self.assertTrue(draft.exists(), "what is there is the first one's")
        self.assertEqual((windows("Velmora"), self.text()), (shown, settings))
        self.assertIsNone(first.poll())
        self.end(first)
        self.end(self.start_shown())

    def test_the_logon_entry_names_the_program_wherever_it_is(self):
        odd = self.home / "a \\b\"$c`d%e"
        odd.mkdir()
        shutil.copy(PROGRAM, odd / "Velmora")
        process = subprocess.Popen([odd / "Velmora"], stderr=subprocess.DEVNULL)
        self.addCleanup(process.wait)
        self.addCleanup(process.kill)
        wait_for("the end of the start", lambda: "FirstUse=1" in self.text())
        entry = GLib.KeyFile()
        entry.load_from_file(str(self.logon), GLib.KeyFileFlags.NONE)
        words = GLib.shell_parse_argv(entry.get_string("Desktop Entry", "Exec"))[1]
        self.assertEqual([word.replace("%%", "%") for word in words], [str(odd / "Velmora")])

    def test_a_killed_instance_is_in_nobodys_way(self):
        first = self.start_shown()
        first.kill()
        first.wait()
        self.assertTrue((self.settings.parent / "Velmora.lock").exists())
        wait_for("the window's end", lambda: windows("Velmora") == 0)
        self.end(self.start_shown())

    def test_settings_that_cannot_be_used_are_told_and_left_alone(self):
        damaged = '[Settings]\nAcntNum=1\nAcntName1=Work\nAcntPassword1=sec'
        self.settings.parent.mkdir()
        for text, owner in ((damaged, os.geteuid()), (damaged + "\n", os.geteuid() + 1)):
            self.settings.write_text(text)
            with contextlib.suppress(PermissionError):  # only the superuser can give a file away
                os.chown(self.settings, owner, -1)
            if self.settings.stat().st_uid == owner:
                process = self.start()
                wait_for("the message box", lambda: windows("Velmora - Settings Error") > 0)
                self.end(process)
                self.assertEqual(self.settings.read_text(), text)
                self.assertFalse(self.logon.exists())

    def text(self):
        return self.settings.read_text() if self.settings.exists() else ""


if __name__ == "__main__":
    unittest.main(warnings="ignore")
