#!/usr/bin/env python3
"""The ways to leave the monitor, and the one that does not."""
import fcntl
import unittest

from monitor import TITLE
from page_server import PageServer
from system_test import SystemTest

QUESTION = "Borvane - Quit"


class Ending(SystemTest):
    def setUp(self):
        super().setUp()
        self.use_server(PageServer(b"nothing"))
        self.monitor = self.start_monitor()

    def is_running(self):
        return self.monitor.program.poll() is None

    def wait_for_the_end(self):
        self.wait_until("the end of the process", lambda: not self.is_running())

    def test_esc_asks_first_and_no_continues(self):
        self.monitor.press_key("Escape")
        self.desk.activate(self.desk.window(self.monitor.program, QUESTION))
        self.desk.click(self.desk.find(self.monitor.program, "No", "push button"))
        self.wait_until("the question to close", lambda: QUESTION not in self.desk.windows(self.monitor.program))
        self.assertTrue(self.is_running())
        self.assertIn(self.monitor.title(), self.desk.windows(self.monitor.program))

    def test_esc_and_yes_end_it(self):
        self.monitor.press_key("Escape")
        self.desk.activate(self.desk.window(self.monitor.program, QUESTION))
        self.desk.click(self.desk.find(self.monitor.program, "Yes", "push button"))
        self.wait_for_the_end()

    def test_esc_closes_the_question_and_does_not_ask_again(self):
        self.monitor.press_key("Escape")
        self.desk.activate(self.desk.window(self.monitor.program, QUESTION))
        self.desk.press("Escape")
        self.wait_until("the question to close", lambda: QUESTION not in self.desk.windows(self.monitor.program))
        self.monitor.press_key("F10")  # a later key is handled, so the release of Esc has been, too
        self.wait_until("the heartbeat", lambda: self.monitor.shows("[ ]"))
        self.assertNotIn(QUESTION, self.desk.windows(self.monitor.program))
        self.assertTrue(self.is_running())

    def test_the_quit_button_ends_it_without_a_question(self):
        self.monitor.press_button("Quit")
        self.wait_for_the_end()

    def test_the_close_box_hides_the_window_and_the_process_continues(self):
        self.desk.activate(self.monitor.window)
        self.desk.press("alt+F4")
        self.wait_until("the window to hide", lambda: TITLE not in self.desk.windows(self.monitor.program))
        self.assertTrue(self.is_running())
        self.wait_until("the program on the bus", lambda: self.desk.application(self.monitor.program))

    def lock_settings(self):
        """Locks the settings file; returns the open lock file, which releases the lock when it is closed."""
        file = open(f"{self.desk.settings_file}.writing", "w")
        self.addCleanup(file.close)
        fcntl.lockf(file, fcntl.LOCK_EX, 1)
        return file

    def stored_area(self):
        return self.monitor.settings().get("Area")

    def test_settings_that_another_program_locks_are_stored_later_or_named_at_the_end(self):
        lock = self.lock_settings()
        self.monitor.press_button("Settings")
        self.monitor.choose_area("Los Angeles")
        self.monitor.close_settings()
        self.assertIsNone(self.stored_area())
        lock.close()
        self.wait_until("the area in the file", lambda: self.stored_area() == "Los Angeles")

        self.lock_settings()
        self.monitor.press_button("Settings")
        self.monitor.choose_area("Seattle Area")
        self.monitor.close_settings()
        self.monitor.press_button("Quit")
        self.wait_for_the_end()
        self.assertEqual("Los Angeles", self.stored_area())
        self.assertRegex(self.desk.output_of(self.monitor.program), r"settings lost, .*Borvane\.conf\.writing: .*Area")


if __name__ == "__main__":
    unittest.main()
