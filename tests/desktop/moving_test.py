#!/usr/bin/python3
"""Moves all settings by the keyboard out of the built program into a file and back in, and kills it in the midst of that.
"""
import fnmatch
import os
import stat
import time
import unittest

from built_program import write_settings
from shown_program import ShownProgramTest

from private_desktop import tell

RULES = "[Rules]\nRuleCount=1\n[Rule1]\nName=Ads\nAccount=Work\n"


class MovingTest(ShownProgramTest):
    def setUp(self):
        self.file = self.home / "moved.velmora"

    def write(self, *names, **options):
        write_settings(self.home, [{"Name": name, "Port": self.ports["plain"], "Password": "pa55word"}
                                   for name in names], **options)

    def folder(self):
        return next(self.home.rglob("frmMain.ini")).parent

    def open_section(self):
        self.start()
        self.button("Check All")
        self.key("ctrl+4")
        self.wait_for_focus(self.find(self.see.LISTS, "Sections"))
        self.key("End")
        self.see.wait_for("the section", lambda: self.see.showing(self.root, self.see.LABELS, "Desktop and Security"))

    def tab_to(self, name):
        now = self.focused()
        while now.name != name:
            now = self.tab(now)
        self.key("space")

    def name_file(self, title):
        self.see.wait_for(title, lambda: self.see.window(self.root, title))
        self.see.wait_for("its focus", lambda: self.focused() and self.focused().getRole() in self.see.FIELDS)
        self.key("ctrl+a")
        tell("xdotool", "type", str(self.file))
        self.key("Return")
        self.see.wait_for("the end of the dialog", lambda: not self.see.window(self.root, title))

    def kill_once_there(self, pattern, known):
        """At the very moment: a pause between two looks would outlast the whole import."""
        folder, end = self.folder(), time.monotonic() + 20
        known = {path.name for path in known}
        while not any(fnmatch.fnmatch(name, pattern) for name in set(os.listdir(folder)) - known):
            self.assertLess(time.monotonic(), end, "waited in vain for " + pattern)
        self.program.kill()

    def import_until_asked(self):
        self.open_section()
        self.tab_to("Import...")
        self.name_file("Open")
        box = self.see.wait_for("the question", lambda: self.see.window(self.root, "Velmora - Import"))
        self.wait_for_focus(self.see.showing(box, self.see.BUTTONS, "No")[0])
        return self.see.showing(box, self.see.LABELS)[0].name

    def stored(self, key):
        return [line.split("=", 1)[1] for line in self.settings.read_text().splitlines() if line.startswith(key + "=")]

    def test_moves_all_and_nothing_by_half(self):
        self.write("Work", "Home", Hours=3)
        self.open_section()
        (self.folder() / "Rules.ini").write_text(RULES)
        self.end()
        self.open_section()
        self.tab_to("Export...")
        self.answer("Velmora - Export", "Shall it hold the passwords", "alt+y", "No")
        self.name_file("Save As")
        self.answer("Velmora - Export Successful", "with the passwords", "Return", "OK")
        self.assertEqual(stat.S_IMODE(self.file.stat().st_mode), 0o600)
        self.end()

        copies = set()
        for killed_at in ("Before Import*", "Rules Imported*", None):
            self.write("Elsewhere")
            (self.folder() / "Rules.ini").unlink(missing_ok=True)
            for laid in self.folder().glob("Rules Imported*"):
                laid.unlink()
            words = self.import_until_asked()
            for line in ("New:  Work, Home", "Removed:  Elsewhere", "Hours", "Rules:  1 of the file in place of 0"):
                self.assertIn(line, words)
            former = self.settings.read_text()
            copies = set(self.folder().glob("Before Import*"))
            self.key("alt+y")
            if killed_at:
                self.kill_once_there(killed_at, copies)
                self.program.wait()
                names = self.stored("AcntName1") + self.stored("AcntName2")
                self.assertIn(names, (["Elsewhere"], ["Work", "Home"]))
                if names == ["Elsewhere"]:
                    self.assertEqual(self.settings.read_text(), former)
                else:
                    self.assertEqual((self.folder() / self.stored("Options\\RulesIniFileName")[0]).read_text(), RULES)
                continue
            self.answer("Velmora - Import Successful", "Before Import", "Return", "OK")
            self.button("Save Options")
            self.key("ctrl+1")
            self.see.wait_for("the tabs", lambda: {tab.name for tab in self.see.showing(self.root, self.see.TABS)} ==
                              {"Work", "Home"})
            self.end()
        self.assertEqual(self.stored("AcntPassword2"), ["pa55word"])
        self.assertEqual(self.stored("Options\\Hours"), ["3"])
        copy = (set(self.folder().glob("Before Import*")) - copies).pop()
        self.assertEqual(stat.S_IMODE(copy.stat().st_mode), 0o600)
        self.assertIn("AcntName=Elsewhere\n", copy.read_text())


if __name__ == "__main__":
    unittest.main(warnings="ignore")
