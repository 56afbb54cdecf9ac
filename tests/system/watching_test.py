#!/usr/bin/env python3
"""Watching an area, from the first start on: the monitor against the mirror, with real keys and clicks."""
import html
import re
import unittest
import urllib.request

from system_test import SystemTest

AREA = "Los Angeles"
PATH = "/recenteqs/Maps/Los_Angeles.html"
ROW = re.compile(r'</A> *(\S+) +<A HREF="/([^"]+)">(\S+) (\S+) (\S+) (\S+) ([^<]*)</A> *([^\n<]*)', re.I)


def rows_of_page(port):
    """The rows as the page's reader sees them: magnitude, date, time, latitude, longitude, depth, place, link."""
    request = urllib.request.Request(f"http://127.0.0.1:{port}{PATH}", headers={"Host": "southern.localhost"})
    with urllib.request.urlopen(request, timeout=60) as answer:
        page = answer.read().decode("windows-1252")
    return [[magnitude, *when_and_where, html.unescape(place.strip()), link]
            for magnitude, link, *when_and_where, place in ROW.findall(page)]


class Watching(SystemTest):
    def test_leads_to_the_settings_while_no_area_is_chosen(self):
        self.start_mirror()
        monitor = self.start_monitor()
        monitor.press_button("Auto Refresh")
        self.desk.window(monitor.program, "^Settings$")
        self.assertFalse(monitor.is_down("Auto Refresh"))
        self.assertTrue(monitor.is_down("Settings"))
        self.assertEqual([], monitor.rows())

    def test_shows_the_rows_of_the_mirrors_page(self):
        port = self.start_mirror()
        monitor = self.start_monitor()
        monitor.watch_area(AREA)
        rows = monitor.wait_for_rows()
        expected = rows_of_page(port)
        self.assertGreaterEqual(len(expected), 10)
        self.assertEqual(expected, rows)

    def test_shows_the_newest_event_in_its_own_list(self):
        port = self.start_mirror()
        monitor = self.start_monitor()
        monitor.watch_area(AREA)
        monitor.wait_for_rows()
        magnitude, _, time, *_, place, _ = rows_of_page(port)[0]
        [[shown_magnitude, shown_place, shown_time]] = monitor.last_event()
        self.assertEqual((magnitude, place), (shown_magnitude, shown_place))
        self.assertRegex(shown_time, f"^{time}, [A-Z][a-z][a-z] [0-9][0-9]$")
        self.assertEqual(f"{magnitude} - Borvane - Last Events", monitor.title())

    def test_reports_a_refresh(self):
        self.start_mirror()
        monitor = self.start_monitor()
        self.wait_until("the panel", lambda: monitor.shows("Auto Refresh Off"))
        monitor.watch_area(AREA)
        monitor.wait_for_rows()
        self.wait_until("the panels", lambda: monitor.shows("Last Refresh: ") and monitor.shows("Auto Refresh On"))
        self.assertTrue(monitor.is_down("Auto Refresh"))

    def test_keeps_the_area_over_a_restart(self):
        self.start_mirror()
        monitor = self.start_monitor()
        monitor.watch_area(AREA)
        monitor.wait_for_rows()
        monitor.press_button("Quit")
        self.wait_until("the end", lambda: monitor.program.poll() is not None)
        self.assertEqual(AREA, monitor.settings()["Area"])

        again = self.start_monitor()
        again.press_button("Auto Refresh")
        self.assertGreaterEqual(len(again.wait_for_rows()), 10)
        self.assertNotIn("Settings", self.desk.windows(again.program))

    def test_stores_a_setting_when_its_box_is_left(self):
        self.start_mirror()
        monitor = self.start_monitor()
        monitor.press_button("Settings")
        self.desk.activate(self.desk.window(monitor.program, "^Settings$"))
        self.desk.click(self.desk.find(monitor.program, "Alert on Mag >=", "text"))
        self.desk.press("ctrl+a", "4", "comma", "5", "Tab")
        self.wait_until("the stored magnitude", lambda: monitor.settings().get("Alert") in ('"4,5"', "4,5"))


if __name__ == "__main__":
    unittest.main()
