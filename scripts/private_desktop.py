"""A desktop session and a POP3 server that one caller has for itself; both end with the caller's ExitStack."""

import os
import pathlib
import re
import subprocess
import tempfile
import time

DOVECOT = pathlib.Path(__file__).with_name("dovecot")


class WaitedInVain(Exception):
    pass


def rest():
    time.sleep(0.05)


def wait_for(what, condition, limit=60, forgive=(), rest=rest):
    """Returns the first true result of a condition. Failures to be forgiven count as none."""
    until = time.monotonic() + limit
    while True:
        try:
            found = condition()
        except forgive:
            found = None
        if found:
            return found
        if time.monotonic() > until:
            raise WaitedInVain(f"waited in vain for {what}")
        rest()


def make_folder(stack):
    """Not below TMPDIR: the path of a socket may have 107 bytes only."""
    return pathlib.Path(stack.enter_context(tempfile.TemporaryDirectory(prefix="velmora", dir="/tmp")))


def run_beside(stack, *command):
    process = subprocess.Popen(command, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
    stack.callback(process.stdout.close)
    stack.callback(process.wait)
    stack.callback(process.terminate)
    return process


def serve_mail(stack, password, mailboxes):
    """Serves mailboxes, each a name and its files. Returns the server's folder and its ports, plain and tls."""
    pop = make_folder(stack)
    pop.chmod(0o711)  # the server is another user
    ports = subprocess.run([DOVECOT, "start", pop], check=True, capture_output=True, text=True).stdout
    stack.callback(subprocess.run, [DOVECOT, "stop", pop], check=True)
    for name, files in mailboxes.items():
        subprocess.run([DOVECOT, "user", pop, name, password], check=True)
        if files:
            subprocess.run([DOVECOT, "deliver", pop, name, *files], check=True)
    return pop, dict(line.split("=") for line in ports.split())


def keep_all_in(home):
    """What is started from now on keeps its settings and all else in this folder."""
    os.environ |= {f"XDG_{folder}": str(home) for folder in ("CONFIG_HOME", "CACHE_HOME", "DATA_HOME", "RUNTIME_DIR")}


def open_screen(stack, *display_options):
    """A display and a bus. What is started from now on finds them in the environment."""
    display = run_beside(stack, "Xvfb", "-displayfd", "1", "-nolisten", "tcp", "-noreset", *display_options)
    os.environ |= {"DISPLAY": ":" + display.stdout.readline().strip(), "QT_QPA_PLATFORM": "xcb"}
    open_bus(stack)


def open_bus(stack, kind="--session"):
    """What is started from now on finds the bus in the environment."""
    bus = run_beside(stack, "dbus-daemon", kind, "--nofork", "--print-address")
    os.environ["DBUS_SESSION_BUS_ADDRESS"] = bus.stdout.readline().strip()


def open_desktop(stack, home, *display_options):
    """A screen with a window manager, for what keeps all in `home`."""
    keep_all_in(home)
    open_screen(stack, *display_options)
    run_beside(stack, "openbox")


def let_screen_readers_in():
    """What is started from now on can be seen and worked through its accessibility tree."""
    os.environ["QT_LINUX_ACCESSIBILITY_ALWAYS_ON"] = "1"


def tell(*command):
    return subprocess.run(command, capture_output=True, text=True, timeout=20).stdout


def place_of_tray_icon():
    """Where trayer shows the program's icon: left, top, width and height."""
    tree = tell("xwininfo", "-root", "-tree")
    found = re.search(r'"panel".*?"Velmora"[^\n]*?(\d+)x(\d+)\+\d+\+\d+ +\+(\d+)\+(\d+)', tree, re.S)
    if not found:
        return None
    width, height, left, top = map(int, found.groups())
    return (left, top, width, height) if width > 1 else None


def click_tray_icon(button):
    left, top, width, height = place_of_tray_icon()
    tell("xdotool", "mousemove", str(left + width // 2), str(top + height // 2), "click", button)
