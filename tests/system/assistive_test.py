#!/usr/bin/env python3
"""The monitor worked by assistive software alone, which uses neither the mouse nor the keyboard."""
import unittest

from system_test import SystemTest

AREA = "Los Angeles"


class AssistiveSoftware(SystemTest):
    def setUp(self):
        super().setUp()
        self.start_mirror()
        self.use_settings(Area=AREA)
        self.monitor = self.start_monitor()

    def find(self, name, role=None):
        return self.desk.find(self.monitor.program, name, role)

    def wait_for_stored(self, name, text):
        self.wait_until(f"the stored {name}", lambda: self.monitor.settings().get(name) == text)

    def test_switches_the_refresh_on(self):
        self.desk.switch_over(self.find("Auto Refresh"))
        self.assertGreaterEqual(len(self.monitor.wait_for_rows()), 10)
        self.wait_until("the panel", lambda: self.monitor.shows("Auto Refresh On"))
        self.assertTrue(self.monitor.is_down("Auto Refresh"))

    def test_changes_settings_that_are_stored_as_they_change(self):
        self.desk.switch_over(self.find("Settings"))
        self.desk.switch_over(self.find("Log", "check box"))
        self.wait_for_stored("EnableLog", '" 1"')
        self.desk.switch_over(self.find("Log", "check box"))
        self.wait_for_stored("EnableLog", '" 0"')
        self.desk.write(self.find("Alert on Mag >=", "text"), "5")
        self.wait_for_stored("Alert", "5")


if __name__ == "__main__":
    unittest.main()
