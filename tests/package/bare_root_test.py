#!/usr/bin/python3
"""Installs the package in a bare Debian, works the program there as its user does, and removes it: all that may stay is
what the user has.

Usage: tests/package/bare_root_test.py PACKAGE.deb

Needs root. It happens in namespaces of its own, whose end takes all mounts and processes with it.
"""
import configparser
import contextlib
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest

if os.getpid() != 1:
    apart = ["unshare", "--mount", "--pid", "--fork", "--kill-child", "--mount-proc", sys.executable, *sys.argv]
    apart = apart if os.geteuid() == 0 else ["sudo", *apart]
    os.execvp(apart[0], apart)

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "desktop"))
from built_program import PROGRAM as PACKAGE, settings_in, write_settings
from shown_program import MAIL

from private_desktop import let_screen_readers_in, make_folder, open_desktop, serve_mail, tell

USER = "robin"
HOME = pathlib.Path("home") / USER
SOUNDS = HOME / ".local/share/Kestrum/Velmora/Sounds"
OTHERS = {"dev", "home", "proc", "run", "sys", "tmp", "var/cache/apt", "var/lib/apt", "var/log"}


def run(*command, **options):
    done = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, **options)
    if done.returncode != 0:
        raise AssertionError(f"{command} failed:\n{done.stdout}")
    return done.stdout


def sources():
    """Where the machine's own apt has the distribution from, and nothing that others have added."""
    vendor = run("dpkg-vendor", "--query", "Vendor").strip()
    lines = run("apt-get", "indextargets", "--format", "deb $(REPO_URI) $(RELEASE) $(COMPONENT)",
                "Created-By: Packages", "Origin: " + vendor)
    if not lines:
        raise AssertionError("apt knows no packages yet; apt-get update tells it")
    return lines


def mount(stack, *where):
    run("mount", *where)
    stack.callback(run, "umount", "--lazy", where[-1])


def make_root(stack):
    """A Debian in memory with what the package needs, but not the package. Nothing is ever deleted in it by its path:
    what is bound into it is the machine's."""
    root = pathlib.Path(tempfile.mkdtemp(prefix="velmora", dir="/tmp"))
    stack.callback(root.rmdir)
    mount(stack, "-t", "tmpfs", "-o", "mode=755", "velmora", root)
    needed = run("dpkg-deb", "--field", PACKAGE, "Depends")
    satisfy = f'chroot "$1" apt-get --quiet --yes --no-install-recommends satisfy "{needed.strip()}"'
    run("mmdebstrap", "--quiet", "--variant=apt", "--dpkgopt=force-unsafe-io", "--customize-hook=" + satisfy, "", root,
        "-", input=sources())
    run("chroot", root, "useradd", "--create-home", USER)
    for folder in ("dev", "tmp"):
        mount(stack, "--rbind", "/" + folder, root / folder)
    mount(stack, "-t", "proc", "proc", root / "proc")
    return root


def files(root):
    """What is there but for users, and for those who install."""
    found = set()
    for folder, folders, names in os.walk(root):
        here = pathlib.Path(folder).relative_to(root)
        folders[:] = [name for name in folders if str(here / name) not in OTHERS]
        found |= {str(here / name) for name in folders + names}
    return found


class BareRootTest(unittest.TestCase):
    def setUp(self):
        stack = contextlib.ExitStack()
        self.addCleanup(stack.close)
        self.root = make_root(stack)
        self.uid = (self.root / HOME).stat().st_uid
        shutil.copy(PACKAGE, self.root / "home/velmora.deb")
        mail = make_folder(stack) / "mail"
        mail.write_text(MAIL.format(subject="From afar"))
        self.port = serve_mail(stack, "secret", {"robin": [mail]})[1]["tls"]

    def apt(self, *words):
        run("chroot", self.root, "apt-get", "--quiet", "--yes", "--no-install-recommends", *words)

    @contextlib.contextmanager
    def as_user(self):
        """This process is the user, as that user's bus wants it of all that it lets in, but may become root again."""
        os.setgroups([])
        os.setresgid(self.uid, self.uid, 0)
        os.setresuid(self.uid, self.uid, 0)
        try:
            yield
        finally:
            os.setresuid(0, 0, 0)
            os.setresgid(0, 0, 0)

    def enter(self):
        os.seteuid(0)
        os.chroot(self.root)
        os.chdir("/" / HOME)
        os.setresgid(self.uid, self.uid, self.uid)
        os.setresuid(self.uid, self.uid, self.uid)

    def start(self, *words):
        desktop = ("DISPLAY", "DBUS_SESSION_BUS_ADDRESS", "XDG_RUNTIME_DIR", "QT_LINUX_ACCESSIBILITY_ALWAYS_ON")
        environment = {name: os.environ[name] for name in desktop if name in os.environ}
        environment |= {"HOME": str("/" / HOME), "PATH": "/usr/bin:/bin", "LANG": "C.UTF-8"}
        return subprocess.Popen(words, env=environment, preexec_fn=self.enter, text=True,
                                stdout=subprocess.PIPE, stderr=subprocess.PIPE)

    def work(self):
        """Checks a mailbox and opens the help, started by what the desktop's menu has."""
        import screen_reader as see  # finds the bus in the environment
        entry = configparser.RawConfigParser()
        entry.read(self.root / "usr/share/applications/Velmora.desktop")
        program = self.start(*entry["Desktop Entry"]["Exec"].split())
        root = see.wait_for("Velmora", lambda: see.velmora(program.pid))
        see.press(root, "Check All")
        see.wait_for("the end of the check", lambda: see.is_checked(root))
        self.assertEqual(see.messages(root).nRows, 1)
        tell("xdotool", "key", "F1")
        see.wait_for("the help", lambda: see.window(root, "Velmora Help"))
        see.wait_for("its contents", lambda: see.showing(root, see.LISTS, "Contents")[0].childCount > 5)
        tell("scrot", "--overwrite", "/tmp/pkg18/bare.png")
        program.terminate()
        self.assertEqual((program.wait(20), *program.communicate()), (0, "", ""))

    def test_it_comes_works_and_goes(self):
        before = files(self.root)
        self.apt("install", "/home/velmora.deb")
        came = files(self.root) - before
        self.assertIn("usr/bin/Velmora", came)
        with contextlib.ExitStack() as desktop, self.as_user():
            (self.root / HOME / ".config").mkdir()
            write_settings(self.root / HOME / ".config", [{"Name": "Work", "Port": self.port, "Secure": 1}])
            self.assertEqual(self.start("Velmora", "--check").communicate(timeout=60), ("Work - 1 Message\n", ""))
            open_desktop(desktop, make_folder(desktop))
            let_screen_readers_in()
            self.work()
            self.assertEqual(len(list((self.root / SOUNDS).iterdir())), 4)
        self.apt("purge", "velmora")
        self.assertEqual(files(self.root) ^ before, set())
        self.assertTrue(settings_in(self.root / HOME / ".config").exists())


unittest.main()
