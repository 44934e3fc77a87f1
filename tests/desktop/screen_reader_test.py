#!/usr/bin/python3
"""Works the built program from outside, as a person with a screen reader does: a check of a real server, and a preview.

Only the system's own Python has what this needs, hence the fixed path above.
"""
import os
import pathlib
import re
import subprocess
import sys
import tempfile
import unittest

PROGRAM = sys.argv.pop(1)
SCRIPTS = pathlib.Path(__file__).resolve().parents[2] / "scripts"
sys.path.insert(0, str(SCRIPTS))

MAIL = """From: Zoë <zoe@example.org>\r
To: robin@example.com\r
Subject: {subject}\r
Content-Type: text/plain; charset=utf-8\r
\r
Text of {subject}, for every ear.\r
"""


class ScreenReaderTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.home = cls.make_folder()
        cls.serve_mail()
        cls.open_desktop()
        import screen_reader  # finds the bus in the environment
        cls.see = screen_reader

    @classmethod
    def make_folder(cls):
        folder = tempfile.TemporaryDirectory(prefix="velmora", dir="/tmp")
        cls.addClassCleanup(folder.cleanup)
        return pathlib.Path(folder.name)

    @classmethod
    def serve_mail(cls):
        pop = cls.make_folder()
        pop.chmod(0o711)  # the server is another user
        script = SCRIPTS / "dovecot"
        ports = subprocess.run([script, "start", pop], check=True, capture_output=True, text=True).stdout
        cls.addClassCleanup(subprocess.run, [script, "stop", pop], check=True)
        subprocess.run([script, "user", pop, "robin", "secret"], check=True)
        for number, subject in enumerate(["One", "Two", "Three"]):
            file = cls.home / f"{number}.eml"
            file.write_text(MAIL.format(subject=subject), newline="")
            subprocess.run([script, "deliver", pop, "robin", file], check=True)
        settings = cls.home / "Kestrum" / "Velmora.conf"
        settings.parent.mkdir()
        settings.write_text(
            "[Settings]\nAcntNum=1\nFirstUse=1\nAcntName1=Work\nAcntServer1=127.0.0.1\nAcntLoginID1=robin\n"
            f"AcntPassword1=secret\nAcntPort1={re.search('plain=([0-9]+)', ports)[1]}\n"
            "Options\\SortColumn=3\nOptions\\SortOrder=0\n")

    @classmethod
    def open_desktop(cls):
        """A display with a window manager, and a bus, on which the accessibility tree stands."""
        display = cls.run_beside(["Xvfb", "-displayfd", "1", "-nolisten", "tcp", "-noreset"])
        environment = {"DISPLAY": ":" + display.stdout.readline().strip(), "QT_QPA_PLATFORM": "xcb",
                       "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1"}
        for folder in ("CONFIG_HOME", "CACHE_HOME", "DATA_HOME", "RUNTIME_DIR"):
            environment[f"XDG_{folder}"] = str(cls.home)
        os.environ.update(environment)
        bus = cls.run_beside(["dbus-daemon", "--session", "--nofork", "--print-address"])
        os.environ["DBUS_SESSION_BUS_ADDRESS"] = bus.stdout.readline().strip()
        cls.run_beside(["openbox"])

    @classmethod
    def run_beside(cls, command):
        process = subprocess.Popen(command, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
        cls.addClassCleanup(process.stdout.close)
        cls.addClassCleanup(process.wait)
        cls.addClassCleanup(process.terminate)
        return process

    def setUp(self):
        self.program = subprocess.Popen([PROGRAM], stderr=subprocess.PIPE, text=True)
        self.addCleanup(self.program.stderr.close)
        self.addCleanup(self.program.wait)
        self.addCleanup(self.program.kill)
        self.root = self.see.wait_for("Velmora", self.see.velmora)

    def tearDown(self):
        self.program.terminate()
        self.assertEqual(self.program.wait(20), 0)
        self.assertEqual(self.program.stderr.read(), "")

    def test_everything_that_can_be_worked_has_a_name(self):
        self.see.wait_for("the window", lambda: self.see.showing(self.root, self.see.BUTTONS, "Check All"))
        for page in ("Accounts", "Rules", "Options", "Email"):
            self.see.press(self.root, page)
            for each in self.see.showing(self.root, self.see.BUTTONS | self.see.TABS | self.see.LISTS):
                self.assertNotEqual(each.name.strip(), "", f"{each.getRoleName()} on page {page}")

    def test_a_check_and_a_preview(self):
        see = self.see
        see.press(self.root, "Check All")
        see.wait_for("the end of the check", lambda: see.is_checked(self.root))
        messages = see.messages(self.root)
        self.assertEqual(messages.nRows, 3)
        subjects = [messages.getAccessibleAt(row, 2).name for row in range(3)]
        self.assertEqual(subjects, ["One", "Three", "Two"])
        preview = see.showing(self.root, see.BUTTONS, "Preview")[0]
        self.assertFalse(preview.getState().contains(see.pyatspi.STATE_SENSITIVE), "nothing is selected yet")
        messages.addRowSelection(1)
        see.wait_for("Preview to be on", lambda: preview.getState().contains(see.pyatspi.STATE_SENSITIVE))
        see.press(self.root, "Preview")
        body = self.text("Body")
        self.assertEqual(body.strip(), "Text of Three, for every ear.")
        self.assertEqual(self.text("From"), "Zoë <zoe@example.org>")
        self.assertEqual(self.text("Subject"), "Three")
        tab = see.showing(self.root, see.TABS, "Raw Message")[0]
        tab.queryAction().doAction(0)
        self.assertIn("Content-Type: text/plain; charset=utf-8", self.text("Raw message"))
        see.press(self.root, "Exit Preview")
        see.wait_for("the end of the preview", lambda: not see.showing(self.root, see.BUTTONS, "Exit Preview"))

    def text(self, name):
        field = self.see.wait_for(name, lambda: self.see.showing(self.root, {self.see.pyatspi.ROLE_TEXT}, name))[0]
        return self.see.wait_for("text", lambda: field.queryText().getText(0, -1))


if __name__ == "__main__":
    unittest.main(warnings="ignore")
