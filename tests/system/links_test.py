#!/usr/bin/env python3
"""Every link of the windows, with a program that records addresses in place of the browser."""
import html
import re
import unittest
import urllib.parse
import urllib.request

from monitor import GLOBAL_MENU_KEYS, HOSTS, LATER_START, MENU_KEYS, write_settings
from page_server import AREA
from system_test import SystemTest

BROWSER_HOSTS = ("StrongMotion", "WorldList", "FeltForms")  # those that the mirror plays
PUBLIC_HOSTS = ("Maps", "Encyclopedia", "WebSearch")
COLUMNS = {"latitude": 3, "longitude": 4, "link": 7}


class Links(SystemTest):
    def setUp(self):
        super().setUp()
        self.port = self.run_mirror()
        (self.desk.home / "Documents").mkdir(parents=True)
        self.opened = self.catch_opened()

    def start(self, starts=5, **settings):
        """A monitor with its rows and the headline of the world, after so many earlier starts. The public hosts are the test's own."""
        hosts = {name: f"{name.lower()}.localhost:{self.port}" for name in HOSTS + BROWSER_HOSTS}
        hosts.update({name: f"https://{name.lower()}.test" for name in PUBLIC_HOSTS})
        values = "".join(f"{name}={text}\n" for name, text in settings.items())
        general = LATER_START.partition("\n[Hosts]")[0].replace(f"Area={AREA}\n", "").replace('ad=" 5"', f'ad=" {starts}"')
        write_settings(self.desk.settings_file, f"{general}\nArea={AREA}\n{values}\n[Hosts]\n" +
                       "".join(f"{name}={host}\n" for name, host in hosts.items()))
        self.monitor = self.start_monitor()
        self.monitor.press_button("Auto Refresh")
        self.rows = self.monitor.wait_for_rows()
        self.site = f"http://southern.localhost:{self.port}/"

    def opened_by(self, action):
        """The address that is opened when `action` is done."""
        self.opened.unlink(missing_ok=True)
        action()
        self.wait_until("the address", self.opened.exists)
        return self.opened.read_text(encoding="utf-8").strip()

    def choose_for_row(self, row, entry):
        return lambda: self.monitor.choose_for_row(row, entry)

    def click(self, name):
        def click():
            self.desk.activate(self.monitor.window)
            self.desk.click(self.desk.find(self.monitor.program, name))
        return click

    def page(self, address):
        """What the browser would show for an address of the mirror."""
        parts = urllib.parse.urlsplit(address)
        request = urllib.request.Request(f"http://127.0.0.1:{self.port}{parts.path}", headers={"Host": parts.netloc})
        with urllib.request.urlopen(request, timeout=60) as answer:
            self.assertEqual(200, answer.status)
            return html.unescape(answer.read().decode("windows-1252"))

    def test_the_entries_of_the_lists_menu_lead_to_the_selected_event(self):
        self.start()
        for number in (0, 2):
            row = self.rows[number]
            latitude, longitude, link = (row[COLUMNS[name]] for name in ("latitude", "longitude", "link"))
            self.assertEqual(f"https://maps.test/maps?near={latitude},{longitude}",
                             self.opened_by(self.choose_for_row(number, "Open in Google Maps")))
            address = self.opened_by(self.choose_for_row(number, "More Info"))
            self.assertEqual(self.site + link, address)
            self.assertIn(row[0].rstrip("*"), self.page(address))

    def test_the_keys_open_the_link_of_the_selected_row(self):
        self.start()
        self.monitor.click_row(3)
        self.desk.press("Down")
        menu = self.monitor.open_menu(lambda: self.desk.press("Menu"))
        address = self.opened_by(lambda: self.monitor.press_in_menu(menu, *MENU_KEYS["More Info"], "Return"))
        self.assertEqual(self.site + self.rows[4][COLUMNS["link"]], address)

    def test_the_labels_open_the_log_and_the_help(self):
        self.start(EnableLog=1)
        self.wait_until("the log", lambda: self.desk.is_enabled(self.desk.find(self.monitor.program, "Logs")))
        self.assertEqual((self.desk.home / "Documents/Borvane/quakes.log").as_uri(), self.opened_by(self.click("Logs")))
        for action in (self.click("Help"), lambda: self.monitor.press_key("F1")):
            address = self.opened_by(action)
            self.assertEqual((self.programs / "help.html").resolve().as_uri(), address)
        with urllib.request.urlopen(address) as answer:
            self.assertIn(b"Borvane Help", answer.read())

    def headline(self):
        return next((name for name in self.desk.names(self.monitor.program) if name.startswith("Mag: ")), None)

    def test_the_entries_of_the_headlines_menu_lead_to_the_strongest_event_of_the_world(self):
        self.start()
        headline = self.wait_until("the headline", self.headline)
        place = re.search(r"Where:(.*?).Time", headline)[1].strip()
        quoted = urllib.parse.quote(place, safe="(),;:@&=+$!*'/?#")

        def choose(entry):
            self.desk.activate(self.monitor.window)
            # Its left end: the watermark may cover the rest.
            extents = self.desk.find(self.monitor.program, headline).get_component_iface().get_extents(self.desk.atspi.CoordType.SCREEN)
            menu = self.monitor.open_menu(lambda: self.desk.click_at(extents.x + 20, extents.y + extents.height // 2, button=3))
            self.monitor.press_in_menu(menu, *GLOBAL_MENU_KEYS[entry], "Return")

        info = self.opened_by(lambda: choose("More Info"))
        self.assertTrue(info.startswith(f"http://southern.localhost:{self.port}/"), info)
        magnitude = re.match(r"Mag: *([0-9.]+)", headline)[1]
        self.assertIn(magnitude, self.page(info))
        self.assertEqual(f"https://encyclopedia.test/wiki/Special:Search/{quoted}", self.opened_by(lambda: choose("Consult Wiki")))
        self.assertEqual(f"https://websearch.test/search?q={quoted}%2Bsite:encyclopedia.test",
                         self.opened_by(lambda: choose("Wiki through Google")))

    def click_in(self, window, name, beside=False):
        """Clicks a text in another window of the program, or to the left of it."""
        def click():
            self.desk.activate(window)
            extents = self.desk.find(self.monitor.program, name).get_component_iface().get_extents(self.desk.atspi.CoordType.SCREEN)
            self.desk.click_at(extents.x - 4 if beside else extents.x + extents.width // 2, extents.y + extents.height // 2)
        return click

    def test_the_text_of_the_banner_and_the_box_around_it_lead_to_the_product(self):
        self.start(starts=1)
        banner = self.desk.window(self.monitor.program, "^Borvane $")
        for beside in (False, True):
            address = self.opened_by(self.click_in(banner, "How can your help make a difference", beside))
            self.assertEqual(f"http://maker.localhost:{self.port}/borvane/index.html", address)
            self.assertIn("Borvane", self.page(address))
            self.assertIn("Borvane ", self.desk.windows(self.monitor.program))

    def test_the_address_in_the_about_window_leads_to_the_makers_products(self):
        self.start()
        self.assertNotIn("Borvane ", self.desk.windows(self.monitor.program))
        self.click("Version")()
        about = self.desk.window(self.monitor.program, "^Borvane 2007$")
        address = self.opened_by(self.click_in(about, f"http://maker.localhost:{self.port}"))
        self.assertEqual(f"http://maker.localhost:{self.port}/products.html", address)
        self.assertIn("Borvane", self.page(address))


if __name__ == "__main__":
    unittest.main()
