#!/usr/bin/python3
"""Installs the package in a bare Debian, has the program used there, and removes it: all that may stay is what its user
has.

Usage: tests/package/bare_root_test.py PACKAGE.deb

Needs root. It happens in namespaces of its own, whose end takes all mounts and processes with it.
"""
import contextlib
import os
import pathlib
import shlex
import shutil
import signal
import subprocess
import sys
import tempfile
import unittest

if os.getpid() != 1:
    apart = ["unshare", "--mount", "--pid", "--fork", "--kill-child", "--mount-proc", sys.executable, "-B", *sys.argv]
    apart = apart if os.geteuid() == 0 else ["sudo", *apart]
    os.execvp(apart[0], apart)

PACKAGE = sys.argv.pop(1)
SETTINGS = "home/robin/.config/Kestrum/Velmora.conf"
OF_OTHERS = {"dev", "home", "proc", "run", "sys", "tmp", "var/cache/apt", "var/lib/apt", "var/log"}


def run(*command, **options):
    done = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, **options)
    if done.returncode != 0:
        raise AssertionError(f"{shlex.join(map(str, command))} failed:\n{done.stdout}")
    return done.stdout


def sources():
    """Where the machine's own apt has the distribution from, and nothing that others have added."""
    vendor = run("dpkg-vendor", "--query", "Vendor").strip()
    lines = run("apt-get", "indextargets", "--format", "deb $(REPO_URI) $(RELEASE) $(COMPONENT)",
                "Created-By: Packages", "Origin: " + vendor)
    if not lines:
        raise AssertionError("apt knows of no packages yet; apt-get update tells it")
    return lines


def mount(stack, *where):
    run("mount", *where)
    stack.callback(run, "umount", "--lazy", where[-1])


def make_root(stack):
    """A Debian in memory with what the package needs, but not the package. It is never deleted by its path, as what is
    bound into it is the machine's."""
    root = pathlib.Path(tempfile.mkdtemp(prefix="velmora", dir="/tmp"))
    stack.callback(root.rmdir)
    mount(stack, "-t", "tmpfs", "-o", "mode=755", "velmora", root)
    needed = run("dpkg-deb", "--field", PACKAGE, "Depends").strip()
    satisfy = f'chroot "$1" apt-get --quiet --yes --no-install-recommends satisfy "{needed}"'
    run("mmdebstrap", "--quiet", "--variant=apt", "--dpkgopt=force-unsafe-io", "--customize-hook=" + satisfy, "", root,
        "-", input=sources())
    run("chroot", root, "useradd", "--create-home", "robin")
    mount(stack, "-t", "proc", "proc", root / "proc")
    mount(stack, "--rbind", "/dev", root / "dev")
    mount(stack, "--bind", "/tmp", root / "tmp")  # where the sockets of display and bus are
    for file in ("passwd", "group"):  # what runs outside for the user must know who that is
        mount(stack, "--bind", root / "etc" / file, "/etc/" + file)
    return root


def files(root):
    """What is there, but for users and for those who install."""
    found = set()
    for folder, folders, names in os.walk(root):
        here = pathlib.Path(folder).relative_to(root)
        folders[:] = [name for name in folders if str(here / name) not in OF_OTHERS]
        found |= {str(here / name) for name in folders + names}
    return found


class BareRootTest(unittest.TestCase):
    def setUp(self):
        stack = contextlib.ExitStack()
        self.addCleanup(stack.close)
        self.root = make_root(stack)
        shutil.copy(PACKAGE, self.root / "home/velmora.deb")

    def apt(self, *words):
        run("chroot", self.root, "apt-get", "--quiet", "--yes", "--no-install-recommends", *words)

    def use(self):
        """As the user, who may do nothing more than others but enter the root."""
        journey = pathlib.Path(__file__).with_name("installed_program_test.py")
        run("setpriv", "--reuid=robin", "--regid=robin", "--clear-groups", "--inh-caps=+sys_chroot",
            "--ambient-caps=+sys_chroot", sys.executable, "-B", journey, self.root)

    def test_it_comes_is_used_and_goes(self):
        before = files(self.root)
        self.apt("install", "/home/velmora.deb")
        self.use()
        self.apt("purge", "velmora")
        self.assertEqual(files(self.root) ^ before, set())
        self.assertTrue((self.root / SETTINGS).exists())


signal.signal(signal.SIGTERM, signal.default_int_handler)  # the first process of a namespace passes over all others
unittest.main()
