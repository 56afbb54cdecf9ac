#!/usr/bin/env python3
"""The alert's popup among other windows."""
import re
import unittest

from alerting import MAGNITUDE, POPUP, AlertingTest


class Alert(AlertingTest):
    def start_other_program(self):
        """A window of another program; its number."""
        name = "Another Program"
        self.desk.start("xev", "-geometry", "1000x700+100+100", "-name", name)
        self.wait_until("its window", lambda: self.desk.x("xdotool", "search", "--onlyvisible", "--name", name))
        return self.desk.x("xdotool", "search", "--onlyvisible", "--name", name).split()[0]

    def test_the_popup_is_above_all_windows_and_leaves_the_keyboard_alone(self):
        other = self.start_other_program()
        monitor = self.start_alerting()
        self.server.hold()
        monitor.press_key("r")
        self.wait_until("the request", self.server.pages_requested)
        self.desk.activate(other)
        self.server.release()

        popup = self.desk.window(monitor.program, POPUP)
        self.wait_until("the end of the refresh", lambda: monitor.shows("Last Refresh"))
        self.wait_until("the popup above the others", lambda: self.desk.stacking()[-1] == popup)
        self.assertEqual(other, self.desk.active())

        self.desk.activate(monitor.window)
        self.desk.activate(other)
        self.assertEqual(popup, self.desk.stacking()[-1])

    def test_the_popup_that_is_open_is_not_activated_by_the_next_alert(self):
        monitor = self.start_alerting()
        popup = self.raise_alert(monitor)
        self.wait_until("the end of the refresh", lambda: monitor.shows("Last Refresh"))
        self.assertEqual(popup, self.raise_alert(monitor))
        self.assertEqual(monitor.window, self.desk.active())

    def moves(self, window):
        """Lets xev write down where the window is placed; the file."""
        return self.desk.start("xev", "-id", window, "-event", "structure").log

    def test_the_popup_wanders(self):
        monitor = self.start_alerting()
        popup = self.raise_alert(monitor)
        log = self.moves(popup)
        # A shaking has 0 to 599 steps.
        self.wait_until("a walk", lambda: self.raise_alert(monitor) and len(set(self.places(log))) > 20)
        places = self.places(log)
        for (x, y), (next_x, next_y) in zip(places, places[1:]):
            # Each edge is moved on its own, by 50 twips at most; the screen may pass a few steps over.
            self.assertLess(max(abs(next_x - x), abs(next_y - y)), 25, f"{x}, {y} to {next_x}, {next_y}")

    @staticmethod
    def places(log):
        """Where the window manager has placed the window, in their order."""
        reports = re.findall(r"ConfigureNotify event, .*synthetic YES.*\n.*\((-?\d+),(-?\d+)\), width",
                             log.read_text(encoding="utf-8", errors="replace"))
        return [(int(x), int(y)) for x, y in reports]

    def test_the_magnitude_opens_the_page_of_the_area_by_the_keyboard(self):
        opened = self.catch_opened()
        monitor = self.start_alerting()
        popup = self.raise_alert(monitor)
        self.wait_until("the end of the refresh", lambda: monitor.shows("Last Refresh"))
        self.assertIsNotNone(self.desk.look(monitor.program, MAGNITUDE, "push button"))
        self.desk.activate(popup)
        self.desk.press("Tab", "space")
        self.wait_until("the browser", opened.exists)
        self.assertEqual(f"http://{self.server.address}/recenteqs/Maps/Los_Angeles.html\n", opened.read_text())

    def test_a_popup_that_was_closed_comes_again(self):
        monitor = self.start_alerting()
        popup = self.raise_alert(monitor)
        self.wait_until("the end of the refresh", lambda: monitor.shows("Last Refresh"))
        self.desk.activate(popup)
        self.desk.press("alt+F4")
        self.wait_until("the popup to close", lambda: not any(POPUP in title for title in self.desk.windows(monitor.program)))
        self.raise_alert(monitor)


if __name__ == "__main__":
    unittest.main()
