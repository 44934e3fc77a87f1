#!/usr/bin/python3
"""Works the built program from outside, as a person with a screen reader does: a check of a real server, and a preview.

Only the system's own Python has what this needs, hence the fixed path above.
"""
import unittest

from built_program import write_settings
from shown_program import ShownProgramTest


KEYS_OF_THE_PAGE = {"Reply": "Ctrl+Shift+R", "Open": "Ctrl+O", "New": "Ctrl+N", "Check": "Ctrl+R", "Check All": "F5"}
KEYS_OF_THE_PREVIEW = {"Save": "Ctrl+S", "Save Original...": "Ctrl+Shift+S", "Print": "Ctrl+P", "Delete": "Del",
                       "Reply": "Ctrl+Shift+R", "Open": "Ctrl+O"}


class ScreenReaderTest(ShownProgramTest):
    SUBJECTS = ("One", "Two", "Three")

    def setUp(self):
        write_settings(self.home, [{"Name": "Work", "Port": self.ports["plain"]}], SortColumn=3, SortOrder=0)
        self.start()

    def tearDown(self):
        self.end()

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
        for name, keys in KEYS_OF_THE_PAGE.items():
            self.assertEqual(self.keys(self.root, name), keys)
        preview = see.showing(self.root, see.BUTTONS, "Preview")[0]
        self.assertFalse(preview.getState().contains(see.pyatspi.STATE_SENSITIVE), "nothing is selected yet")
        messages.addRowSelection(1)
        see.wait_for("Preview to be on", lambda: preview.getState().contains(see.pyatspi.STATE_SENSITIVE))
        see.press(self.root, "Preview")
        body = self.text("Body")
        self.assertEqual(body.strip(), "Text of Three, for every ear.")
        self.assertEqual(self.text("From"), "Zoë <zoe@example.org>")
        self.assertEqual(self.text("Subject"), "Three")
        for name, keys in KEYS_OF_THE_PREVIEW.items():
            self.assertEqual(self.keys(see.window(self.root, "Velmora - Preview"), name), keys)
        tab = see.showing(self.root, see.TABS, "Raw Message")[0]
        tab.queryAction().doAction(0)
        self.assertIn("Content-Type: text/plain; charset=utf-8", self.text("Raw message"))
        see.press(self.root, "Exit Preview")
        see.wait_for("the end of the preview", lambda: not see.showing(self.root, see.BUTTONS, "Exit Preview"))

    def keys(self, window, name):
        return self.see.showing(window, self.see.BUTTONS, name)[0].queryAction().getKeyBinding(0)

    def text(self, name):
        field = self.see.wait_for(name, lambda: self.see.showing(self.root, {self.see.pyatspi.ROLE_TEXT}, name))[0]
        return self.see.wait_for("text", lambda: field.queryText().getText(0, -1))


if __name__ == "__main__":
    unittest.main(warnings="ignore")
