#!/usr/bin/env python3
"""Hosts that keep the monitor waiting: it stays responsive, one request takes the client over from another, and no refresh begins
inside one that waits."""
import time
import unittest

from page_server import AREA, PAGE, TARGET, Host, PageServer
from system_test import SystemTest


class Takeover(SystemTest):
    def test_r_takes_over_from_a_refresh_that_waits(self):
        server = self.use_server(PageServer(PAGE))
        self.use_settings(Area=AREA)
        server.hold()
        monitor = self.start_monitor()
        monitor.press_key("r")
        self.wait_until("the first request", lambda: server.pages_requested() == [TARGET])
        self.assertEqual([], server.abandoned)

        monitor.press_key("r")
        self.wait_until("the second request", lambda: server.pages_requested() == [TARGET, TARGET])
        self.wait_until("the end of the first one", lambda: server.abandoned == [0])
        self.assert_moves_and_repaints(monitor)
        self.assertEqual([], monitor.rows())

        server.release(first=1)
        self.assertEqual("3.1", monitor.wait_for_rows()[0][0])
        self.wait_until("the time of the second refresh", lambda: monitor.shows("Last Refresh: "))
        # A refresh that has failed is tried again by the very next tick. Had the first one succeeded, or left the timer off, the
        # next try would be 700 ticks away.
        self.wait_until("the next try", lambda: len(server.pages_requested()) == 3)
        self.wait_until("its row", lambda: len(monitor.rows()) == 1)
        self.assertEqual([0], server.abandoned)


class SilentMaker(SystemTest):
    def setUp(self):
        super().setUp()
        self.pages = self.enterContext(PageServer(PAGE))
        self.maker = self.enterContext(Host())
        self.use_hosts(lambda name: (self.maker if name == "Maker" else self.pages).address)
        self.use_settings(Area=AREA, Refresh="0")
        self.monitor = self.start_monitor()
        self.monitor.press_key("r")
        self.monitor.wait_for_rows()
        self.monitor.come_back_from_icon()  # a list that gets the focus while it has rows selects the first one

    def assert_waits_without_harm(self):
        """The timer begins a refresh every ten ticks. The one that waits for the maker is the only one."""
        self.wait_until("a call that waits", self.maker.callers)
        pages = len(self.pages.pages_requested())
        calls = set()
        end = time.monotonic() + 5
        while time.monotonic() < end:
            calls |= self.maker.callers()
            time.sleep(0.05)
        # Each refresh inside another would take the client over for a call of its own. The minute's call for the users online may.
        self.assertLessEqual(len(calls), 2)
        self.assertEqual(pages, len(self.pages.pages_requested()))

        self.assert_moves_and_repaints(self.monitor)
        self.monitor.press_button("Settings")
        self.desk.window(self.monitor.program, "^Settings$")
        self.assertTrue(self.monitor.is_down("Settings"))
        self.assertEqual(pages, len(self.pages.pages_requested()))

        self.maker.answer_again()
        self.wait_until("the page after the call", lambda: len(self.pages.pages_requested()) > pages)
        self.wait_until("its row", lambda: len(self.monitor.rows()) == 1)
        self.wait_until("the next refresh", lambda: len(self.pages.pages_requested()) > pages + 1)

    def test_that_reads_no_request_does_no_harm(self):
        self.maker.fall_silent()
        self.assert_waits_without_harm()

    def test_that_swallows_packets_does_no_harm(self):
        self.maker.swallow_packets()
        self.assert_waits_without_harm()


if __name__ == "__main__":
    unittest.main()
