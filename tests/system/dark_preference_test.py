#!/usr/bin/env python3
"""The user's preference for dark windows, which the desktop portal reports."""
import subprocess
import sys
import unittest
from pathlib import Path

from page_server import PageServer
from system_test import SystemTest


class DarkPreference(SystemTest):
    def setUp(self):
        super().setUp()
        self.use_server(PageServer(b"nothing"))

    def start_portal(self, preference):
        """Starts a portal on the desk's bus. A line with a number on its input changes the preference."""
        ready = self.folder / "portal-is-ready"
        self.portal = subprocess.Popen([sys.executable, "-B", Path(__file__).with_name("portal.py"), str(preference), ready],
                                       stdin=subprocess.PIPE, text=True)
        self.addCleanup(self.portal.wait)
        self.addCleanup(self.portal.stdin.close)
        self.wait_until("the portal", ready.exists)

    def prefer(self, preference):
        self.portal.stdin.write(f"{preference}\n")
        self.portal.stdin.flush()

    def is_dark(self, monitor):
        """Whether the window's ground is, at a place without a control."""
        pixel = self.desk.x("import", "-silent", "-window", monitor.window, "-crop", "1x1+2+120", "-format", "%[fx:mean]", "info:-")
        return float(pixel) < 0.5

    def test_windows_are_dark_where_that_is_preferred(self):
        self.start_portal(1)
        monitor = self.start_monitor()
        self.wait_until("the dark window", lambda: self.is_dark(monitor))

    def test_windows_follow_the_preference_while_they_are_open(self):
        self.start_portal(0)
        monitor = self.start_monitor()
        self.prefer(1)
        self.wait_until("the dark window", lambda: self.is_dark(monitor))
        self.prefer(2)
        self.wait_until("the light window", lambda: not self.is_dark(monitor))


if __name__ == "__main__":
    unittest.main()
