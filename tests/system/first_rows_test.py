#!/usr/bin/env python3
"""What `./run` says when there are no rows."""
import unittest

from first_rows import complaint_of


class FirstRows(unittest.TestCase):
    def test_the_complaint_is_what_the_monitor_logged_last(self):
        self.assertEqual("no data source: b", complaint_of("Qt: x\nborvane: no data source: a\nborvane: no data source: b\nmore\n"))

    def test_no_complaint_is_none(self):
        self.assertIsNone(complaint_of("Qt: no data source: x\nborvane-mirror listening on 127.0.0.1:17650\n"))

    def test_a_complaint_that_is_over_is_none(self):
        self.assertIsNone(complaint_of("borvane: no data source: a\nborvane: the data source is back: b\n"))


if __name__ == "__main__":
    unittest.main()
