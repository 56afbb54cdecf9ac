#!/usr/bin/env python3
"""What `./run` says when there are no rows."""
import errno
import os
import subprocess
import sys
import unittest
import unittest.mock
from pathlib import Path

from desk import wait_for
from first_rows import complaint_of, first_rows
from monitor import NO_ALERT, write_settings
from page_server import PageServer
from system_test import SystemTest

MIRROR_PORT = 17650


class Complaint(unittest.TestCase):
    def test_is_what_the_monitor_logged_last(self):
        self.assertEqual("no data source: b", complaint_of("Qt: x\nborvane: no data source: a\nborvane: no data source: b\nmore\n"))

    def test_is_none_where_there_was_none(self):
        self.assertIsNone(complaint_of("Qt: no data source: x\nborvane-mirror listening on 127.0.0.1:17650\n"))

    def test_that_is_over_is_none(self):
        self.assertIsNone(complaint_of("borvane: no data source: a\nborvane: the data source is back: b\n"))


def server_at_the_mirrors_port():
    """A program that is no mirror at the mirror's port; None while another program has it."""
    try:
        return PageServer(b"nothing", MIRROR_PORT)
    except OSError as error:
        if error.errno != errno.EADDRINUSE:
            raise
        return None


class TakenPort(unittest.TestCase):
    def test_is_the_reason_why_there_are_no_rows(self):
        try:
            server = wait_for("the mirror's port", server_at_the_mirrors_port)
        except TimeoutError:
            self.skipTest(f"port {MIRROR_PORT} belongs to another program on this computer")
        self.enterContext(server)
        results = Path(os.environ["BORVANE_RESULTS"]) / self.id().partition(".")[2]
        script = Path(__file__).with_name("first_rows.py")
        ended = subprocess.run([sys.executable, "-B", script, os.environ["BORVANE_PROGRAMS"], results],
                               capture_output=True, text=True)
        self.assertEqual(1, ended.returncode, ended.stdout)
        self.assertEqual(f"No rows for Los Angeles: no data source: the program that listens at 127.0.0.1:{MIRROR_PORT} is not "
                         f"borvane-mirror\nThe screen is in {results / 'screen.png'}.\n", ended.stderr)
        self.assertEqual("", (results / "rows.txt").read_text())
        self.assertGreater((results / "screen.png").stat().st_size, 0)


class NoSocketFolder(SystemTest):
    def test_is_the_reason_why_there_are_no_rows(self):
        file = self.folder / "no-folder"
        file.touch()
        write_settings(self.desk.settings_file, "[General]\n" + NO_ALERT)
        with unittest.mock.patch.dict(os.environ, XDG_RUNTIME_DIR=str(file), XDG_CACHE_HOME=str(file)):
            rows, reason = first_rows(self.desk, self.programs)
        self.assertEqual([], rows)
        self.assertEqual(f"no data source: neither XDG_RUNTIME_DIR nor {file}/borvane is a folder of this user's own", reason)


if __name__ == "__main__":
    unittest.main()
