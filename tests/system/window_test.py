#!/usr/bin/env python3
"""What a window manager and a keyboard do with the records window."""
import re
import unittest

from page_server import PageServer
from system_test import SystemTest

DESIGN_SIZE = (735, 555)


class RecordsWindow(SystemTest):
    def setUp(self):
        super().setUp()
        self.use_server(PageServer(b"nothing"))
        self.monitor = self.start_monitor()

    def client_area(self, *parts):
        text = self.desk.x("xwininfo", "-id", self.monitor.window)
        return tuple(int(re.search(rf"{part}: +(\d+)", text)[1]) for part in parts)

    def size(self):
        """Of the client area, as the screen has it."""
        return self.client_area("Width", "Height")

    def list_width(self):
        """Of the list, which the window's Resize handler fits to the window."""
        return self.monitor.list("History").get_component_iface().get_extents(self.desk.atspi.CoordType.SCREEN).width

    def assert_stays(self, size):
        """The size is applied, and no reaction of the program reverts it."""
        self.wait_until(f"the size {size}", lambda: self.size() == size)
        self.monitor.press_key("F10")  # a later key is handled, so the program has handled the size
        self.wait_until("the heartbeat", lambda: self.monitor.shows("[ ]"))
        self.monitor.press_key("F10")
        self.wait_until("no heartbeat", lambda: not self.monitor.shows("[ ]"))
        self.assertEqual(size, self.size())

    def test_stays_maximized_and_comes_back_to_its_size(self):
        self.assertEqual(DESIGN_SIZE, self.size())
        width = self.list_width()
        self.desk.activate(self.monitor.window)
        self.desk.double_click_title(self.monitor.window)
        self.wait_until("the large window", lambda: self.size()[0] > 1200)
        large = self.size()
        self.assert_stays(large)
        self.assertTrue(self.desk.is_maximized(self.monitor.window))
        self.assertEqual(width + large[0] - DESIGN_SIZE[0], self.list_width())

        self.desk.double_click_title(self.monitor.window)
        self.assert_stays(DESIGN_SIZE)
        self.assertFalse(self.desk.is_maximized(self.monitor.window))
        self.assertEqual(width, self.list_width())

    def test_applies_both_sides_of_a_new_size_at_once(self):
        width = self.list_width()
        for size in ((900, 700), (650, 600), (820, 580)):
            self.desk.x("xdotool", "windowsize", self.monitor.window, *map(str, size))
            self.assert_stays(size)
            self.assertEqual(width + size[0] - DESIGN_SIZE[0], self.list_width())

    def test_comes_back_as_it_was_from_its_smallest_size_and_from_the_task_bar(self):
        width = self.list_width()
        self.desk.x("xdotool", "windowsize", self.monitor.window, "1", "1")
        self.wait_until("the tiny window", lambda: self.size()[1] < 30)
        self.desk.x("xdotool", "windowsize", self.monitor.window, *map(str, DESIGN_SIZE))
        self.assert_stays(DESIGN_SIZE)
        self.assertEqual(width, self.list_width())

        self.desk.x("xdotool", "windowminimize", self.monitor.window)
        self.wait_until("the window to go", lambda: self.monitor.window not in self.desk.windows(self.monitor.program).values())
        self.desk.activate(self.monitor.window)
        self.assert_stays(DESIGN_SIZE)
        self.assertEqual(width, self.list_width())

    def test_version_brings_a_minimised_window_back(self):
        program = self.monitor.program
        self.desk.activate(self.monitor.window)
        self.desk.click(self.desk.find(program, "Version"))
        about = self.desk.window(program, "^Borvane 2007$")
        self.desk.x("xdotool", "windowminimize", "--sync", about)
        self.assertNotIn(about, self.desk.windows(program).values())
        self.desk.activate(self.monitor.window)
        self.desk.click(self.desk.find(program, "Version"))
        self.wait_until("the about window", lambda: about in self.desk.windows(program).values())

    def test_letter_keys_keep_their_places_in_every_keyboard_layout(self):
        self.desk.x("setxkbmap", "ru")
        place_of_f, place_of_u = "41", "30"
        self.monitor.press_key(place_of_f)
        self.monitor.press_key(place_of_u)
        self.wait_until("the users that F has requested and U shows", lambda: self.monitor.shows("Users Online: "))


if __name__ == "__main__":
    unittest.main()
