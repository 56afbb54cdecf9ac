#!/usr/bin/env python3
"""Felt reports of two monitors and one mirror, on a file and on a database server."""
import unittest

from desk import LISTS, wait_for
from monitor import Monitor, write_hosts
from postgresql import Postgresql
from relay import Relay
from system_test import SystemTest

AREA = "Puerto Rico"
TITLE = "^Community Participation$"
THANKS = "Thank you!!               Your report was received!"


class Reports(SystemTest):
    def test_reports_of_two_monitors_are_in_both_lists_with_a_file(self):
        self.check_exchange(self.folder / "service.sqlite")

    def test_reports_of_two_monitors_are_in_both_lists_with_a_database_server(self):
        self.check_exchange(self.enterContext(Postgresql("fsync=off")).address)

    def test_a_service_that_has_gone_leaves_the_thanks_without_their_text(self):
        self.start(self.folder / "service.sqlite")
        monitor = self.start_watching()
        self.fill(monitor, "Jane Doe", "90210")
        self.desk.end(self.mirror)
        self.submit(monitor)
        # The magnitude is there before the first request is sent.
        self.wait_until("the magnitude", lambda: monitor.shows("1.571429"))
        self.wait_until("the end of the attempt", lambda: self.desk.is_enabled(self.button(monitor, "Submit")))
        self.assertFalse(monitor.shows(THANKS))
        self.desk.click(self.button(monitor, "Cancel"))
        self.wait_until("the window to close", lambda: "Community Participation" not in self.desk.windows(monitor.program))

    def check_exchange(self, store):
        self.start(store)
        first = self.start_watching()
        second = self.start_watching("second")
        first.choose_for_row(self.row, "View Reports")
        self.answer(first, "No reports found")
        self.close(first)

        self.fill(first, "Jane Doe", "90210")
        self.submit(first)
        self.wait_until("the thanks", lambda: first.shows(THANKS))
        self.assertTrue(first.shows("1.571429"))
        self.expect_reports(second, ["90210", "1.571429", "1"])

        self.close(second)
        self.fill(second, "John Smith", "90210", tick=True)
        self.submit(second)
        self.wait_until("the thanks", lambda: second.shows(THANKS))
        self.close(first)
        self.expect_reports(first, ["90210", "1.9285715", "2"])

        sent = b"".join(self.relay.requests)
        self.assertEqual(2, sent.count(b"cmd=puta&"))
        self.assertEqual(2, sent.count(b"cmd=putb&"))
        self.assertEqual(2, sent.count(b"cmd=putc&zip=90210&"))
        self.assertNotRegex(sent, b"(?i)jane|smith")
        for monitor in (first, second):
            monitor.press_button("Quit")
            self.wait_until("the end", lambda: monitor.program.poll() is not None)
        self.assertEqual("90210", first.settings()["Tzip"])

    def start(self, store):
        """Starts the mirror with that store, and a relay that records what the monitors send to its service."""
        port = self.run_mirror("--store", store)
        self.mirror = self.desk.programs[-1]
        self.relay = self.enterContext(Relay(port))
        self.host_of = lambda name: self.relay.address if name == "Maker" else f"{name.lower()}.localhost:{port}"

    def start_watching(self, user=None):
        """A monitor with its rows; another user's has settings of its own."""
        command = [self.programs / "borvane"]
        settings_file = self.desk.settings_file
        if user:
            folder = self.folder / user
            settings_file = folder / settings_file.relative_to(self.desk.home / ".config")
            command = ["env", f"XDG_CONFIG_HOME={folder}", *command]
        write_hosts(settings_file, self.host_of, f"Alert=99\nArea={AREA}\n")
        monitor = Monitor(self.desk, *command)
        monitor.press_button("Auto Refresh")
        rows = monitor.wait_for_rows()
        self.row = next(number for number, cells in enumerate(rows) if float(cells[0].rstrip("*")) >= 3)
        return monitor

    def answer(self, monitor, text):
        """Closes a message box by its only button."""
        self.desk.find(monitor.program, text)
        box = self.desk.window(monitor.program, "^Borvane$")
        self.desk.activate(box)
        self.desk.press("Return")
        self.wait_until("the box to close", lambda: box not in monitor.shown_windows())

    def fill(self, monitor, name, zip_code, tick=False):
        """By the keyboard alone: who, where, what the person did, how it felt, on which floor."""
        monitor.choose_for_row(self.row, "Submit Report")
        self.answer(monitor, "Your name will not be sent over the Internet")
        self.desk.activate(self.desk.window(monitor.program, TITLE))
        monitor.fill_report(name, zip_code, tick)

    def button(self, monitor, name):
        return self.desk.find(monitor.program, name, "push button")

    def submit(self, monitor):
        self.wait_until("Submit", lambda: self.desk.is_enabled(self.button(monitor, "Submit")))
        self.desk.click(self.button(monitor, "Submit"))

    def expect_reports(self, monitor, row):
        """Opens what others have reported on the event, in a window that is wide enough for the list, and waits for its only row."""
        monitor.choose_for_row(self.row, "View Reports")
        window = self.desk.window(monitor.program, TITLE)
        self.desk.activate(window)
        self.desk.x("xdotool", "windowsize", "--sync", window, "1100", "391")
        # The window opens before the service has answered.
        self.wait_until(f"the row {row}", lambda: self.desk.rows(self.desk.find(monitor.program, "Reports", LISTS)) == [row])

    def close(self, monitor):
        self.desk.activate(self.desk.window(monitor.program, TITLE))
        self.desk.click(self.button(monitor, "Cancel"))
        wait_for("the window to close", lambda: "Community Participation" not in self.desk.windows(monitor.program))


if __name__ == "__main__":
    unittest.main()
