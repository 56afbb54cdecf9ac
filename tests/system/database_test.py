#!/usr/bin/env python3
"""Mirrors that keep the events at a database server: several of them share it, it takes no changes for a while, it wants a password."""
import os
import re
import signal
import time
import unittest
import unittest.mock
import urllib.parse
from pathlib import Path

from feed_server import FeedServer, event
from feeding import PATH, read_page, write_configuration
from postgresql import DATABASE, PASSWORD, USER, Postgresql
from system_test import SystemTest

FIRST, SECOND = 0, 1


class DatabaseTest(SystemTest):
    def setUp(self):
        super().setUp()
        self.database = self.enterContext(Postgresql("fsync=off"))
        # One feed, at an address for each mirror: so it is seen who asks.
        events = [event(1, 2.1, "4 km W of Sometown, CA", 30)]
        self.feeds = [self.enterContext(FeedServer(events)) for _ in (FIRST, SECOND)]
        self.ports = {}

    def run_one(self, number, store=None):
        """Starts a mirror and returns its process."""
        file = write_configuration(self.folder / f"{number}.toml", self.feeds[number], store or self.database.address)
        self.ports[number] = self.run_mirror("--config", file)
        return self.desk.programs[-1]

    def start(self, number, store=None):
        """Starts a mirror, waits until it serves the feed's events, and returns its process."""
        mirror = self.run_one(number, store)
        self.wait_for_page(number, "Sometown")
        return mirror

    def page(self, number, path=PATH, host="southern.localhost"):
        return read_page(self.ports[number], path, host)

    def wait_for_page(self, number, text, path=PATH):
        self.wait_until(f"{text} on the page {path} of mirror {number}", lambda: text in self.page(number, path))

    def publish(self, number, place):
        """Puts an event into the feed."""
        events = [event(number, 3.3, f"9 km N of {place}, CA", 1), *self.feeds[FIRST].events]
        for feed in self.feeds:
            feed.events = events

    def has_asked(self, number):
        return len(self.feeds[number].requests) > 0

    def asks(self, number):
        """Whether the mirror itself says that it asks."""
        return "\nborvane_asks_feeds 1\n" in self.page(number, "/metrics")


class Sharing(DatabaseTest):
    def test_one_of_two_asks_and_both_serve_what_it_gets(self):
        self.start(FIRST)
        self.start(SECOND)
        delays = []
        for number, place in enumerate(("Anytown", "Othertown", "Elsewhere"), 2):
            self.publish(number, place)
            self.wait_for_page(FIRST, place)
            served = time.monotonic()
            self.wait_for_page(SECOND, place)
            delays.append(time.monotonic() - served)
        # The second one looks each second. A busy machine may be late, but hardly every time.
        self.assertLess(min(delays), 5, delays)
        self.assertFalse(self.has_asked(SECOND))
        self.assertEqual([True, False], [self.asks(FIRST), self.asks(SECOND)])
        self.assertEqual(["ok\n", "ok\n"], [self.page(FIRST, "/health"), self.page(SECOND, "/health")])

    def test_the_other_one_asks_when_the_one_that_asks_is_killed(self):
        leader = self.start(FIRST)
        self.start(SECOND)
        self.assertFalse(self.has_asked(SECOND))
        leader.send_signal(signal.SIGKILL)
        leader.wait()
        self.wait_until("the other one to ask", lambda: self.has_asked(SECOND))
        self.publish(2, "Latertown")
        self.wait_for_page(SECOND, "Latertown")
        self.assertIn("Sometown", self.page(SECOND))

        self.feeds[FIRST].requests.clear()
        self.start(FIRST)
        self.wait_for_page(FIRST, "Latertown")
        self.assertFalse(self.has_asked(FIRST), "one that comes back leaves the feed to the other one")
        self.assertEqual([False, True], [self.asks(FIRST), self.asks(SECOND)])


class DatabaseWithoutChanges(DatabaseTest):
    """A database that takes none for a while."""

    def let_write(self, off_or_on):
        """Counts for new connections, so all are ended."""
        self.database.execute("set default_transaction_read_only = off;\n"
                              f"alter database {DATABASE} set default_transaction_read_only = {off_or_on};\n"
                              f"select pg_terminate_backend(pid, 5000) from pg_stat_activity where usename = '{USER}';\n")

    def fill(self):
        self.database.execute("create function fail() returns trigger language plpgsql as $$ begin raise exception using errcode = "
                              "'disk_full', message = 'could not extend file'; end $$;\n"
                              "create trigger full_disk before insert or update on borvane_events.event execute function fail();\n"
                              "create trigger full_disk before insert or update on borvane_events.state execute function fail();\n")

    def make_room(self):
        self.database.execute("drop function fail() cascade;\n")

    def check_that_nothing_is_lost(self, spoil, reason, mend):
        mirror = self.start(FIRST)
        spoil()
        self.publish(2, "Latertown")
        self.wait_for_page(FIRST, "Latertown")
        self.wait_for_page(FIRST, "The events' store does not work.", "/health")
        self.publish(3, "Lasttown")
        self.wait_for_page(FIRST, "Lasttown")
        self.assertIn("Sometown", self.page(FIRST))
        self.assertNotIn("works again", self.desk.output_of(mirror))

        mend()
        self.wait_until("the store to work again", lambda: self.page(FIRST, "/health") == "ok\n")
        self.wait_for_page(FIRST, "\nborvane_unwritten_events 0\n", "/metrics")
        address = f"postgresql://{USER}@127.0.0.1:{self.database.port}/{DATABASE}"
        self.assertEqual([f"borvane-mirror: the events' store {address} does not work: ERROR: {reason}",
                          f"borvane-mirror: the events' store {address} works again"],
                         [line for line in self.desk.output_of(mirror).splitlines() if "store" in line])
        # Another one has all of it from the database.
        self.start(SECOND)
        for place in ("Latertown", "Lasttown"):
            self.assertIn(place, self.page(SECOND))
        self.assertFalse(self.has_asked(SECOND))

    def test_loses_nothing_while_it_is_read_only(self):
        self.check_that_nothing_is_lost(lambda: self.let_write("on"), "cannot execute UPDATE in a read-only transaction",
                                        lambda: self.let_write("off"))

    def test_loses_nothing_while_its_disk_is_full(self):
        self.check_that_nothing_is_lost(self.fill, "could not extend file", self.make_room)


class Password(DatabaseTest):
    """The password of the database, for the service's tables and those of the events."""

    def setUp(self):
        super().setUp()
        # Without the password, as it is logged.
        self.address = f"postgresql://{USER}@127.0.0.1:{self.database.port}/{DATABASE}"

    def use_service(self, number):
        return self.page(number, "/cgi-bin/borvane/control.pl?cmd=setonline&macid=1&AppVersion=235", "maker.localhost")

    def assert_prints_nowhere(self, password, mirror, number):
        """Neither in the log nor where others can read it, as it is or as addresses have it."""
        texts = [self.desk.output_of(mirror), Path(f"/proc/{mirror.pid}/cmdline").read_text(encoding="utf-8"),
                 *(self.page(number, path) for path in ("/", PATH, "/health", "/metrics"))]
        for text in texts:
            self.assertNotIn(password, urllib.parse.unquote(text))

    def check_that_it_is_used(self, store):
        mirror = self.start(FIRST, store)
        self.assertEqual("ok", self.use_service(FIRST))
        # The second one has its events from the database.
        self.start(SECOND, store)
        self.assertFalse(self.has_asked(SECOND))

        # What is logged of a server that goes and comes has the address.
        self.database.stop()
        self.wait_for_page(FIRST, "The events' store does not work.", "/health")
        self.assertIn("503", self.use_service(FIRST))
        self.database.start()
        self.wait_until("both stores to work again", lambda: self.use_service(FIRST) == "ok" and self.page(FIRST, "/health") == "ok\n")
        self.assertIn(self.address, self.desk.output_of(mirror))
        self.assert_prints_nowhere(PASSWORD, mirror, FIRST)

    def test_is_taken_from_the_environment_and_printed_nowhere(self):
        with unittest.mock.patch.dict(os.environ, PGPASSWORD=PASSWORD):
            self.check_that_it_is_used(self.address)

    def test_is_taken_from_the_users_file_of_passwords_and_printed_nowhere(self):
        file = self.desk.home / ".pgpass"
        file.write_text(f"127.0.0.1:{self.database.port}:{DATABASE}:{USER}:" + PASSWORD.replace(":", r"\:") + "\n", encoding="utf-8")
        file.chmod(0o600)
        self.check_that_it_is_used(self.address)

    def test_in_the_address_of_the_configuration_is_printed_nowhere(self):
        self.check_that_it_is_used(self.database.address)

    def test_that_is_wrong_is_a_line_in_the_log_without_it(self):
        wrong = "not-the-password"
        with unittest.mock.patch.dict(os.environ, PGPASSWORD=wrong):
            mirror = self.run_one(FIRST, self.address)
        line = f"borvane-mirror: the events' store {self.address} does not work: .*password authentication failed for user"
        self.wait_until("the line in the log", lambda: re.search(line, self.desk.output_of(mirror)))
        self.assertIn("503", self.use_service(FIRST))
        self.wait_for_page(FIRST, "The events' store does not work.", "/health")
        self.assert_prints_nowhere(wrong, mirror, FIRST)

    def test_that_is_missing_is_a_line_in_the_log(self):
        mirror = self.run_one(FIRST, self.address)
        self.wait_until("the line in the log", lambda: "fe_sendauth: no password supplied" in self.desk.output_of(mirror))


if __name__ == "__main__":
    unittest.main()
