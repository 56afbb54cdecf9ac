#!/usr/bin/env python3
"""Takes the pictures of the docs: the windows of the real program as a user has them, on a light and on a dark desktop, at 100 % and at
200 %, with the mirror's sample of events.

usage: screenshots.py FOLDER-OF-THE-PROGRAMS FOLDER-FOR-THE-PICTURES
"""
import os
import re
import subprocess
import sys
import tempfile
import time
from pathlib import Path

from desk import Desk, wait_for
from monitor import HOSTS, LATER_START, MENU_KEYS, NO_ALERT, Monitor, write_settings

# The settings of a user whom every event alerts, and an area whose newest one is of some size.
ALERTING_START = LATER_START.replace(NO_ALERT, "Alert=0\n").replace("Los Angeles", '"San Jose, CA"')

# The settings of a user of the bars, with colours of their own.
COLORED_START = LATER_START.replace(NO_ALERT, NO_ALERT + "Colorize=1\nColor0=7\nColor1=15\nColor2=6\n")

# The settings with which the bar ticks so often that it collapses within seconds.
TICKING_START = LATER_START.replace(NO_ALERT, NO_ALERT + "Refresh=20\n")

# The settings of a user who likes lines between the rows.
GRID_START = LATER_START.replace(NO_ALERT, NO_ALERT + "Grid=1\n")

# The settings of a user in an area whose newest event is strong enough to be felt.
FELT_START = LATER_START.replace("Los Angeles", "Puerto Rico")

# The settings of a user who has not seen the banner often enough.
BANNER_START = LATER_START.replace('ad=" 5"', 'ad=" 1"')

# The colours of a dark desktop, in the file in which Qt finds those of KDE.
DARK = {
    "Window": {"BackgroundNormal": "42,46,50", "ForegroundNormal": "252,252,252"},
    "Button": {"BackgroundNormal": "49,54,59", "ForegroundNormal": "252,252,252"},
    "View": {"BackgroundNormal": "27,30,32", "BackgroundAlternate": "35,38,41", "ForegroundNormal": "252,252,252"},
    "Selection": {"BackgroundNormal": "61,174,233", "ForegroundNormal": "252,252,252"},
    "Tooltip": {"BackgroundNormal": "49,54,59", "ForegroundNormal": "252,252,252"},
}


class Shot:
    """One picture: what the window holds, its size in the user's pixels, the desktop's scale and colours."""

    def __init__(self, name, rows=True, size=None, scale=1, dark=False):
        self.name, self.rows, self.size, self.scale, self.dark = name, rows, size, scale, dark


SHOTS = (
    Shot("records"),
    Shot("records-fresh", rows=False),
    Shot("records-narrow", size=(520, 420)),
    Shot("records-wide", size=(1130, 640)),
    Shot("records-200", scale=2),
    Shot("records-dark", dark=True),
    Shot("records-dark-200", rows=False, scale=2, dark=True),
)


def write_dark_colours(file):
    file.write_text("".join(f"[Colors:{part}]\n" + "".join(f"{name}={value}\n" for name, value in colours.items())
                            for part, colours in DARK.items()))


class Photographer:
    def __init__(self, desk, programs, pictures):
        self.desk, self.programs, self.pictures = desk, programs, pictures
        mirror = desk.start(programs / "borvane-mirror", "--listen", "127.0.0.1:0")
        ready = "borvane-mirror listening on 127.0.0.1:"
        wait_for("the mirror", lambda: ready in desk.output_of(mirror))
        self.port = desk.output_of(mirror).partition(ready)[2].split()[0]

    def start_monitor(self, scale=1, dark=False, settings=LATER_START):
        hosts = "".join(f"{name}={name.lower()}.localhost:{self.port}\n" for name in HOSTS)
        write_settings(self.desk.settings_file, settings + hosts)
        os.environ.update(QT_SCALE_FACTOR=str(scale), XDG_CURRENT_DESKTOP="KDE" if dark else "", KDE_SESSION_VERSION="5")
        return Monitor(self.desk, self.programs / "borvane")

    def switch_on(self, monitor, scale):
        """A click on the switch. The screen reader's positions ignore the scale, so its middle is in the user's pixels."""
        self.desk.activate(monitor.window)
        self.desk.x("xdotool", "mousemove", "--window", monitor.window, str(33 * scale), str(168 * scale), "click", "1")

    def keep(self, name, window, edits=(), pointer=("1900", "1290")):
        """Writes the picture of a window, completely painted. The pointer is outside of it if nothing else is given."""
        self.desk.x("xdotool", "mousemove", *pointer)
        time.sleep(0.7)
        file = self.pictures / f"{name}.png"
        self.desk.screenshot(file, window)
        subprocess.run(["mogrify", *edits, "-strip", "+dither", "-colors", "64", "-define", "png:compression-level=9", file], check=True)

    def take(self, shot):
        monitor = self.start_monitor(shot.scale, shot.dark)
        if shot.size:
            self.desk.x("xdotool", "windowsize", "--sync", monitor.window, *map(str, shot.size))
        if shot.rows:
            self.switch_on(monitor, shot.scale)
            wait_for("the rows", lambda: monitor.title()[:1].isdigit())
        self.keep(shot.name, monitor.window)
        self.desk.end(monitor.program)

    def take_list(self, name, dark, opens_menu=False):
        """The list sorted by magnitude, with grid lines and a chosen row; with the row's menu, too."""
        monitor = self.start_monitor(dark=dark, settings=GRID_START)
        self.switch_on(monitor, 1)
        wait_for("the rows", lambda: monitor.title()[:1].isdigit())
        for place, button in (((104, 162), "1"), ((140, 232), "1"), ((140, 232), "3" if opens_menu else "1")):
            self.desk.x("xdotool", "mousemove", "--window", monitor.window, *map(str, place), "click", button)
            time.sleep(0.3)
        if opens_menu:
            geometry = self.desk.x("xwininfo", "-id", monitor.window)
            left, top = (re.search(rf"Absolute upper-left {axis}: +(\d+)", geometry)[1] for axis in "XY")
            self.keep(name, "root", ["-crop", f"735x555+{left}+{top}", "+repage"])
            self.desk.press("Escape")
        else:
            self.keep(name, monitor.window)
        self.desk.end(monitor.program)

    def take_alert(self, name, dark):
        """The popup over the records window, in the middle of the screen."""
        monitor = self.start_monitor(dark=dark, settings=ALERTING_START)
        self.desk.x("xdotool", "windowsize", "--sync", monitor.window, "740", "420")
        self.desk.x("xdotool", "windowmove", "--sync", monitor.window, "590", "440")
        self.switch_on(monitor, 1)
        wait_for("the rows", lambda: monitor.title()[:1].isdigit())
        self.keep(name, "root", ["-crop", "780x480+570+400", "+repage"])
        self.desk.end(monitor.program)

    def take_settings(self, name, scale=1, dark=False):
        """The settings window with its boxes in use; the log and the coordinates are as a start leaves them."""
        monitor = self.start_monitor(scale, dark)
        self.desk.activate(monitor.window)
        self.desk.x("xdotool", "mousemove", "--window", monitor.window, str(33 * scale), str(208 * scale), "click", "1")
        self.keep(name, self.desk.window(monitor.program, "^Settings$"))
        self.desk.end(monitor.program)

    def choose_for_newest(self, monitor, scale, *keys):
        """Chooses an entry of the menu of the newest event, by the keys that lead to it, and returns the number of the report's window."""
        monitor.open_menu(lambda: self.desk.x("xdotool", "mousemove", "--window", monitor.window, str(140 * scale), str(181 * scale),
                                              "click", "3"))
        self.desk.press(*keys, "Return")
        return self.desk.window(monitor.program, "^Community Participation$")

    def take_report(self, name, scale=1, dark=False, sends=False):
        """The felt report as its user fills it, or the thanks for it."""
        monitor = self.start_monitor(scale, dark, FELT_START)
        self.switch_on(monitor, scale)
        wait_for("the rows", lambda: monitor.title()[:1].isdigit())
        window = self.choose_for_newest(monitor, scale, *MENU_KEYS["Submit Report"])
        self.desk.activate(self.desk.window(monitor.program, "^Borvane$"))
        self.desk.press("Return")
        self.desk.activate(window)
        monitor.fill_report("Jane Doe", "00680", tick=True)
        self.desk.x("xdotool", "type", "--delay", "30", "The lamp over the table swung for half a minute.")
        wait_for("Submit", lambda: self.desk.is_enabled(self.desk.find(monitor.program, "Submit", "push button")))
        if sends:
            self.desk.press("Tab", "space")
            wait_for("the thanks", lambda: monitor.shows("Thank you!!"))
        self.keep(name, window)
        self.desk.end(monitor.program)

    def take_report_list(self, name, dark=False):
        """What the users of the pictures before have reported, in a window that has been made wider."""
        monitor = self.start_monitor(dark=dark, settings=FELT_START)
        self.switch_on(monitor, 1)
        wait_for("the rows", lambda: monitor.title()[:1].isdigit())
        window = self.choose_for_newest(monitor, 1, *MENU_KEYS["View Reports"])
        self.desk.x("xdotool", "windowsize", "--sync", window, "1100", "391")
        self.keep(name, window)
        self.desk.end(monitor.program)

    def take_about(self, name, scale=1, dark=False):
        """The about window, after the users online have been counted."""
        monitor = self.start_monitor(scale, dark)
        monitor.press_key("f")
        monitor.press_key("u")
        wait_for("the users", lambda: monitor.shows("Users Online: "))
        self.desk.x("xdotool", "mousemove", "--window", monitor.window, str(31 * scale), str(431 * scale), "click", "1")
        self.keep(name, self.desk.window(monitor.program, "^Borvane 2007$"))
        self.desk.end(monitor.program)

    def take_banner(self, name, scale=1, dark=False):
        monitor = self.start_monitor(scale, dark, BANNER_START)
        self.keep(name, self.desk.window(monitor.program, "^Borvane $"))
        self.desk.end(monitor.program)

    def take_bar(self, name, bar, scale=1, dark=False, settings=LATER_START, pointed=False):
        """A bar with the sample's events; a ticking one when it has collapsed, a pointed one with the pointer over its box."""
        button, title = {"long": (248, "^Form2$"), "short": (288, "^Borvane$")}[bar]
        monitor = self.start_monitor(scale, dark, settings)
        self.switch_on(monitor, scale)
        wait_for("the rows", lambda: monitor.title()[:1].isdigit())
        wait_for("the bars' buttons", lambda: self.desk.is_enabled(self.desk.find(monitor.program, "Short Bar")))
        self.desk.x("xdotool", "mousemove", "--window", monitor.window, str(33 * scale), str(button * scale), "click", "1")
        window = self.desk.window(monitor.program, title)
        if settings == TICKING_START:
            wait_for("the collapse", lambda: self.desk.look(monitor.program, "Menu", "check box") is None)
        if pointed:
            # To the right of its texts. The first move only enters the bar.
            self.desk.x("xdotool", "mousemove", "--window", window, str(440 * scale), str(20 * scale))
            self.keep(name, window, pointer=("--window", window, str(440 * scale), str(10 * scale)))
        else:
            self.keep(name, window)
        self.desk.end(monitor.program)


def main(programs, pictures):
    with tempfile.TemporaryDirectory() as folder, Desk(folder, size="1920x1300x24") as desk:
        write_dark_colours(desk.home / ".config/kdeglobals")
        photographer = Photographer(desk, programs.resolve(), pictures)
        for shot in SHOTS:
            photographer.take(shot)
        photographer.take_list("list-sorted", dark=False)
        photographer.take_list("list-sorted-dark", dark=True)
        photographer.take_list("list-menu", dark=False, opens_menu=True)
        photographer.take_list("list-menu-dark", dark=True, opens_menu=True)
        photographer.take_alert("alert", dark=False)
        photographer.take_alert("alert-dark", dark=True)
        photographer.take_settings("settings")
        photographer.take_settings("settings-200", scale=2)
        photographer.take_settings("settings-dark", dark=True)
        photographer.take_settings("settings-dark-200", scale=2, dark=True)
        for suffix, looks in (("", {}), ("-dark", {"dark": True}), ("-200", {"scale": 2}), ("-dark-200", {"scale": 2, "dark": True})):
            photographer.take_report(f"report{suffix}", **looks)
            photographer.take_report(f"report-thanks{suffix}", sends=True, **looks)
            photographer.take_about(f"about{suffix}", **looks)
            photographer.take_banner(f"banner{suffix}", **looks)
        photographer.take_report_list("report-list")
        photographer.take_report_list("report-list-dark", dark=True)
        photographer.take_bar("short-bar", "short")
        photographer.take_bar("short-bar-colors", "short", settings=COLORED_START)
        photographer.take_bar("short-bar-collapsed", "short", settings=TICKING_START)
        photographer.take_bar("short-bar-open", "short", pointed=True)
        photographer.take_bar("short-bar-open-colors", "short", settings=COLORED_START, pointed=True)
        photographer.take_bar("short-bar-open-dark", "short", dark=True, pointed=True)
        photographer.take_bar("short-bar-dark", "short", dark=True)
        photographer.take_bar("short-bar-dark-200", "short", scale=2, dark=True)
        photographer.take_bar("long-bar", "long")
        photographer.take_bar("long-bar-colors-dark", "long", dark=True, settings=COLORED_START)
        photographer.take_bar("long-bar-200", "long", scale=2)
        photographer.take_bar("long-bar-dark-200", "long", scale=2, dark=True)


if __name__ == "__main__":
    main(Path(sys.argv[1]), Path(sys.argv[2]))
