#!/usr/bin/env python3
"""All areas, one after another in one run of the real monitor: their rows, the read-out of a row, the page that it leads to."""
import html
import re
import unittest
import urllib.parse
import urllib.request
from pathlib import Path

from desk import wait_for
from system_test import SystemTest

ROOT = Path(__file__).parents[2]
MAGNITUDE = re.compile(r"\d+\.\d\*?$")


def areas():
    """The texts of the areas with their paths, without the headings that group them."""
    table = (ROOT / "src/feed/area.h").read_text(encoding="utf-8")
    return re.findall(r'Area\{"([^"*][^"]*)", *\{\{Endpoint::\w+, "([^"]+)"', table)


class Areas(SystemTest):
    def setUp(self):
        super().setUp()
        self.opened = self.catch_opened()
        self.port = self.start_mirror()
        self.monitor = self.start_monitor()

    def switch_to(self, area):
        """Chooses an area in the settings. The first one is shown when the refresh is switched on, the others when the settings close."""
        self.monitor.press_button("Settings")
        settings = self.desk.window(self.monitor.program, "^Settings$")
        self.desk.activate(settings)
        box = self.desk.find(self.monitor.program, role="combo box")
        self.desk.click(box)
        self.desk.press("ctrl+a")
        self.desk.x("xdotool", "type", area)
        self.monitor.press_button("Settings")
        wait_for("the settings to close", lambda: "Settings" not in self.desk.windows(self.monitor.program))
        if not self.monitor.is_down("Auto Refresh"):
            self.monitor.press_button("Auto Refresh")

    def page(self, address):
        """What the browser would show for an address of the mirror."""
        parts = urllib.parse.urlsplit(address)
        self.assertEqual("http", parts.scheme, address)
        request = urllib.request.Request(f"http://127.0.0.1:{self.port}{parts.path}", headers={"Host": parts.netloc})
        with urllib.request.urlopen(request, timeout=60) as answer:
            return html.unescape(answer.read().decode("windows-1252"))

    def rows_of(self, area, before):
        """The rows, as soon as they are not those of the area before."""
        self.switch_to(area)
        return self.wait_until(f"the rows of {area}", lambda: (rows := self.monitor.rows()) != before and rows and
                               self.monitor.shows("Last Refresh: ") and rows)

    def check_rows(self, area, rows):
        for row in rows:
            self.assertRegex(row[0], MAGNITUDE, area)
            self.assertTrue(any(re.search(r"\d:\d\d", text) for text in row), f"{area}: {row}")
        if area == "All Alaska":
            return  # the only event of its table is listed and not passed on, as required
        # The title comes after the rows.
        self.wait_until(f"the title of {area}", lambda: self.monitor.title().startswith(rows[0][0].rstrip("*")))
        self.assertEqual(rows[0][0], self.monitor.last_event()[0][0], area)

    def check_read_out(self, area):
        self.monitor.click_row(0)
        self.wait_until(f"the read-out of {area}", lambda: self.monitor.shows("Depth: ") and self.monitor.shows("latitude: "))
        numbers = re.search(r"latitude: (\S+)    longitude: (\S+)$", next(
            name for name in self.desk.names(self.monitor.program) if name.startswith("latitude: ")))
        self.assertTrue(0 < abs(float(numbers[1])) <= 90, f"{area}: {numbers[0]}")
        self.assertTrue(0 < abs(float(numbers[2])) <= 180, f"{area}: {numbers[0]}")

    def check_page(self, area, row):
        self.opened.unlink(missing_ok=True)
        self.monitor.choose_for_row(0, "More Info")
        self.wait_until(f"the page of {area}", self.opened.exists)
        address = self.opened.read_text(encoding="utf-8").strip()
        link = next(text for text in row if "/Quakes/" in text)
        self.assertTrue(address.endswith(link), f"{area}: {address} for {row}")
        event = re.search(r"/Quakes/(.+)\.html$", urllib.parse.unquote(link))[1]
        page = self.page(address)
        self.assertIn(f"<dt>Id:</dt> <dd>{event}</dd>", page, f"{area}: {address}")
        self.assertIn(f"<h1>Magnitude {row[0].rstrip('*')}, ", page, f"{area}: {address}")

    def test_each_of_them_gives_its_rows_and_their_pages(self):
        self.assertEqual(19, len(areas()))
        rows, page_before = [], None
        for area, path in areas():
            if path == page_before:
                # Several names of one page: its rows do not change.
                self.switch_to(area)
            else:
                rows = self.rows_of(area, rows)
            page_before = path
            with self.subTest(area):
                self.check_rows(area, rows)
                self.check_read_out(area)
                self.check_page(area, rows[0])
                self.assertIsNone(self.monitor.program.poll(), area)


if __name__ == "__main__":
    unittest.main()
