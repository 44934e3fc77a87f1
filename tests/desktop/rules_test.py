#!/usr/bin/python3
"""Makes a rule in the built program by the keyboard alone, and follows what it does with the messages of a real server.
"""
import poplib
import unittest

from built_program import write_settings
from shown_program import ShownProgramTest

from private_desktop import tell


class RulesTest(ShownProgramTest):
    SUBJECTS = ("A casino near you", "Minutes of the meeting")

    def setUp(self):
        write_settings(self.home, [{"Name": "Work", "Port": self.ports["plain"]}])
        self.start()

    def focus(self, keys, roles, name):
        self.key(*keys)
        widget = self.find(roles, name)
        self.wait_for_focus(widget)
        return widget

    def tab_to(self, roles, name):
        """Presses Tab until the keyboard is there."""
        widget = self.find(roles, name)
        for _ in range(12):
            now = self.focused()
            if now == widget:
                return widget
            self.tab(now)
        self.fail("Tab doesn't lead to " + name)

    def wait_for_label(self, text):
        self.see.wait_for(text, lambda: self.see.showing(self.root, self.see.LABELS, text))

    def test_a_rule_from_its_first_letter_to_the_deletion(self):
        see = self.see
        self.button("Check All")
        self.key("F5")
        see.wait_for("the end of the check", lambda: see.is_checked(self.root))
        self.key("ctrl+3")
        self.button("Add Rule")
        self.key("ctrl+n")
        name = self.find(see.FIELDS, "Name")
        self.wait_for_focus(name)
        tell("xdotool", "type", "Casinos")
        self.focus(["alt+w"], self.see.BOXES, "From")  # Qt tells of a box by what is chosen there
        self.key("S", "u")
        self.find(self.see.BOXES, "Subject")
        self.focus(["alt+e"], see.FIELDS, "Enter Text...")
        tell("xdotool", "type", "CASINO")
        self.wait_for_label("Not in the rule yet: press Update Description.")
        self.key("Return")
        self.wait_for_label("This rule fits 1 of 2 messages in the lists.")
        self.wait_for_label("1 of 10 Entries")
        self.tab_to(see.BUTTONS, "Show Them")
        self.key("space")
        found = see.wait_for("the list", lambda: see.showing(self.root, see.LISTS, "Messages that the rule fits"))[0]
        self.assertEqual(found.queryTable().getAccessibleAt(0, 2).name, self.SUBJECTS[0])
        self.key("Escape")
        self.tab_to(see.FIELDS, "Show Rule Report Summary")
        self.key("space")
        save = self.button("Save Rules")
        self.key("ctrl+s")
        see.wait_for("the save", lambda: not self.has(save, "SENSITIVE"))
        self.end()

        self.start()
        self.button("Check All")
        self.key("ctrl+3")
        see.wait_for("the rule", lambda: [each.name for each in self.find(see.LISTS, "Rules")] == ["Casinos"])
        self.key("ctrl+1")
        self.find(see.BUTTONS, "Check")
        self.key("F5")
        report = see.wait_for("the report", lambda: see.window(self.root, "Velmora - Rule Report Notification"))
        see.wait_for("the end of the check", lambda: see.is_checked(self.root))
        self.assertTrue(self.has(self.button("Spam"), "SENSITIVE"), "a message is marked")
        tab = see.showing(report, see.TABS, "Mark as Spam")[0]
        see.click(tab)
        see.wait_for("its text", lambda: see.showing(report, see.LABELS, "Work has 1 message"))
        self.press("Delete Now")
        see.wait_for("the deletion", lambda: see.showing(report, see.LABELS, "No Spam Messages to Delete"))
        server = poplib.POP3("127.0.0.1", int(self.ports["plain"]))
        self.addCleanup(server.close)
        server.user("robin")
        server.pass_("secret")
        self.assertEqual(server.stat()[0], 1)
        server.quit()
        self.end()


if __name__ == "__main__":
    unittest.main(warnings="ignore")
