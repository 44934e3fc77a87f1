#!/usr/bin/python3
"""Sets every control of the Options page by the keyboard alone, and looks what became of it: on the page, in the files,
in the window, and after the next start.
"""
import os
import pathlib
import unittest

from built_program import write_settings
from shown_program import ShownProgramTest

from private_desktop import tell

# What is pressed at each control that the key Tab leads to, and what the settings hold then. Of each group of buttons,
# Tab leads to the chosen one.
DEEDS = {
    "Run at StartUp": ("space", {"RunStartUp": "0"}),
    "Check for Email at StartUp": ("space", {"EmailCheckStartUp": "1"}),
    "Seconds before the check at start-up": ("ctrl+a 5 7", {"StartUpDelay": "57"}),
    "Minimize Velmora at StartUp": ("space", {"MinimizeStartUp": "1"}),
    "Enable Auto Check Timing Interval": ("space", {"UseInterval": "1"}),
    "Hours of the interval": ("Up Up", {"Hours": "2"}),
    "Minutes of the interval": ("ctrl+a 4 5", {"Minutes": "45"}),
    "Do Not Check in the quiet time": ("space", {"NoCheck": "1"}),
    "Begin of the quiet time": ("Up", {"NoCheckTimeBegin": "01:00"}),
    "End of the quiet time": ("Up Up", {"NoCheckTimeEnd": "02:00"}),
    "Show Auto Check Message after Checking for Email": ("space", {"ShowEmailMsgBox": "1"}),
    "Show the message: Only when New Messages are found": ("Down", {"ShowEmail": "1"}),
    "Seconds for which the Auto Check Message shows": ("ctrl+a 9 9", {"MsgBoxTime": "59"}),
    "Default Email Client": ("CLIENT", {"DefaultClient": "CLIENT"}),
    "Run: Maximized": ("Left", {"RunSize": "1"}),
    "Default Sound": ("SOUND", {"DefaultSound": "SOUND"}),
    "Sound On": ("space", {"PlaySound": "0"}),
    "Seconds of the Connection TimeOut": ("ctrl+a BackSpace 3 0", {"ConnectTimeOut": "30"}),
    "Allow Quick Checking": ("space", {"QuickCheck": "0"}),
    "Delete Messages Confirmation": ("space", {"DeleteConfirmation": "0"}),
    "X Button Minimizes instead of Closing Program": ("space", {"CloseButton": "0"}),
    "Suppress Connection Error Messages": ("space", {"SuppressConnectErrors": "1"}),
    "Suppress Retrieve Error Messages": ("space", {"SuppressRetrieveErrors": "1"}),
    "Theme: Velmora Default": ("Down", {"DTheme": "6"}),
    "Top Colour": ("space COLOUR", {"TopColour": "0"}),
    "Middle Colour": ("space COLOUR", {"MiddleColour": "0"}),
    "Bottom Colour": ("space COLOUR", {"BottomColour": "0"}),
    "Show only New Message Count in the System Tray": ("space", {"ShowNewOnly": "1"}),
    "Always Restore Default Email Message Column Width at StartUp": ("space", {"RestoreColWidth": "0"}),
    "Raised Buttons": ("space", {"ButtonStyle": "1"}),
    "Apply to: Lower": ("Right Right Right", {"ApplyStyle": "3"}),
    "Select None": ("space", {"FromToolTips": "0", "ToToolTips": "0", "SubjectToolTips": "0"}),
    "Use Message Sorting by Columns": ("space", {"MessageSort": "1"}),
    "Sort by: Date": ("Left", {"SortColumn": "3"}),
    "Order: Descending": ("Left", {"SortOrder": "0"}),
    "Tell of New Messages in a Notification": ("space", {"NotifyNew": "1"}),
    "Tell of failures of timed checks in a notification": ("space", {"NotifyFailures": "1"}),
    "Check soon after sleep, and not while offline": ("space", {"FollowMachine": "1"}),
    "Keep the interval across the end of a month": ("space", {"KeepInterval": "1"}),
    "Refuse servers whose certificate can't be trusted": ("space", {"RefuseUntrusted": "1"}),
}


CHOSEN = {
    "Show the message: Only when New Messages are found": "Show the message: When any Messages are found",
    "Run: Maximized": "Run: Normal",
    "Theme: Velmora Default": "Theme: User Colours",
    "Apply to: Lower": "Apply to: All",
    "Sort by: Date": "Sort by: Subject",
    "Order: Descending": "Order: Ascending",
}

BUTTONS = {"Top Colour", "Middle Colour", "Bottom Colour", "Select None"}


class OptionsTest(ShownProgramTest):
    SUBJECTS = ("One",)
    maxDiff = None

    def setUp(self):
        self.client, self.sound = self.home / "client.exe", self.home / "ding.wav"
        self.started = self.home / "started"
        self.client.write_text(f"#!/bin/sh\necho $# > {self.started}\n")
        self.client.chmod(0o700)
        self.sound.write_bytes(b"")
        write_settings(self.home, [{"Name": "Work", "Port": self.ports["plain"]}], MessageSort=0)
        self.start()

    def start(self):
        super().start()
        self.button("Check All")
        self.key("ctrl+4")
        self.wait_for_focus(self.find(self.see.LISTS, "Sections"))

    def press_keys(self, keys):
        for key in keys.split():
            if key in ("CLIENT", "SOUND"):
                tell("xdotool", "type", str(self.client if key == "CLIENT" else self.sound))
            elif key == "COLOUR":
                self.see.wait_for("the dialog", lambda: self.see.window(self.root, "Select Colour"))
                self.key("Return")
                self.see.wait_for("its end", lambda: not self.see.window(self.root, "Select Colour"))
            else:
                self.key(key)

    def state(self, control):
        """What a control shows, as the settings hold it."""
        if control.getRole() in (self.see.pyatspi.ROLE_SPIN_BUTTON, self.see.pyatspi.ROLE_TEXT):
            return control.queryText().getText(0, -1)
        return "1" if self.has(control, "CHECKED") else "0"

    def walk(self, deeds):
        """Goes through all sections by Down and Tab, does what is to be done, and tells what each control has shown."""
        seen = {}
        sections = self.find(self.see.LISTS, "Sections")
        self.key("Home")
        for section in ("StartUp", "Auto Check", "Defaults", "Menu Colours", "Miscellaneous", "About",
                        "Desktop and Security"):
            self.see.wait_for(section, lambda: self.see.showing(self.root, self.see.LABELS, section))
            control = self.tab(sections)
            while control != sections:
                if control.getRole() not in self.see.BUTTONS:
                    seen[control.name] = self.state(control)
                self.press_keys(deeds.get(control.name, ""))
                control = self.next(control)
            self.key("Down")
        return seen

    def next(self, control):
        """The main buttons are passed over: on a changed page they are off."""
        if control.name != "Help" or not self.has(self.button("Email"), "SENSITIVE"):
            return self.tab(self.focused())
        self.key("ctrl+1", "ctrl+4")
        sections = self.find(self.see.LISTS, "Sections")
        self.wait_for_focus(sections)
        return sections

    def cancel(self):
        cancel = self.button("Cancel")
        self.key("shift+Tab", "shift+Tab")
        self.wait_for_focus(cancel)
        self.key("space")
        self.see.wait_for("the end of the changes", lambda: not self.has(cancel, "SENSITIVE"))

    def setting(self, key):
        lines = self.settings.read_text().splitlines()
        return next((line.split("=", 1)[1] for line in lines if line.startswith(f"Options\\{key}=")), None)

    def expected(self):
        paths = {"CLIENT": str(self.client), "SOUND": str(self.sound)}
        return {key: paths.get(value, value) for _, saved in DEEDS.values() for key, value in saved.items()}

    def test_every_control_by_the_keyboard(self):
        entry = pathlib.Path(os.environ["XDG_CONFIG_HOME"]) / "autostart" / "Velmora.desktop"
        entry.parent.mkdir(exist_ok=True)
        entry.touch()
        deeds = {name: keys for name, (keys, _) in DEEDS.items()}
        before = self.walk(deeds)
        self.cancel()
        now = self.walk({})
        self.assertGreater(len(now), 20)
        self.assertEqual(now, {name: before[name] for name in now}, "all is taken back")
        self.assertTrue(entry.exists())

        self.walk(deeds)
        save = self.button("Save Options")
        self.key("ctrl+s")
        self.see.wait_for("the save", lambda: not self.has(save, "SENSITIVE"))
        self.assertEqual({key: self.setting(key) for key in self.expected()}, self.expected())
        self.assertFalse(entry.exists())
        style = next(self.home.rglob("frmMain.ini")).read_text()
        self.assertIn("New3DColor1=0\n", style)
        self.assertTrue(any(label.name.startswith("Auto Check at ") for label in
                            self.see.showing(self.root, self.see.LABELS)))
        self.key("ctrl+1")
        self.press("Start Email Client")
        self.see.wait_for("the client", self.started.exists)
        self.end()

        self.settings.write_text(self.settings.read_text().replace("MinimizeStartUp=1", "MinimizeStartUp=0"))
        self.start()
        seen = self.walk({})
        self.assertEqual(seen["Minimize Velmora at StartUp"], "0", "which was told to the file above")
        for name, (_, saved) in DEEDS.items():
            value = "1" if name in CHOSEN else self.expected()[next(iter(saved))]
            if name not in BUTTONS | {"Minimize Velmora at StartUp"}:
                self.assertEqual(seen[CHOSEN.get(name, name)], value, name)
        self.assertTrue(any(label.name.startswith("StartUp Check: ") for label in
                            self.see.showing(self.root, self.see.LABELS)))
        self.end()


if __name__ == "__main__":
    unittest.main(warnings="ignore")
