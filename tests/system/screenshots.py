#!/usr/bin/env python3
"""Takes the pictures of the papers: the windows of the real program as a user has them, on a light and on a dark desktop, at 100 % and at
200 %, with the mirror's sample of events.

usage: screenshots.py FOLDER-OF-THE-PROGRAMS FOLDER-FOR-THE-PICTURES
"""
import os
import subprocess
import sys
import tempfile
import time
from pathlib import Path

from desk import Desk, wait_for
from monitor import HOSTS, LATER_START, Monitor

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

    def start_monitor(self, scale=1, dark=False):
        self.desk.settings_file.parent.mkdir(parents=True, exist_ok=True)
        hosts = "".join(f"{name}={name.lower()}.localhost:{self.port}\n" for name in HOSTS)
        self.desk.settings_file.write_text(LATER_START + hosts)
        os.environ.update(QT_SCALE_FACTOR=str(scale), XDG_CURRENT_DESKTOP="KDE" if dark else "", KDE_SESSION_VERSION="5")
        return Monitor(self.desk, self.programs / "borvane")

    def switch_on(self, monitor, scale):
        """A click on the switch. The screen reader's places know of no scale, so its middle is given in the user's pixels."""
        self.desk.activate(monitor.window)
        self.desk.x("xdotool", "mousemove", "--window", monitor.window, str(33 * scale), str(168 * scale), "click", "1")

    def keep(self, name, window):
        """Writes the picture of a window, without the pointer over it and with all that is due painted."""
        self.desk.x("xdotool", "mousemove", "1900", "1290")
        time.sleep(0.7)
        file = self.pictures / f"{name}.png"
        self.desk.screenshot(file, window)
        subprocess.run(["mogrify", "-strip", "+dither", "-colors", "64", "-define", "png:compression-level=9", file], check=True)

    def take(self, shot):
        monitor = self.start_monitor(shot.scale, shot.dark)
        if shot.size:
            self.desk.x("xdotool", "windowsize", "--sync", monitor.window, *map(str, shot.size))
        if shot.rows:
            self.switch_on(monitor, shot.scale)
            wait_for("the rows", lambda: monitor.title()[:1].isdigit())
        self.keep(shot.name, monitor.window)
        self.desk.end(monitor.program)

    def take_settings(self):
        monitor = self.start_monitor()
        monitor.press_button("Settings")
        self.keep("settings", self.desk.window(monitor.program, "^Settings$"))
        self.desk.end(monitor.program)


def main(programs, pictures):
    with tempfile.TemporaryDirectory() as folder, Desk(folder, size="1920x1300x24") as desk:
        write_dark_colours(desk.home / ".config/kdeglobals")
        photographer = Photographer(desk, programs.resolve(), pictures)
        for shot in SHOTS:
            photographer.take(shot)
        photographer.take_settings()


if __name__ == "__main__":
    main(Path(sys.argv[1]), Path(sys.argv[2]))
