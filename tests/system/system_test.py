"""What the system tests share: a desk for each test, the two programs, a picture of the last screen of each test."""
import os
import shlex
import shutil
import unittest
import unittest.mock
from pathlib import Path

from desk import Desk, wait_for
from monitor import Monitor, write_hosts
from reserved_port import ReservedPort


class SystemTest(unittest.TestCase):
    """Needs in the environment BORVANE_PROGRAMS, the folder of the two programs, and BORVANE_RESULTS, one for their output."""

    def setUp(self):
        self.programs = Path(os.environ["BORVANE_PROGRAMS"])
        self.folder = Path(os.environ["BORVANE_RESULTS"]) / self.id().partition(".")[2]
        shutil.rmtree(self.folder, ignore_errors=True)
        self.folder.mkdir(parents=True)
        self.desk = self.enterContext(Desk(self.folder))
        self.addCleanup(self.leave_screen)

    def leave_screen(self):
        self.desk.screenshot(self.folder / "screen.png")
        outlines = (self.desk.outline(program) for program in self.desk.programs if program.poll() is None)
        (self.folder / "outline.txt").write_text("\n".join(filter(None, outlines)), encoding="utf-8")

    def use_hosts(self, host_of):
        """`host_of` returns the host with its port for the name of an endpoint."""
        write_hosts(self.desk.settings_file, host_of)

    def use_settings(self, **values):
        """Stores values of the program's own key, after use_hosts."""
        with open(self.desk.settings_file, "a", encoding="utf-8") as file:
            file.write("".join(f"{name}={text}\n" for name, text in values.items()))

    def use_server(self, server):
        self.enterContext(server)
        self.use_hosts(lambda name: server.address)
        return server

    def start_mirror(self, *options):
        """Starts a mirror with the bundled sample, for the monitor to use, and returns the port."""
        port = self.run_mirror(*options)
        self.use_hosts(lambda name: f"{name.lower()}.localhost:{port}")
        return port

    def reserve_port(self):
        """Returns a port that is this test's alone, also while nothing listens there."""
        return self.enterContext(ReservedPort()).number

    def run_mirror(self, *options, port=None):
        """Starts a mirror with the bundled sample, on a port of its own by default, and returns the port."""
        port = port or self.reserve_port()
        mirror = self.desk.start(self.programs / "borvane-mirror", "--listen", f"127.0.0.1:{port}", *options)
        wait_for("the mirror", lambda: f"borvane-mirror listening on 127.0.0.1:{port}\n" in self.desk.output_of(mirror))
        return port

    def catch_opened(self):
        """Replaces the desktop's other programs by a script; returns the file to which that writes the address that it is started with."""
        opened = self.folder / "opened"
        opener = self.folder / "bin" / "xdg-open"
        opener.parent.mkdir()
        whole = shlex.quote(str(opened))
        opener.write_text(f'#!/bin/sh\necho "$1" > {whole}.part && mv {whole}.part {whole}\n')
        opener.chmod(0o755)
        self.enterContext(unittest.mock.patch.dict(os.environ, PATH=f"{opener.parent}:{os.environ['PATH']}"))
        return opened

    def start_monitor(self):
        return Monitor(self.desk, self.programs / "borvane")

    def start_monitor_without_privileges(self):
        """A monitor for which the rights of files count, also when the superuser runs the tests."""
        superuser = ("setpriv", "--bounding-set", "-dac_override,-dac_read_search") if os.geteuid() == 0 else ()
        return Monitor(self.desk, *superuser, self.programs / "borvane")

    def wait_until(self, what, condition):
        try:
            return wait_for(what, condition)
        except TimeoutError as timeout:
            self.fail(str(timeout))

    def assert_moves_and_repaints(self, monitor):
        """The records window comes back from an icon unchanged, at another place on the screen."""
        before = monitor.picture()
        monitor.come_back_from_icon()
        self.desk.x("xdotool", "windowmove", monitor.window, "300", "250")
        self.wait_until("the same picture at another place", lambda: monitor.picture() == before)
