"""A desktop session without X11 that one caller has for itself; it ends with the caller's ExitStack."""
import json
import os

from private_desktop import keep_all_in, open_bus, run_beside, tell

# Tells where it is to be found once it works, and gives way to keys only.
CONFIG = """
xwayland disable
output * resolution 1280x800
bar {{
  swaybar_command swaybar
  tray_output *
}}
bindsym Mod4+q kill
bindsym Mod4+v exec {program} --show
exec echo $WAYLAND_DISPLAY $SWAYSOCK
"""


def open_wayland_desktop(stack, home, program):
    """A compositor with a tray in its bar, where Super+Q closes the window that has the keyboard, and Super+V asks the
    program to show itself. What is started from now on keeps all in `home`. Returns the compositor.
    """
    keep_all_in(home)
    os.environ.pop("DISPLAY", None)
    os.environ |= {"HOME": str(home), "QT_QPA_PLATFORM": "wayland", "WLR_BACKENDS": "headless",
                   "WLR_LIBINPUT_NO_DEVICES": "1", "WLR_RENDERER": "pixman"}
    open_bus(stack)
    config = home / "sway.config"
    config.write_text(CONFIG.format(program=program))
    compositor = run_beside(stack, "sway", "--config", config)
    os.environ |= dict(zip(("WAYLAND_DISPLAY", "SWAYSOCK"), compositor.stdout.readline().split(), strict=True))
    # A keyboard that presses nothing: without it each key would come from one that is plugged in for it and taken away.
    run_beside(stack, "wtype", "-s", "3600000")
    return compositor


def press(*keys):
    """Each is a key's name, behind those that are held meanwhile, as in ctrl+Return."""
    for key in keys:
        *held, name = key.replace("super", "logo").split("+")
        tell("wtype", *(word for each in held for word in ("-M", each)), "-k", name)


def shown_windows():
    """What the compositor says of each window that it shows, by title."""
    left, found = [json.loads(tell("swaymsg", "-t", "get_tree"))], {}
    while left:
        node = left.pop()
        left += node["nodes"] + node["floating_nodes"]
        if "app_id" in node and node["visible"]:
            found[node["name"]] = node
    return found
