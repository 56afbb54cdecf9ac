#!/usr/bin/env python3
"""The start of the monitor on each kind of screen that Qt has, and with options on its command line."""
import os
import signal
import subprocess
import unittest

from monitor import TITLE
from page_server import PageServer
from system_test import SystemTest


class Starting(SystemTest):
    def setUp(self):
        super().setUp()
        self.use_server(PageServer(b"nothing"))

    def stored_values(self):
        return self.desk.settings_file.read_text(encoding="utf-8")

    def assert_starts_without_x_server(self, screen):
        """The settings are stored at the start, and the program runs until the test ends it."""
        environment = {name: value for name, value in os.environ.items() if name not in ("DISPLAY", "DBUS_SESSION_BUS_ADDRESS")}
        monitor = self.desk.start(self.programs / "borvane", env=dict(environment, QT_QPA_PLATFORM=screen))
        self.wait_until("the first settings", lambda: "RunTime=" in self.stored_values() or monitor.poll() is not None)
        with self.assertRaises(subprocess.TimeoutExpired, msg=self.desk.output_of(monitor)):
            monitor.wait(1)
        monitor.terminate()
        self.assertEqual(-signal.SIGTERM, monitor.wait(), self.desk.output_of(monitor))

    def test_starts_on_the_offscreen_screen(self):
        self.assert_starts_without_x_server("offscreen")

    def test_starts_on_the_minimal_screen(self):
        self.assert_starts_without_x_server("minimal")

    def test_uses_x11_also_on_a_wayland_desktop(self):
        environment = dict(os.environ, WAYLAND_DISPLAY="wayland-0", XDG_SESSION_TYPE="wayland", XDG_CURRENT_DESKTOP="KDE")
        monitor = self.desk.start(self.programs / "borvane", env=environment)
        self.desk.window(monitor, f"^{TITLE}$")
        # Where Qt tries Wayland, it complains: there is none here.
        self.assertEqual("", self.desk.output_of(monitor))

    def test_uses_the_screen_of_the_users_choice_also_where_there_is_x11(self):
        monitor = self.desk.start(self.programs / "borvane", env=dict(os.environ, QT_QPA_PLATFORM="offscreen"))
        self.wait_until("the first settings", lambda: "RunTime=" in self.stored_values() or monitor.poll() is not None)
        with self.assertRaises(subprocess.TimeoutExpired, msg=self.desk.output_of(monitor)):
            monitor.wait(1)
        self.assertEqual({}, self.desk.windows(monitor))
        self.assertNotIn("QObject", self.desk.output_of(monitor))

    def test_takes_no_options_from_its_command_line(self):
        monitor = self.desk.start(self.programs / "borvane", "-platform", "offscreen", "-qwindowtitle", "Other")
        self.desk.window(monitor, f"^{TITLE}$")


if __name__ == "__main__":
    unittest.main()
