#!/usr/bin/env python3
"""The monitor and the maker's service, on a file and on a database server: what goes over the wire, and what the user sees."""
import contextlib
import signal
import socket
import unittest

from postgresql import Postgresql
from relay import Relay
from system_test import SystemTest

AREA = "Los Angeles"
SCRIPT = "/cgi-bin/borvane/control.pl"


class Service(SystemTest):
    def test_presence_on_a_file(self):
        self.check_presence(self.folder / "service.sqlite")

    def test_presence_on_a_database_server(self):
        self.check_presence(self.enterContext(Postgresql("fsync=off")).address)

    def test_a_newer_version_is_reported_once_the_refresh_is_on(self):
        opened = self.catch_opened()
        monitor = self.start_with_a_newer_version()
        self.desk.press("Escape")
        self.wait_until("the users", lambda: any(b"cmd=whoson" in request for request in self.relay.requests))
        self.assertGreaterEqual(len(monitor.rows()), 10)
        self.assertFalse(opened.exists())

    def test_the_page_of_a_newer_version_opens_in_the_browser(self):
        opened = self.catch_opened()
        self.start_with_a_newer_version()
        self.desk.press("Return")
        self.wait_until("the browser", opened.exists)
        self.assertEqual(f"http://{self.relay.address}/borvane/\n", opened.read_text())

    def test_a_service_whose_store_fails_has_no_users(self):
        self.start_service("/dev/null/service.sqlite")
        monitor = self.start_monitor()
        monitor.press_key("u")
        self.wait_for_users(monitor, "Users Online: 0")

    def test_a_service_that_dies_and_comes_back_is_a_number_that_goes_and_comes(self):
        for name, use_store in (("file", lambda: contextlib.nullcontext(self.folder / "service.sqlite")),
                                ("server", lambda: self.as_address(Postgresql("fsync=off")))):
            with self.subTest(name), use_store() as store:
                mirror = self.start_service(store)
                monitor = self.start_monitor()
                monitor.press_key("u")
                self.wait_for_users(monitor, "Users Online: 1")

                mirror.send_signal(signal.SIGKILL)
                mirror.wait()
                self.wait_for_users(monitor, "Users Online:")

                self.run_mirror("--store", store, port=self.mirror_port)
                self.ask("cmd=setonline&macid=1000000&AppVersion=235")
                self.wait_for_users(monitor, "Users Online: 2")
                monitor.press_button("Quit")
                self.wait_until("the end", lambda: monitor.program.poll() is not None)

    def check_presence(self, store):
        self.start_service(store)
        # Every tenth run is counted by the service.
        self.use_settings(RunTime=9)
        monitor = self.start_monitor()
        monitor.watch_area(AREA)
        monitor.wait_for_rows()
        self.wait_until("the users", lambda: len(self.relay.requests) >= 4)
        macid = monitor.settings()["MacID"]
        self.assertRegex(macid, "^[1-9][0-9]{0,5}$")
        self.assertEqual([self.request(f"{SCRIPT}?cmd=setonline&macid={macid}&AppVersion=235"),
                          self.request(f"{SCRIPT}?cmd=add&macid={macid}"),
                          self.request("/borvane/version.txt"),
                          self.request(f"{SCRIPT}?cmd=whoson&macid={macid}&AppVersion= 235")], self.relay.requests)

        self.assertEqual(b"ok", self.ask("cmd=setonline&macid=1000000&AppVersion=235"))
        self.assertFalse(monitor.shows("Users Online: "))
        monitor.press_key("u")
        self.wait_for_users(monitor, "Users Online: 2")

        # Only the first refresh of a run counts it.
        monitor.press_key("r")
        self.wait_until("the second refresh", lambda: b"cmd=setonline" in self.relay.requests[-1])
        self.assertEqual(1, sum(b"cmd=add" in request for request in self.relay.requests))

        monitor.press_button("Quit")
        self.wait_until("the end", lambda: monitor.program.poll() is not None)
        self.assertEqual(macid, monitor.settings()["MacID"])
        self.assertEqual(b"2", self.ask(f"cmd=whoson&macid={macid}&AppVersion= 235"))

    def start_with_a_newer_version(self):
        """A monitor that has just asked whether to open the newer version's page."""
        self.start_service(self.folder / "service.sqlite", "--newest-version", "2.10.0")
        monitor = self.start_monitor()
        monitor.watch_area(AREA)
        question = self.desk.window(monitor.program, "^Software Update$")
        self.desk.find(monitor.program, "A new version of Borvane is available.\nPress Ok to open Borvane website")
        self.desk.activate(question)
        return monitor

    def start_service(self, store, *options):
        """Starts a mirror with that store and a relay between the monitor and its service, which records the requests."""
        self.mirror_port = self.run_mirror("--store", store, *options)
        self.relay = self.enterContext(Relay(self.mirror_port))
        self.use_hosts(lambda name: self.relay.address if name == "Maker" else f"{name.lower()}.localhost:{self.mirror_port}")
        return self.desk.programs[-1]

    def wait_for_users(self, monitor, text):
        """Requests the number of users until the label shows it."""
        def look():
            monitor.press_key("f")
            return text in (name.strip() for name in self.desk.names(monitor.program))
        self.wait_until(text, look)

    def request(self, target):
        """Everything that the monitor sends for a target."""
        return f"GET {target} HTTP/1.1\r\nHost: {self.relay.address}\r\nAccept: */*\r\n\r\n".encode()

    def ask(self, query):
        """What the service answers another client."""
        with socket.create_connection(("127.0.0.1", self.mirror_port), timeout=60) as client:
            client.sendall(f"GET {SCRIPT}?{query} HTTP/1.1\r\nHost: maker.localhost\r\nConnection: close\r\n\r\n".encode())
            answer = b"".join(iter(lambda: client.recv(65536), b""))
        return answer.partition(b"\r\n\r\n")[2]

    @staticmethod
    @contextlib.contextmanager
    def as_address(server):
        with server:
            yield server.address


if __name__ == "__main__":
    unittest.main()
