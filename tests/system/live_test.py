#!/usr/bin/env python3
"""Today's events, from the feed to the monitor's list: the two real programs and a feed on this computer."""
import os
import signal
import unittest
import unittest.mock

from feed_server import FeedServer, event
from feeding import PATH, read_page, write_configuration
from system_test import SystemTest

AREA = "Los Angeles"


class Live(SystemTest):
    def setUp(self):
        super().setUp()
        self.feed_port = self.reserve_port()
        self.start_feed(event(1, 2.1, "4 km W of Sometown, CA", 30))
        self.addCleanup(self.stop_feed)

    def start_feed(self, *events):
        """Starts the feed, at the port that it had before."""
        self.feed = FeedServer(list(events), self.feed_port).__enter__()

    def stop_feed(self):
        self.feed.__exit__()

    def configure(self, *lines):
        """The file of a mirror that asks the feed, with a store of its own."""
        return write_configuration(self.folder / "mirror.toml", self.feed, self.folder / "service.sqlite", *lines)

    def start_live_mirror(self, *lines):
        self.port = self.start_mirror("--config", self.configure(*lines))
        return self.desk.programs[-1]

    def page(self, path=PATH):
        return read_page(self.port, path)

    def wait_for_page(self, *texts):
        return self.wait_until(f"{texts} on the page", lambda: all(text in (page := self.page()) for text in texts) and page)

    def places(self, monitor):
        return [row[6] for row in monitor.rows()]

    def test_an_event_of_the_feed_is_in_the_list_after_the_next_refresh(self):
        self.start_live_mirror()
        self.wait_for_page("Sometown")
        monitor = self.start_monitor()
        monitor.watch_area(AREA)
        monitor.wait_for_rows()
        self.assertEqual(["4 km ( 2 mi) W of Sometown, CA"], self.places(monitor))

        self.feed.events = [event(2, 3.3, "9 km N of Othertown, CA", 1), *self.feed.events]
        self.wait_for_page("Othertown")
        monitor.press_key("r")
        self.wait_until("the new row", lambda: len(monitor.rows()) == 2)
        self.assertEqual(["9 km ( 6 mi) N of Othertown, CA", "4 km ( 2 mi) W of Sometown, CA"], self.places(monitor))
        self.wait_until("the new magnitude", lambda: monitor.title().startswith("3.3 "))

    def test_a_revised_event_changes_and_one_that_is_taken_back_goes(self):
        kept, revised, gone = (event(number, 2.1, f"4 km W of {place}, CA", 30 * number)
                               for number, place in enumerate(("Kepttown", "Firsttown", "Gonetown"), 1))
        self.feed.events = [kept, revised, gone]
        self.start_live_mirror()
        self.wait_for_page("Kepttown", "Firsttown", "Gonetown")
        revised["properties"].update(place="5 km W of Latertown, CA", mag=2.4, updated=revised["properties"]["updated"] + 1000)
        self.feed.events = [kept, revised]
        page = self.wait_for_page("Latertown")
        self.assertNotIn("Firsttown", page)
        self.assertNotIn("Gonetown", page)
        self.assertIn("Kepttown", page)

    def test_the_last_state_is_served_while_the_feed_is_away_and_over_a_restart(self):
        mirror = self.start_live_mirror()
        self.wait_for_page("Sometown")
        self.stop_feed()
        self.wait_until("the line in the log", lambda: self.feed.address in self.desk.output_of(mirror))
        self.assertIn("Sometown", self.page())
        mirror.send_signal(signal.SIGTERM)
        self.assertEqual(0, mirror.wait(60))

        self.start_live_mirror()
        page = self.wait_for_page("Sometown")
        self.assertRegex(page, r"<p>Data as of \d{4}/\d\d/\d\d \d\d:\d\d:\d\d \(UTC\+00:00\)\.")
        self.start_feed(event(3, 4.1, "9 km N of Newtown, CA", 0), *self.feed.events)
        self.wait_for_page("Newtown", "Sometown")

    def test_the_sample_is_served_until_the_first_answer_and_says_so(self):
        self.stop_feed()
        self.start_live_mirror()
        self.assertIn("These events are a bundled sample, not today's.", self.page())
        self.assertIn("No feed has answered yet.", self.page("/health"))
        self.start_feed(*self.feed.events)
        page = self.wait_for_page("Sometown")
        self.assertNotIn("bundled sample", page)
        self.assertEqual("ok\n", self.page("/health"))

    def test_the_pages_name_the_source_and_tell_blasts_from_earthquakes(self):
        self.feed.events = [event(1, 2.1, "4 km W of Sometown, CA", 30), event(2, 1.6, "1 km S of Quarry, CA", 20, type="quarry blast")]
        mirror = self.start_live_mirror()
        page = self.wait_for_page("Sometown")
        self.assertNotIn("Quarry", page)
        self.assertIn("Source: Network of the tests.", page)
        self.assertIn("<h1>Quarry blast of magnitude 1.6, 1 km (1 mi) S of Quarry, CA</h1>", self.page("/recenteqs/Quakes/tt2.html"))
        self.assertIn("Network of the tests", self.page("/recenteqs/Quakes/tt1.html"))
        self.assertIn("<li>Test: Network of the tests</li>", self.page("/"))
        self.assertRegex(self.page("/metrics"), r'\nborvane_feed_last_success_timestamp_seconds\{feed="1",url="[^"]+"\} [1-9]')

        self.configure("[live]", 'kinds = ["earthquake", "quarry blast"]')
        mirror.send_signal(signal.SIGHUP)
        self.wait_for_page("Sometown", "Quarry")
        self.configure("[live]", 'kinds = ["explosion"]')
        mirror.send_signal(signal.SIGHUP)
        self.wait_until("an empty list", lambda: "Sometown" not in self.page())
        self.configure("[live]", 'kinds = "all"')
        mirror.send_signal(signal.SIGHUP)
        self.wait_for_page("Sometown", "Quarry")

    def test_a_mirror_asks_nobody_when_the_file_of_the_environment_has_it_offline(self):
        with unittest.mock.patch.dict(os.environ, BORVANE_MIRROR_CONFIG=str(self.configure("offline = true"))):
            port = self.run_mirror()
        self.use_hosts(lambda name: f"{name.lower()}.localhost:{port}")
        monitor = self.start_monitor()
        monitor.watch_area(AREA)
        monitor.wait_for_rows()
        self.assertEqual([], self.feed.requests)


if __name__ == "__main__":
    unittest.main()
