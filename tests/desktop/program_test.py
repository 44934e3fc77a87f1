#!/usr/bin/env python3
"""Runs the built program as a user would, on a display of its own and with settings of its own."""
import os
import pathlib
import signal
import subprocess
import sys
import tempfile
import time
import unittest

PROGRAM = sys.argv.pop(1)


def wait_for(condition, what, seconds=20):
    end = time.monotonic() + seconds
    while not condition():
        if time.monotonic() > end:
            raise AssertionError("waited in vain for " + what)
        time.sleep(0.02)


class ProgramTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.xvfb = subprocess.Popen(["Xvfb", "-displayfd", "1", "-nolisten", "tcp", "-noreset"],
                                    stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
        cls.display = ":" + cls.xvfb.stdout.readline().strip()

    @classmethod
    def tearDownClass(cls):
        cls.xvfb.terminate()
        cls.xvfb.wait()
        cls.xvfb.stdout.close()

    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="velmora")
        self.addCleanup(folder.cleanup)
        self.home = pathlib.Path(folder.name)
        self.settings = self.home / "Kestrum" / "Velmora.conf"
        self.logon = self.home / "autostart" / "Velmora.desktop"
        self.environment = dict(os.environ, DISPLAY=self.display, QT_QPA_PLATFORM="xcb", XDG_CONFIG_HOME=folder.name,
                                XDG_CACHE_HOME=folder.name, XDG_DATA_HOME=folder.name, XDG_RUNTIME_DIR=folder.name,
                                # No bus: one that is started on demand would outlive the test.
                                DBUS_SESSION_BUS_ADDRESS="disabled:")

    def start(self):
        process = subprocess.Popen([PROGRAM], env=self.environment, stderr=subprocess.PIPE, text=True)
        self.addCleanup(process.stderr.close)
        self.addCleanup(process.wait)
        self.addCleanup(process.kill)
        return process

    def windows(self, title):
        tree = subprocess.run(["xwininfo", "-root", "-tree"], env=self.environment, capture_output=True, text=True)
        return tree.stdout.count(f'"{title}"')

    def end(self, process, number=signal.SIGTERM):
        process.send_signal(number)
        self.assertEqual(process.wait(20), 0)
        self.assertEqual(process.stderr.read(), "")

    def test_first_run_and_the_end_of_the_desktops_session(self):
        for number in (signal.SIGTERM, signal.SIGHUP):
            process = self.start()
            wait_for(lambda: self.windows("Velmora") > 0, "the window")
            wait_for(lambda: "FirstUse=1" in self.text(), "the first save")
            self.assertEqual(self.windows("Velmora - First Time Use"), 1 if number == signal.SIGTERM else 0)
            self.assertIn(f'Exec="{os.path.realpath(PROGRAM)}"', self.logon.read_text())
            wait_for(lambda: (self.home / "Kestrum/Velmora/Sounds/Error.wav").exists(), "the sounds")
            self.assertEqual(self.settings.stat().st_mode & 0o777, 0o600)
            self.end(process, number)
            self.assertIn("SortOrder=1", self.text())

    def test_a_second_instance_leaves_without_a_word(self):
        first = self.start()
        wait_for(lambda: "FirstUse=1" in self.text(), "the end of the start")
        shown = self.windows("Velmora")
        second = self.start()
        self.assertEqual(second.wait(20), 0)
        self.assertEqual(second.stderr.read(), "")
        self.assertEqual(self.windows("Velmora"), shown)
        self.assertIsNone(first.poll())
        self.end(first)
        third = self.start()
        wait_for(lambda: self.windows("Velmora") > 0, "a window after the first instance has ended")
        self.end(third)

    def test_a_killed_instance_is_in_nobodys_way(self):
        first = self.start()
        wait_for(lambda: self.windows("Velmora") > 0, "the window")
        first.kill()
        first.wait()
        self.assertTrue((self.settings.parent / "Velmora.lock").exists())
        wait_for(lambda: self.windows("Velmora") == 0, "the window's end")
        second = self.start()
        wait_for(lambda: self.windows("Velmora") > 0, "the window")
        self.end(second)

    def test_damaged_settings_are_told_and_left_alone(self):
        damaged = '[Settings]\nAcntNum=1\nAcntName1=Work\nAcntPassword1=sec'
        self.settings.parent.mkdir()
        self.settings.write_text(damaged)
        process = self.start()
        wait_for(lambda: self.windows("Velmora - Settings Error") > 0, "the message box")
        self.end(process)
        self.assertEqual(self.settings.read_text(), damaged)
        self.assertFalse(self.logon.exists())

    def text(self):
        return self.settings.read_text() if self.settings.exists() else ""


if __name__ == "__main__":
    unittest.main()
