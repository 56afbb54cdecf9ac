#!/usr/bin/env python3
"""The mirror that the monitor starts itself, where its user has a configuration file for mirrors."""
import os
import socket
import unittest
import unittest.mock

from desk import wait_for
from monitor import NO_ALERT, write_settings
from system_test import SystemTest

AREA = "Los Angeles"
USUAL_PORT = 17650


def is_free(port):
    with socket.socket() as client:
        return client.connect_ex(("127.0.0.1", port)) != 0


class OwnMirror(SystemTest):
    def setUp(self):
        super().setUp()
        try:
            wait_for("the mirror's port", lambda: is_free(USUAL_PORT))
        except TimeoutError:
            self.skipTest(f"port {USUAL_PORT} belongs to another program on this computer")
        write_settings(self.desk.settings_file, "[General]\n" + NO_ALERT)

    def test_is_where_the_monitor_looks_whatever_its_configuration_says(self):
        elsewhere = self.reserve_port()
        file = self.folder / "mirror.toml"
        file.write_text(f'offline = true\nlisten = "127.0.0.1:{elsewhere}"\nattended = "no-folder"\nstore = "of-the-file.sqlite"\n',
                        encoding="utf-8")
        with unittest.mock.patch.dict(os.environ, BORVANE_MIRROR_CONFIG=str(file)):
            monitor = self.start_monitor()
        monitor.watch_area(AREA)
        self.assertGreaterEqual(len(monitor.wait_for_rows()), 10)
        self.assertTrue(is_free(elsewhere))
        self.assertFalse(is_free(USUAL_PORT))
        # The file was read, and what does not concern the monitor counts.
        self.wait_until("the store of the file", (self.folder / "of-the-file.sqlite").exists)

        monitor.press_button("Quit")
        self.wait_until("the mirror to end after its monitor", lambda: is_free(USUAL_PORT))


if __name__ == "__main__":
    unittest.main()
