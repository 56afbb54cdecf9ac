#!/usr/bin/env python3
"""A long run: as many refreshes as in a week, with the mirror going and coming in between."""
import os
import signal
import time
import unittest
import unittest.mock
from pathlib import Path

from relay import Relay
from system_test import SystemTest

AREA = "Los Angeles"
A_WEEK = 7 * 24 * 3600 // 490  # a refresh every 490 s


class Lasting(SystemTest):
    def test_a_week_of_refreshes_leaks_nothing(self):
        port = self.run_mirror()
        mirror = self.desk.programs[-1]
        self.relay = self.enterContext(Relay(port))
        self.use_hosts(lambda name: f"{name.lower()}.localhost:{self.relay.address.rpartition(':')[2]}")
        # A sanitizer would keep freed memory for a while, to detect its use.
        with unittest.mock.patch.dict(os.environ, ASAN_OPTIONS="quarantine_size_mb=0:thread_local_quarantine_size_kb=0"):
            monitor = self.start_monitor()
        monitor.watch_area(AREA)
        rows = monitor.wait_for_rows()
        self.refresh(monitor, 100)
        self.wait_until("the end of all requests", self.rests)
        memory, files, threads = self.resources(monitor)

        for _ in range(3):
            self.refresh(monitor, A_WEEK // 3)
            mirror.send_signal(signal.SIGKILL)
            mirror.wait()
            monitor.press_key("r")
            self.run_mirror(port=port)
            mirror = self.desk.programs[-1]

        self.refresh(monitor, 10)
        self.wait_until("the end of all requests", self.rests)
        self.wait_until("the rows of the start", lambda: monitor.rows() == rows)
        # There may be fewer: the connection of the headline, which is fetched once, went with the first mirror.
        self.wait_until("the transfers' ends", lambda: self.has_no_more_than(monitor, files, threads))
        few_kilobytes = 4000  # three for each refresh; a page has more
        self.assertLess(self.resources(monitor)[0], memory + few_kilobytes)

    def refresh(self, monitor, times):
        last_page = self.pages() + times
        while (before := self.pages()) < last_page:
            self.desk.activate(monitor.window)
            # A key may meet a refresh that is under way, which then requests no page.
            self.desk.press(*["r"] * 20)
            self.wait_until("a page request", lambda: self.pages() > before)

    def rests(self):
        """Whether no request is left: the last one may be under way, and more keys be waiting for their refresh."""
        before = len(self.relay.requests)
        time.sleep(2)
        return len(self.relay.requests) == before

    def pages(self):
        return sum(request.startswith(b"GET /recenteqs") for request in self.relay.requests)

    def has_no_more_than(self, monitor, files, threads):
        _, files_now, threads_now = self.resources(monitor)
        return files_now <= files and threads_now <= threads

    @staticmethod
    def resources(monitor):
        """The monitor's own memory in kB, its open files, its threads."""
        process = Path("/proc") / str(monitor.program.pid)
        status = dict(line.split(":", 1) for line in (process / "status").read_text().splitlines())
        return int(status["RssAnon"].split()[0]), len(list((process / "fd").iterdir())), int(status["Threads"])


if __name__ == "__main__":
    unittest.main()
