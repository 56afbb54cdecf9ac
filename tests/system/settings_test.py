#!/usr/bin/env python3
"""The settings window under a window manager: every setting changed by hand and found again, and the start with the desktop."""
import shutil
import subprocess
import unittest

from monitor import Monitor
from system_test import SystemTest

STORED = {
    "Area": "Seattle Area", "Refresh": "60", "Alert": "99", "KeepPosition": '" 1"', "Colorize": '" 1"', "Color0": '" 1"',
    "Color1": '" 2"', "Color2": '" 3"', "EdgeDetect": '" 2"', "EdgeOffset": "450", "EnableLog": '" 1"', "LogAll": "False",
    "LogCity": "Yucaipa", "EnableAlarmSound": "1", "AlarmTone": "20", "AlarmPeriod": "3", "StrongerDisplay": "1",
    "StartWOS": '" 1"',
}

BOXES = {"Refresh": "60", "Alert on Mag >=": "99", "On edge detection, Move": "450", "Only for zone/city": "Yucaipa", "Alarm Tone": "20", "Repetition": "3"}
TICKED = ("Save size and position", "Colorize Bar tags", "Log", "Start with Windows", "Sound is ")
RECORD_START = """#!/bin/sh
printf '%s' "$0" >"${0%/*}/started"
"""
LAUNCH = "import sys; from gi.repository import Gio; sys.exit(not Gio.DesktopAppInfo.new_from_filename(sys.argv[1]).launch())"


class SettingsWindow(SystemTest):
    def setUp(self):
        super().setUp()
        self.start_mirror()

    @property
    def autostart_entry(self):
        return self.desk.home / ".config/autostart/borvane.desktop"

    def open_settings(self, monitor):
        monitor.press_button("Settings")
        self.desk.activate(self.desk.window(monitor.program, "^Settings$"))

    def click(self, monitor, name, role):
        """Clicks the mark of a box or an option, or the middle of anything else."""
        place = self.desk.find(monitor.program, name, role).get_component_iface().get_extents(self.desk.atspi.CoordType.SCREEN)
        mark = 8
        self.desk.click_at(place.x + (mark if role != "push button" else place.width // 2), place.y + place.height // 2)

    def type(self, monitor, name, text):
        self.click(monitor, name, "text")
        self.desk.press("ctrl+a", *("period" if letter == "." else letter for letter in text), "Tab")

    def change_everything(self, monitor):
        monitor.choose_area("Seattle Area")
        for name in TICKED:
            self.click(monitor, name, "check box")
        for name in ("Ignore", "Only for"):
            self.click(monitor, name, "radio button")
        for name, text in BOXES.items():
            self.type(monitor, name, text)
        colors = ("black", "blue", "red", "green")
        for clicks, label in enumerate(("Magnitude", "Location", "Time"), start=1):
            for click in range(clicks):
                self.click(monitor, f"{label}: {colors[click]}", "push button")
                self.desk.find(monitor.program, f"{label}: {colors[click + 1]}")
        self.click(monitor, "Keep highest Magnitude", "combo box")
        self.desk.click(self.desk.find(monitor.program, "Update on refresh!", "list item"))

    def stored(self, monitor):
        return {name: text for name, text in monitor.settings().items() if name in STORED}

    def quit(self, monitor):
        monitor.press_button("Quit")
        self.wait_until("the end", lambda: monitor.program.poll() is not None)

    def test_finds_every_changed_setting_again_after_a_restart(self):
        monitor = self.start_monitor()
        self.open_settings(monitor)
        self.change_everything(monitor)
        monitor.close_settings()
        self.wait_until("the stored settings", lambda: self.stored(monitor) == STORED)
        self.quit(monitor)

        again = self.start_monitor()
        self.open_settings(again)
        for name in TICKED:
            self.assertTrue(self.desk.is_checked(self.desk.find(again.program, name, "check box")), name)
        self.assertTrue(self.desk.is_checked(self.desk.find(again.program, "Ignore", "radio button")))
        # The stored choice "Only for" is not restored: the timer of the window chooses "All".
        everything = self.desk.find(again.program, "All", "radio button")
        self.wait_until("the choice of everything", lambda: self.desk.is_checked(everything))
        for name, text in BOXES.items():
            box = self.desk.find(again.program, name, "text").get_text_iface()
            self.assertEqual(text, box.get_text(0, -1), name)
        for name in ("Magnitude: blue", "Location: red", "Time: green", "Update on refresh!"):
            self.desk.find(again.program, name)
        self.assertEqual(STORED, self.stored(again))

    def test_starts_with_the_desktop_from_any_folder(self):
        folder = self.folder / "a b 'c' \"d\" $HOME `e` \\f 100%"
        folder.mkdir()
        program = folder / "borvane"
        shutil.copy(self.programs / "borvane", program)
        monitor = Monitor(self.desk, program)
        self.open_settings(monitor)
        self.click(monitor, "Start with Windows", "check box")
        self.wait_until("the autostart entry", self.autostart_entry.exists)
        subprocess.run(["desktop-file-validate", "--warn-kde", self.autostart_entry], check=True)

        self.quit(monitor)
        program.unlink()
        program.write_text(RECORD_START)
        program.chmod(0o755)
        subprocess.run(["/usr/bin/python3", "-c", LAUNCH, self.autostart_entry], check=True)
        self.wait_until("the start", lambda: (folder / "started").exists() and (folder / "started").read_text() == str(program))

    def test_stops_starting_with_the_desktop(self):
        monitor = self.start_monitor()
        self.open_settings(monitor)
        self.click(monitor, "Start with Windows", "check box")
        self.wait_until("the autostart entry", self.autostart_entry.exists)
        subprocess.run(["desktop-file-validate", self.autostart_entry], check=True)
        self.click(monitor, "Start with Windows", "check box")
        self.wait_until("no autostart entry", lambda: not self.autostart_entry.exists())

    def test_leaves_a_hidden_entry_alone_until_the_user_ticks_the_box(self):
        hidden = "[Desktop Entry]\nType=Application\nName=Borvane\nExec=/old/borvane\nHidden=true\n"
        self.autostart_entry.parent.mkdir(parents=True)
        self.autostart_entry.write_text(hidden)
        self.use_settings(StartWOS='" 1"')
        monitor = self.start_monitor()
        self.open_settings(monitor)
        self.assertTrue(self.desk.is_checked(self.desk.find(monitor.program, "Start with Windows", "check box")))
        self.assertEqual(hidden, self.autostart_entry.read_text())

        self.click(monitor, "Start with Windows", "check box")
        self.wait_until("no autostart entry", lambda: not self.autostart_entry.exists())
        self.autostart_entry.write_text(hidden)
        self.click(monitor, "Start with Windows", "check box")
        self.wait_until("the new entry", lambda: self.autostart_entry.read_text() != hidden)
        self.assertIn(f'Exec="{self.programs}/borvane"\n', self.autostart_entry.read_text())
        self.assertNotIn("Hidden", self.autostart_entry.read_text())


if __name__ == "__main__":
    unittest.main()
