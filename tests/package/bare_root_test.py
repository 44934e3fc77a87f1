#!/usr/bin/python3
"""Installs the package in a bare Debian, has the program used there, and removes it: all that may stay is what its user
has.

Usage: tests/package/bare_root_test.py PACKAGE.deb

Needs root. It happens in namespaces of its own, whose end takes all mounts and processes with it.
"""
import contextlib
import hashlib
import os
import pathlib
import shlex
import shutil
import signal
import stat
import subprocess
import sys
import tempfile
import unittest

if os.getpid() != 1:
    apart = ["unshare", "--mount", "--pid", "--fork", "--kill-child", "--mount-proc"]
    if os.geteuid() != 0:
        apart = ["sudo", "--preserve-env=http_proxy,https_proxy,no_proxy", *apart]
    if subprocess.run([*apart, "true"]).returncode != 0:
        sys.exit("A bare Debian needs the right to make namespaces, which root has but in containers that withhold it")
    child = subprocess.Popen([*apart, sys.executable, "-B", *sys.argv])
    for number in (signal.SIGHUP, signal.SIGINT, signal.SIGTERM):
        signal.signal(number, lambda *_: child.kill())
    sys.exit(child.wait())

PACKAGE = sys.argv.pop(1)
SHARE = pathlib.Path(__file__).resolve().parents[2] / "share"
SETTINGS = "home/robin/.config/Kestrum/Velmora.conf"
# What the machine has, what users have, and what tells of every installation.
OF_OTHERS = {"dev", "home/robin", "home/velmora.deb", "proc", "run", "sys", "tmp", "etc/ld.so.cache", "var/cache/apt",
             "var/cache/debconf", "var/cache/ldconfig", "var/lib/apt", "var/lib/dpkg", "var/log/apt", "var/log/dpkg.log"}


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
    proxies = [line for line in run("apt-config", "dump", "Acquire").splitlines() if "Proxy" in line]
    run("mmdebstrap", "--quiet", "--variant=apt", "--dpkgopt=force-unsafe-io", *("--aptopt=" + each for each in proxies),
        "--customize-hook=" + satisfy, "", root, "-", input=sources())
    run("chroot", root, "useradd", "--create-home", "--uid=58231", "robin")  # nobody whom the machine knows
    mount(stack, "-t", "proc", "proc", root / "proc")
    mount(stack, "--rbind", "/dev", root / "dev")
    mount(stack, "--bind", "/tmp", root / "tmp")  # where the sockets of display and bus are
    for file in ("passwd", "group"):  # what runs outside for the user must know who that is
        mount(stack, "--bind", root / "etc" / file, "/etc/" + file)
    return root


def look(path):
    """Whose it is, who may do what with it, and what is in it."""
    status = path.lstat()
    content = os.readlink(path) if path.is_symlink() else None
    if stat.S_ISREG(status.st_mode):
        content = hashlib.sha256(path.read_bytes()).hexdigest()
    return status.st_mode, status.st_uid, status.st_gid, content


def files(root):
    """What is there, and what it is."""
    found = {}
    for folder, folders, names in os.walk(root):
        here = pathlib.Path(folder)
        own = {name for name in folders + names if str((here / name).relative_to(root)) not in OF_OTHERS}
        folders[:] = own.intersection(folders)
        found |= {str((here / name).relative_to(root)): look(here / name) for name in own}
    return found


def described():
    """The files that describe the program to desktops and shells, as the package lays them."""
    moved = {"zsh/site-functions": "zsh/vendor-completions", "man1/Velmora.1": "man1/Velmora.1.gz",
             "Velmora.metainfo.xml.in": "example.velmora.Velmora.metainfo.xml"}
    for file in SHARE.rglob("*"):
        if file.is_dir():
            continue
        path = str(file.relative_to(SHARE))
        for here, there in moved.items():
            path = path.replace(here, there)
        yield "usr/share/" + path


class BareRootTest(unittest.TestCase):
    def setUp(self):
        stack = contextlib.ExitStack()
        self.addCleanup(stack.close)
        self.root = make_root(stack)
        shutil.copy(PACKAGE, self.root / "home/velmora.deb")

    def apt(self, *words):
        run("chroot", self.root, "apt-get", "--quiet", "--yes", "--no-install-recommends", *words)

    def use(self):
        """As the user, who may do nothing more than others but enter the root, and read the tests wherever they are."""
        rights = "+sys_chroot,+dac_read_search"
        journey = pathlib.Path(__file__).with_name("installed_program_test.py")
        run("setpriv", "--reuid=robin", "--regid=robin", "--clear-groups", "--inh-caps=" + rights,
            "--ambient-caps=" + rights, sys.executable, "-B", journey, self.root)

    def test_it_comes_is_used_and_goes(self):
        before = files(self.root)
        self.apt("install", "/home/velmora.deb")
        self.assertEqual([each for each in described() if not (self.root / each).is_file()], [])
        self.use()
        self.apt("purge", "velmora")
        after = files(self.root)
        self.assertEqual(sorted(each for each in before | after if before.get(each) != after.get(each)), [])
        self.assertTrue((self.root / SETTINGS).exists())


signal.signal(signal.SIGTERM, signal.default_int_handler)  # the first process of a namespace passes over all others
unittest.main()
