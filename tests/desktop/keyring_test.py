#!/usr/bin/python3
"""Moves passwords into a real keyring on a bus of its own and back, with the built program, which is killed on the way,
finds the keyring locked, and finds none.
"""
import contextlib
import re
import subprocess
import unittest

from built_program import PROGRAM, write_settings
from shown_program import ShownProgramTest

from private_desktop import keep_all_in, open_bus, open_screen, run_beside, tell, wait_for

# Nothing but what screen readers need is started by a call on this bus: neither a keyring nor its dialogs.
BUS = """<busconfig><type>session</type><listen>unix:tmpdir=/tmp</listen><servicedir>{}</servicedir>
<policy context="default"><allow send_destination="*" eavesdrop="true"/><allow eavesdrop="true"/><allow own="*"/>
</policy></busconfig>"""
SCREEN_READERS = "/usr/share/dbus-1/services/org.a11y.Bus.service"


def open_quiet_desktop(stack, home):
    keep_all_in(home)
    open_screen(stack)
    (home / "services").mkdir()
    (home / "services" / "one.service").symlink_to(SCREEN_READERS)
    (home / "bus.conf").write_text(BUS.format(home / "services"))
    open_bus(stack, f"--config-file={home}/bus.conf")
    run_beside(stack, "openbox")


def call(service, path, method, *words):
    return tell("gdbus", "call", "--session", "-d", service, "-o", path, "-m", method, *words)


class KeyringTest(ShownProgramTest):
    SUBJECTS = ("One",)
    open_desktop = staticmethod(open_quiet_desktop)

    def setUp(self):
        self.keyring = contextlib.ExitStack()
        self.addCleanup(self.keyring.close)
        self.open_keyring()

    def open_keyring(self):
        daemon = subprocess.Popen(["gnome-keyring-daemon", "--foreground", "--unlock", "--components=secrets"],
                                  stdin=subprocess.PIPE, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        for end in (daemon.wait, daemon.terminate):
            self.keyring.callback(end)
        daemon.stdin.write(b"master")
        daemon.stdin.close()
        wait_for("the keyring", lambda: "true" in call(
            "org.freedesktop.DBus", "/", "org.freedesktop.DBus.NameHasOwner", "org.freedesktop.secrets"))

    def entries(self):
        """What the keyring holds for the program, by key, as others see it."""
        found = subprocess.run(["secret-tool", "search", "--all", "server", "Velmora"], text=True,
                               stdout=subprocess.PIPE, stderr=subprocess.STDOUT).stdout
        return dict(zip(re.findall("^attribute.user = (.*)$", found, re.M), re.findall("^secret = (.*)$", found, re.M)))

    def write_settings(self, count):
        tell("secret-tool", "clear", "server", "Velmora")
        accounts = [{"Name": f"Work{number}", "Port": self.ports["plain"]} for number in range(1, count + 1)]
        write_settings(self.home, accounts, RunStartUp=0)

    def kept(self, key):
        return re.findall(rf"^{key}\d*=(.+)$", self.settings.read_text(), re.M)

    def start(self):
        super().start("--show")
        self.button("Check All")

    def save_choice(self):
        self.key("ctrl+4", "End")
        self.field("Keep passwords in the desktop's keyring").queryAction().doAction(0)
        self.press("Save Options")

    def check(self):
        self.key("ctrl+1")
        self.press("Check All")

    def words_of(self, title, word=""):
        box = self.see.wait_for(title, lambda: self.see.window(self.root, title))
        words = " ".join(label.name for label in self.see.showing(box, self.see.LABELS))
        return words if word in words else None

    def test_there_and_back(self):
        self.write_settings(3)
        self.start()
        self.save_choice()
        wait_for("the move", lambda: self.kept(r"Options\\UseKeyring") == ["1"])
        wait_for("its end", lambda: not self.kept("KeyringSpares"))
        self.assertNotIn("secret", self.settings.read_text())
        self.assertEqual(self.entries(), dict.fromkeys(self.kept("AcntKeyringKey"), "secret"))
        self.end()

        self.start()
        self.check()
        self.see.wait_for("the end of the check", lambda: self.see.is_checked(self.root))
        self.end()
        self.assertEqual(subprocess.run([PROGRAM, "--check"], capture_output=True, timeout=60).returncode, 1)

        call("org.freedesktop.secrets", "/org/freedesktop/secrets", "org.freedesktop.Secret.Service.Lock",
             "['/org/freedesktop/secrets/collection/login']")
        self.start()
        self.save_choice()
        self.assertIn("stay in the keyring.", self.words_of("Velmora - Keyring Error"))
        self.key("Return")
        self.check()
        for number, password in enumerate(("secret", "", ""), 1):
            words = self.see.wait_for("the box", lambda: self.words_of("Velmora - Password Needed", f"Work{number}"))
            self.assertIn("is locked", words)
            self.wait_for_focus(self.field("Password"))
            tell("xdotool", "type", password)
            self.key("Return" if password else "Escape")
        self.see.wait_for("the end of the check", lambda: self.see.showing(self.root, self.see.TABS, "Work1  (1)"))
        self.end()
        self.keyring.close()
        done = subprocess.run([PROGRAM, "--check"], capture_output=True, text=True, timeout=60)
        self.assertEqual(done.returncode, 2)
        self.assertRegex(done.stderr, "^Velmora: Work1: 30010 - The desktop's keyring is not there")

        self.open_keyring()
        self.start()
        self.save_choice()
        wait_for("the way back", lambda: self.kept("AcntPassword") == ["secret"] * 3)
        wait_for("its end", lambda: not self.entries())
        self.assertEqual(self.kept("AcntKeyringKey"), [])
        self.end()

    def test_killed_on_the_way(self):
        moments = {
            "the list of entries": lambda: self.kept("KeyringSpares"),
            "some entries": lambda: len(self.entries()) > 3,
            "the move": lambda: self.kept(r"Options\\UseKeyring") == ["1"],
        }
        for moment, reached in moments.items():
            with self.subTest(moment):
                self.write_settings(40)
                self.start()
                self.save_choice()
                wait_for(moment, reached)
                self.program.kill()
                self.program.wait()
                held = self.entries()
                had = self.kept("AcntPassword") + [held[key] for key in self.kept("AcntKeyringKey")]
                self.assertEqual(had, ["secret"] * 40)
                self.start()
                self.check() if self.kept("AcntKeyringKey") else self.save_choice()
                wait_for("an end without spares", lambda: not self.kept("KeyringSpares"))
                self.assertEqual(self.entries(), dict.fromkeys(self.kept("AcntKeyringKey"), "secret"))
                self.program.kill()


if __name__ == "__main__":
    unittest.main(warnings="ignore")
