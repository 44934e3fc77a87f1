"""Runs the built program for tests, which take it as their first argument, with settings that they write."""
import pathlib
import subprocess
import sys
import unittest

PROGRAM = sys.argv.pop(1)
sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "scripts"))


def write_settings(home, accounts=(), **options):
    """Accounts are mappings from names of keys to values; all that is not said of one is taken from a usual one."""
    usual = {"Server": "127.0.0.1", "LoginID": "robin", "Password": "secret"}
    lines = ["[Settings]", "FirstUse=1", f"AcntNum={len(accounts)}"]
    lines += [f"Acnt{key}{number}={value}" for number, account in enumerate(accounts, 1)
              for key, value in (usual | account).items()]
    lines += [f"Options\\{key}={value}" for key, value in options.items()]
    settings_in(home).parent.mkdir(exist_ok=True)
    settings_in(home).write_text("\n".join(lines) + "\n")


def settings_in(home):
    return home / "Kestrum" / "Velmora.conf"


class BuiltProgramTest(unittest.TestCase):
    def start(self, *words):
        process = subprocess.Popen([PROGRAM, *words], stderr=subprocess.PIPE, text=True)
        for end in (process.stderr.close, process.wait, process.kill):
            self.addCleanup(end)
        return process

    def expect_end(self, process):
        self.assertEqual(process.wait(20), 0)
        self.assertEqual(process.stderr.read(), "")

    def end(self, process):
        process.terminate()
        self.expect_end(process)
