#!/usr/bin/env python3
"""What the monitor sends, and that it stays responsive while it waits: against a server of the test's own."""
import os
import sys
import time
import unittest

from page_server import AREA, PAGE, TARGET, PageServer
from system_test import SystemTest


class Fetching(SystemTest):
    def test_the_target_is_sent_as_built(self):
        server = self.use_server(PageServer(PAGE))
        monitor = self.start_monitor()
        monitor.watch_area(AREA)
        monitor.wait_for_rows()
        self.assertEqual([TARGET], server.pages_requested())
        # The service recognises this call by the blank before its version.
        self.wait_until("the call with a blank", lambda: any(b"cmd=whoson" in target for target in server.targets()))
        [whoson] = [target for target in server.targets() if b"cmd=whoson" in target]
        self.assertIn(b"&AppVersion= 235", whoson)

    def test_no_request_has_a_header_beyond_the_clients_own(self):
        server = self.use_server(PageServer(PAGE))
        server.further_headers = b"Set-Cookie: visit=1; Path=/\r\n"
        monitor = self.start_monitor()
        monitor.watch_area(AREA)
        monitor.wait_for_rows()
        monitor.press_key("r")
        self.wait_until("the second request", lambda: len(server.pages_requested()) == 2)
        for head in server.heads:
            names = {line.partition(b":")[0].lower() for line in head.split(b"\r\n")[1:] if line}
            self.assertEqual({b"host", b"accept"}, names)

    def test_a_failed_request_is_not_sent_again(self):
        server = self.use_server(PageServer())
        server.hangs_up = True
        monitor = self.start_monitor()
        monitor.press_key("u")
        self.assertFalse(monitor.shows("Users Online: "))
        monitor.press_key("f")
        self.wait_until("the label of a failed call", lambda: monitor.shows("Users Online: "))
        self.assertEqual(1, len(server.targets()))

    def test_r_refreshes_at_once(self):
        server = self.use_server(PageServer(PAGE))
        monitor = self.start_monitor()
        monitor.watch_area(AREA)
        monitor.wait_for_rows()
        server.page = PAGE.replace(b"3.1", b"4.2")
        monitor.press_key("r")
        self.wait_until("the new magnitude", lambda: monitor.title().startswith("4.2 - "))
        self.assertEqual([TARGET, TARGET], server.pages_requested())
        self.assertEqual("4.2", monitor.rows()[0][0])

    def test_a_held_key_counts_once_at_its_end(self):
        server = self.use_server(PageServer(PAGE))
        monitor = self.start_monitor()
        self.desk.activate(monitor.window)
        # On a busy machine the release of a repetition comes well before its press.
        for _ in range(os.cpu_count()):
            self.desk.start(sys.executable, "-c", "while True: pass")
        past_the_repeat_delay = 3
        self.desk.x("xdotool", "keydown", "f")
        time.sleep(past_the_repeat_delay)
        self.assertEqual([], server.targets())
        self.desk.x("xdotool", "keyup", "f")
        self.wait_until("the call", server.targets)
        monitor.press_key("u")
        self.wait_until("the users", lambda: monitor.shows("Users Online: 0"))
        self.assertEqual(1, len(server.targets()))

    def test_a_failed_refresh_leaves_the_rows(self):
        server = self.use_server(PageServer(PAGE))
        monitor = self.start_monitor()
        monitor.watch_area(AREA)
        rows = monitor.wait_for_rows()
        server.page = b""
        monitor.press_key("r")
        # The next tick tries again, so the second request has failed by then.
        self.wait_until("the third request", lambda: len(server.pages_requested()) >= 3)
        self.assertEqual(rows, monitor.rows())
        self.assertTrue(monitor.title().startswith("3.1 - "))

    def test_the_window_lives_while_the_answer_is_held(self):
        server = self.use_server(PageServer(PAGE))
        server.hold()
        monitor = self.start_monitor()
        monitor.watch_area(AREA)
        self.wait_until("the request", lambda: server.pages_requested() == [TARGET])

        with self.subTest("takes keys"):
            self.assertFalse(monitor.shows("[ ]"))
            monitor.press_key("F10")
            self.wait_until("the heartbeat", lambda: monitor.shows("[ ]"))

        with self.subTest("moves and repaints"):
            self.assert_moves_and_repaints(monitor)

        self.assertEqual([], monitor.rows())
        server.release()
        self.assertEqual(1, len(monitor.wait_for_rows()))


if __name__ == "__main__":
    unittest.main()
