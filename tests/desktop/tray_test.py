#!/usr/bin/python3
"""Runs the built program on desktops with trays of both kinds, and with none, and looks at the screen's own pixels.

Only the system's own Python has what this needs, hence the fixed path above.
"""
import contextlib
import os
import re
import struct
import unittest

from built_program import BuiltProgramTest, write_settings
from gi.repository import Gio, GLib

import private_desktop
from private_desktop import click_tray_icon, make_folder, open_desktop, place_of_tray_icon, rest, run_beside, tell

# The grounds of the plain picture, and of that of no connection.
GROUNDS = {"plain": 0x2F7FD6, "none": 0x64788C}
WHITE = 0xFFFFFF


def let_the_bus_work():
    if not GLib.MainContext.default().iteration(False):
        rest()


def wait_for(what, condition):
    return private_desktop.wait_for(what, condition, rest=let_the_bus_work)


class Screen:
    """The pixels that Xvfb keeps in a file, which is laid out as xwd's are."""

    def __init__(self, folder):
        self.file = folder / "Xvfb_screen0"

    def pixels(self, left, top, width, height):
        content = self.file.read_bytes()
        header = struct.unpack(">25I", content[:100])
        start = header[0] + 12 * header[19]
        for y in range(top, top + height):
            row = start + y * header[12] + 4 * left
            yield from (pixel & WHITE for pixel, in struct.iter_unpack("<I", content[row:row + 4 * width]))


class NotifierHost:
    """A tray on the session bus, watcher and host in one."""

    NAME, PATH = "org.kde.StatusNotifierWatcher", "/StatusNotifierWatcher"
    INTERFACE = Gio.DBusNodeInfo.new_for_xml(f"""<node><interface name="{NAME}">
        <method name="RegisterStatusNotifierItem"><arg type="s" direction="in"/></method>
        <property name="IsStatusNotifierHostRegistered" type="b" access="read"/>
        <signal name="StatusNotifierHostRegistered"/><signal name="StatusNotifierHostUnregistered"/>
        </interface></node>""").interfaces[0]

    def __init__(self, bus):
        self.bus = bus
        self.items = []
        self.is_registered = False
        self.updates = []  # what the program tells of the menu's entries once it has sent them
        bus.signal_subscribe(None, "com.canonical.dbusmenu", "ItemsPropertiesUpdated", None, None, 0,
                             lambda *signal: self.updates.extend(new for _, new in signal[5].unpack()[0]))
        bus.register_object(self.PATH, self.INTERFACE, self.call, lambda *_: GLib.Variant("b", self.is_registered))

    def call(self, bus, sender, path, interface, method, parameters, invocation):
        self.items.append(sender)
        invocation.return_value(None)

    def come(self):
        self.items.clear()
        self.owned = Gio.bus_own_name_on_connection(self.bus, self.NAME, 0)
        self.set_registered(True)  # a moment after the name, as real ones do

    def go(self):
        self.set_registered(False)
        Gio.bus_unown_name(self.owned)

    def set_registered(self, on):
        self.is_registered = on
        signal = "StatusNotifierHostRegistered" if on else "StatusNotifierHostUnregistered"
        self.bus.emit_signal(None, self.PATH, self.NAME, signal)

    def ask(self, path, interface, method, *arguments):
        parameters = GLib.Variant.new_tuple(*arguments)
        return self.bus.call_sync(self.items[0], path, interface, method, parameters, None, 0, 10000).unpack()

    def item(self, name):
        return self.ask("/StatusNotifierItem", "org.freedesktop.DBus.Properties", "Get",
                        GLib.Variant("s", "org.kde.StatusNotifierItem"), GLib.Variant("s", name))[0]

    def activate(self):
        self.ask("/StatusNotifierItem", "org.kde.StatusNotifierItem", "Activate", *[GLib.Variant("i", 0)] * 2)

    def menu(self):
        """The properties of the menu's entries by number, in order."""
        layout = self.ask("/MenuBar", "com.canonical.dbusmenu", "GetLayout", GLib.Variant("i", 0),
                          GLib.Variant("i", -1), GLib.Variant("as", []))
        return {number: properties for number, properties, _ in layout[1][2]}

    def choose(self, entry):
        number = next(number for number, properties in self.menu().items() if properties.get("label") == entry)
        self.ask("/MenuBar", "com.canonical.dbusmenu", "Event", GLib.Variant("i", number),
                 GLib.Variant("s", "clicked"), GLib.Variant("v", GLib.Variant("i", 0)), GLib.Variant("u", 0))


class TrayTest(BuiltProgramTest):
    def setUp(self):
        self.beside = contextlib.ExitStack()
        self.addCleanup(self.beside.close)
        self.home = make_folder(self.beside)
        self.screen = Screen(self.home)
        open_desktop(self.beside, self.home, "-fbdir", self.home)
        wait_for("the window manager", lambda: "window id" in tell("xprop", "-root", "_NET_SUPPORTING_WM_CHECK"))

    def start(self, **options):
        write_settings(self.home, [{"Name": "Work"}], UseInterval=1, Hours=9, **options)
        return super().start()

    def window_state(self, title="Velmora"):
        """What the window manager says of a window of the program's, blank while the window is hidden."""
        for window in re.findall("0x[0-9a-f]+", tell("xprop", "-root", "_NET_CLIENT_LIST")):
            properties = tell("xprop", "-id", window, "WM_NAME", "WM_STATE")
            if f'"{title}"' in properties:
                return next(iter(re.findall("window state: (.*)", properties)), "")
        return ""

    def wait_for_window(self, state, title="Velmora"):
        wait_for("the window to be " + (state or "hidden"), lambda: self.window_state(title) == state)

    def visible_window(self):
        """The program's window among those that the window manager knows; the icon is one as well."""
        known = tell("xprop", "-root", "_NET_CLIENT_LIST")
        windows = tell("xdotool", "search", "--onlyvisible", "--name", "^Velmora$").split()
        return next(window for window in windows if hex(int(window)) in known)

    def place_of_window(self):
        return tell("xdotool", "getwindowgeometry", self.visible_window())

    def close_window(self):
        self.wait_for_window("Normal")
        tell("wmctrl", "-F", "-c", "Velmora")

    def start_tray(self):
        return run_beside(self.beside, "trayer", "--widthtype", "request", "--heighttype", "pixel", "--height", "24")

    def picture(self, pixels):
        """Which of the known pictures it is."""
        pixels = list(pixels)
        counts = {name: pixels.count(ground) for name, ground in GROUNDS.items()}
        best = max(counts, key=counts.get)
        return best if counts[best] > len(pixels) / 8 else None

    def shown_picture(self):
        place = place_of_tray_icon()
        return place and self.picture(self.screen.pixels(*place))

    def menu_is_open(self):
        """While the window is hidden, nothing else of the program is as high."""
        windows = tell("xdotool", "search", "--onlyvisible", "--class", "^Velmora$").split()
        geometries = [tell("xdotool", "getwindowgeometry", window) for window in windows]
        return any(int(height) > 200 for height in re.findall(r"Geometry: \d+x(\d+)", "".join(geometries)))

    def connect_to_bus(self):
        flags = Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION
        address = os.environ["DBUS_SESSION_BUS_ADDRESS"]
        return Gio.DBusConnection.new_for_address_sync(address, flags, None, None)

    def sent_pictures(self, host):
        """The icon's pixels by its width, as the bus sends them."""
        return {width: [pixel & WHITE for pixel, in struct.iter_unpack(">I", bytes(data))]
                for width, height, data in host.item("IconPixmap")}

    def test_without_a_tray_a_closed_window_stays_on_the_task_bar(self):
        program = self.start()
        self.close_window()
        self.wait_for_window("Iconic")
        self.end(program)

    def test_a_tray_that_comes_late_goes_and_comes_back(self):
        program = self.start(MinimizeStartUp=1)
        tray = self.start_tray()
        wait_for("the icon", lambda: self.shown_picture() == "none")
        self.assertEqual(self.window_state(), "")
        click_tray_icon("1")
        self.wait_for_window("Normal")
        window = self.visible_window()
        tell("xdotool", "windowmove", "--sync", window, "111", "77")
        place = self.place_of_window()
        self.close_window()
        self.wait_for_window("")
        tray.kill()
        self.wait_for_window("Iconic")
        self.start_tray()
        self.wait_for_window("")
        wait_for("the icon in the new tray", lambda: self.shown_picture() == "none")
        click_tray_icon("1")
        self.wait_for_window("Normal")
        wait_for("the plain picture", lambda: self.shown_picture() == "plain")
        wait_for("the window where it was", lambda: self.place_of_window() == place)  # some desktops let it fly there
        tell("wmctrl", "-F", "-r", "Velmora", "-b", "add,maximized_vert,maximized_horz")
        wait_for("the large window", lambda: self.place_of_window() != place)
        self.close_window()
        self.wait_for_window("")
        click_tray_icon("1")
        self.wait_for_window("Normal")
        wait_for("the window as it was before", lambda: self.place_of_window() == place)
        tell("xdotool", "windowminimize", window)
        self.wait_for_window("")
        # The keyboard leaves the hidden window a moment later, and would take the menu along.
        wait_for("the keyboard to leave", lambda: window not in tell("xdotool", "getwindowfocus"))
        click_tray_icon("3")
        wait_for("the menu", self.menu_is_open)
        tell("xdotool", "key", "q")
        self.expect_end(program)
        self.assertIsNone(place_of_tray_icon())

    def test_what_is_minimised_with_the_welcome_comes_back_with_it(self):
        titles = ("Velmora", "Velmora - First Time Use")
        self.start_tray()
        program = super().start()
        for minimised in titles * 3:
            for title in titles:
                self.wait_for_window("Normal", title)
            tell("xdotool", "search", "--onlyvisible", "--name", f"^{minimised}$", "windowminimize", "%@")
            for title in titles:
                self.wait_for_window("", title)
            wait_for("the icon", place_of_tray_icon)
            click_tray_icon("1")
        self.wait_for_window("Normal")
        self.end(program)

    def test_a_tray_on_the_bus(self):
        host = NotifierHost(self.connect_to_bus())
        program = self.start(MinimizeStartUp=1)
        host.come()
        wait_for("the icon to register", lambda: host.items)
        wait_for("the picture", lambda: self.picture(self.sent_pictures(host)[16]) == "none")
        pictures = self.sent_pictures(host)
        self.assertEqual(sorted(pictures), [16, 22, 24, 32, 48, 64])
        self.assertEqual({self.picture(pixels) for pixels in pictures.values()}, {"none"})
        self.assertEqual(host.item("ToolTip")[2:], ("No Connection has been established.", ""))
        entries = list(host.menu().values())
        self.assertEqual((entries[0]["label"], entries[3]["type"]), ("_Show Velmora...", "separator"))
        self.assertTrue(all("icon-data" in entry for entry in entries if "label" in entry))
        host.choose("_Auto Check - On")
        told = wait_for("news of the entry", lambda: host.updates)
        self.assertEqual(told[0]["label"], "_Auto Check - Off")
        host.activate()
        self.close_window()
        self.wait_for_window("")
        host.go()
        self.wait_for_window("Iconic")
        host.come()
        wait_for("the icon to register again", lambda: host.items)
        self.wait_for_window("")
        host.activate()
        self.wait_for_window("Normal")
        host.choose("_Quit Application")
        self.expect_end(program)


if __name__ == "__main__":
    unittest.main(warnings="ignore")
