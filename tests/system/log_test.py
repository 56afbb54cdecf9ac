#!/usr/bin/env python3
"""The log of the real monitor: its bytes over several refreshes, its viewer, and what may be in its place."""
import os
import resource
import shutil
import unittest
import unittest.mock

from page_server import AREA, PageServer
from system_test import SystemTest


def row(magnitude, place="1 km ( 1 mi) N of Pi\u00f1on, CA"):
    """A row of the area's page."""
    text = (f'<A HREF="/recenteqs/Maps/117-34.html">map</A> {magnitude}  <A HREF="/recenteqs/Quakes/tt1.html">'
            f"2024/02/29 23:59:59 34.000N 117.000W 5.0</A>    {place}\n")
    return text.encode("windows-1252")


def line(magnitude):
    """Its line in the log."""
    return f"{magnitude} 2024/02/29 23:59:59 34.000N 117.000W 5.0 1 km ( 1 mi) N of Pi\u00f1on, CA\r\n".encode("windows-1252")


class Log(SystemTest):
    def setUp(self):
        super().setUp()
        self.documents = self.desk.home / "Documents"
        self.documents.mkdir(parents=True)
        self.log_folder = self.documents / "Borvane"
        self.log = self.log_folder / "quakes.log"
        self.server = self.use_server(PageServer())
        self.use_settings(Area=AREA, EnableLog=1)

    def refresh(self, *magnitudes):
        """Refreshes with a page of these events and waits until the log has been written."""
        self.server.page = b"<PRE>\n" + b"".join(row(magnitude) for magnitude in magnitudes) + b"</PRE>\n"
        self.monitor.press_key("r")
        self.wait_until("the new magnitude", lambda: self.monitor.title().startswith(magnitudes[0] + " - "))
        # The title comes first. The next key is handled when the refresh has ended.
        calls = self.calls_for_users()
        self.monitor.press_key("f")
        self.wait_until("the call of the next key", lambda: self.calls_for_users() > calls)

    def calls_for_users(self):
        return len(self.server.times_of(b"cmd=whoson"))

    def content(self):
        return self.log.read_bytes() if self.log.is_file() else None

    def expect_log(self, *magnitudes):
        self.assertEqual(b"".join(line(magnitude) for magnitude in magnitudes), self.content())

    def logs_is_enabled(self):
        label = self.desk.find(self.monitor.program, "Logs")
        return label.get_state_set().contains(self.desk.atspi.StateType.ENABLED)

    def test_each_refresh_appends_what_is_new(self):
        self.monitor = self.start_monitor()
        self.assertFalse(self.logs_is_enabled())
        self.refresh("3.1")
        self.expect_log("3.1")
        self.assertTrue(self.logs_is_enabled())
        self.refresh("4.4", "4.2", "3.1")
        self.expect_log("3.1", "4.4", "4.2")
        # The row of 4.2 has been revised.
        self.refresh("4.5", "4.4", "4.3", "3.1")
        self.expect_log("3.1", "4.4", "4.2", "4.5", "4.3")

        self.log.unlink()
        self.refresh("4.6", "3.1")
        self.expect_log("4.6", "3.1")
        shutil.rmtree(self.log_folder)
        self.refresh("4.7", "3.1")
        self.expect_log("4.7", "3.1")

    def test_logs_opens_it(self):
        self.log_folder.mkdir()
        self.log.write_bytes(b"")
        opened = self.catch_opened()
        self.monitor = self.start_monitor()
        self.assertTrue(self.logs_is_enabled())
        self.desk.activate(self.monitor.window)
        self.desk.click(self.desk.find(self.monitor.program, "Logs"))
        self.wait_until("the viewer", opened.exists)
        self.assertEqual(self.log.as_uri(), opened.read_text().strip())

    def test_a_limit_for_the_size_of_files_ends_nothing_and_leaves_whole_lines(self):
        size_limit = len(line("3.1")) * 2 + 10
        self.monitor = self.start_monitor()
        resource.prlimit(self.monitor.program.pid, resource.RLIMIT_FSIZE, (size_limit, resource.RLIM_INFINITY))
        self.refresh("3.3", "3.2", "3.1")
        self.expect_log("3.3", "3.2")
        resource.prlimit(self.monitor.program.pid, resource.RLIMIT_FSIZE, (resource.RLIM_INFINITY, resource.RLIM_INFINITY))
        self.refresh("3.4", "3.3", "3.2", "3.1")
        self.expect_log("3.3", "3.2", "3.4", "3.1")
        self.assertIsNone(self.monitor.program.poll())

    def use_home(self, name):
        """Gives the monitor another home, without folders, whose name is these bytes. Its settings stay where they are."""
        home = self.folder / os.fsdecode(name)
        home.mkdir()
        self.enterContext(unittest.mock.patch.dict(os.environ, HOME=str(home)))
        return home

    def expect_log_that_logs_opens(self, log):
        self.log = log
        opened = self.catch_opened()
        self.monitor = self.start_monitor()
        self.refresh("3.1")
        self.expect_log("3.1")
        self.desk.activate(self.monitor.window)
        self.desk.click(self.desk.find(self.monitor.program, "Logs"))
        self.wait_until("the viewer", opened.exists)
        self.assertEqual(self.log.as_uri(), opened.read_text().strip())

    def test_a_home_without_documents_has_its_log_and_logs_opens_it(self):
        home = self.use_home(b"home without documents")
        self.expect_log_that_logs_opens(home / "Borvane/quakes.log")

    def test_a_home_with_letters_beyond_the_code_page_has_its_log_and_logs_opens_it(self):
        home = self.use_home("\u0414\u043e\u043c \u5bb6 %41#?".encode())
        (home / "Documents").mkdir()
        self.expect_log_that_logs_opens(home / "Documents/Borvane/quakes.log")

    def test_a_home_whose_name_is_not_utf8_has_its_log_and_logs_opens_it(self):
        home = self.use_home(b"h\xff\xe9 \x81")
        (home / "Documents").mkdir()
        self.expect_log_that_logs_opens(home / "Documents/Borvane/quakes.log")

    def test_folders_and_files_without_write_permission_stop_nothing(self):
        self.monitor = self.start_monitor_without_privileges()

        self.documents.chmod(0o555)
        self.refresh("1.0")
        self.assertEqual([], list(self.documents.iterdir()))
        self.documents.chmod(0o755)

        self.log_folder.mkdir()
        self.log_folder.chmod(0o555)
        self.refresh("1.1")
        self.assertEqual([], list(self.log_folder.iterdir()))
        self.log_folder.chmod(0o755)

        self.log.write_bytes(line("0.9"))
        self.log.chmod(0o444)
        self.refresh("1.2")
        self.expect_log("0.9")

        self.log.chmod(0o644)
        self.refresh("1.3", "1.2")
        self.expect_log("0.9", "1.3", "1.2")
        self.assertIsNone(self.monitor.program.poll())

    def test_nothing_in_its_place_stops_the_window(self):
        self.monitor = self.start_monitor()

        self.log.mkdir(parents=True)
        self.refresh("1.0")
        self.assertEqual([], list(self.log.iterdir()))
        self.log.rmdir()

        os.mkfifo(self.log)
        self.refresh("1.1")
        self.log.unlink()
        self.log_folder.rmdir()

        self.log_folder.write_bytes(b"a file")
        self.refresh("1.2")
        self.assertEqual(b"a file", self.log_folder.read_bytes())
        self.log_folder.unlink()

        # No user can create anything there.
        self.documents.rmdir()
        self.documents.symlink_to("/proc")
        self.refresh("1.3")
        self.documents.unlink()
        self.documents.mkdir()

        self.refresh("1.4", "1.3")
        self.expect_log("1.4", "1.3")
        self.assertIsNone(self.monitor.program.poll())


if __name__ == "__main__":
    unittest.main()
