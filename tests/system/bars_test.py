#!/usr/bin/env python3
"""The two bars on a screen with a window manager: in place of the window and back, their order among windows, the edge, the end."""
import re
import unittest

from monitor import TITLE
from page_server import AREA, PAGE, PageServer
from system_test import SystemTest

SHORT_BAR, LONG_BAR = "^Borvane$", "^Form2$"  # the windows' titles, which nobody sees
ENTRIES = {
    SHORT_BAR: ("Settings", "Expand", "More Info", "Strong Motion Maps", "On Top", "About", "Exit"),
    LONG_BAR: ("Refresh", "More Info", "Strong Motion Maps", "Expand", "Settings", "On Top", "About", "Exit"),
}
SCREEN_WIDTH = 1280


class Bars(SystemTest):
    def start_watching(self, **settings):
        """A monitor with the rows of its page, without the banner, which has the short bar's title."""
        self.server = self.use_server(PageServer(PAGE))
        self.use_settings(**{"ad": '" 5"', "Area": AREA, **settings})
        self.monitor = self.start_monitor()
        self.monitor.press_button("Auto Refresh")
        self.monitor.wait_for_rows()
        # A pointer on a bar would open it or send it away.
        self.desk.x("xdotool", "mousemove", "600", "900")

    def number_of(self, title):
        return next((number for name, number in self.desk.windows(self.monitor.program).items() if re.search(title, name)), None)

    def open_bar(self, button, title):
        # The bars' buttons wait for the end of the first refresh.
        self.wait_until("the button", lambda: self.desk.is_enabled(self.desk.find(self.monitor.program, button)))
        self.monitor.press_button(button)
        return self.wait_until(f"the {button}", lambda: self.number_of(title))

    def place(self, window):
        """The place and the width of a window on the screen."""
        lines = self.desk.x("xdotool", "getwindowgeometry", "--shell", window).splitlines()
        values = dict(line.split("=") for line in lines if "=" in line)
        return int(values["X"]), int(values["Y"]), int(values["WIDTH"])

    def shown_windows(self):
        """The numbers of the program's windows on the screen, also of those without a title, as a menu is."""
        return set(self.desk.x("xdotool", "search", "--onlyvisible", "--pid", str(self.monitor.program.pid)).split())

    def choose(self, window, entry):
        """Opens the menu of a bar by its key and chooses an entry with the keyboard."""
        entries = ENTRIES[next(title for title in ENTRIES if self.number_of(title) == window)]
        self.desk.activate(window)
        before = self.shown_windows()
        self.desk.press("Menu")
        self.wait_until("the menu", lambda: self.shown_windows() - before)
        self.desk.press(*["Down"] * (entries.index(entry) + 1), "Return")

    def expand(self, window):
        self.choose(window, "Expand")
        self.wait_until("the records window", lambda: self.number_of(TITLE))
        self.wait_until("no bar", lambda: not self.number_of(SHORT_BAR) and not self.number_of(LONG_BAR))

    def stacking(self):
        """The numbers of the windows, the lowest first."""
        listed = self.desk.x("xprop", "-root", "_NET_CLIENT_LIST_STACKING").partition("#")[2]
        return [int(number, 16) for number in listed.split(",")]

    def test_each_face_leads_to_the_others(self):
        self.start_watching()
        for button, title in (("Short Bar", SHORT_BAR), ("Long Bar", LONG_BAR), ("Long Bar", LONG_BAR), ("Short Bar", SHORT_BAR)):
            bar = self.open_bar(button, title)
            self.wait_until("the records window to hide", lambda: not self.number_of(TITLE))
            self.expand(bar)
            self.assertEqual("3.1", self.monitor.rows()[0][0])

    def test_a_bar_opens_during_a_fetch(self):
        self.start_watching()
        self.server.hold()
        before = len(self.server.pages_requested())
        self.monitor.press_key("r")
        self.wait_until("the request", lambda: len(self.server.pages_requested()) > before)
        bar = self.open_bar("Long Bar", LONG_BAR)
        self.server.release()
        self.wait_until("the newest event", lambda: self.monitor.shows("Last: 3.1"))
        self.expand(bar)

    def test_the_short_bar_is_moved_by_keys_and_found_there_after_a_restart(self):
        self.start_watching(KeepPosition="1", Text3="0")
        bar = self.open_bar("Short Bar", SHORT_BAR)
        self.desk.activate(bar)
        self.desk.press("l", *["Down"] * 12)
        self.wait_until("the new place", lambda: self.place(bar)[:2] == (0, 40))
        self.wait_until("the stored place", lambda: self.monitor.settings().get("shortTop") == "600")
        self.choose(bar, "Exit")
        self.wait_until("the end of the process", lambda: self.monitor.program.poll() is not None)

        self.monitor = self.start_monitor()
        self.monitor.press_button("Auto Refresh")
        self.monitor.wait_for_rows()
        bar = self.open_bar("Short Bar", SHORT_BAR)
        self.wait_until("the place", lambda: self.place(bar)[:2] == (0, 40))

    def test_on_top_keeps_the_long_bar_above_a_maximized_window(self):
        self.start_watching()
        bar = self.open_bar("Long Bar", LONG_BAR)
        self.choose(bar, "On Top")
        self.desk.start("xev", "-geometry", "1280x1000+0+0", "-name", "Large")
        large = self.wait_until("a large window", lambda: self.desk.x("xdotool", "search", "--onlyvisible", "--name", "^Large$")).split()[0]
        self.desk.activate(large)
        self.wait_until("the bar on top", lambda: self.stacking()[-1] == int(bar))

        self.choose(bar, "On Top")
        self.desk.activate(large)
        self.wait_until("the bar below", lambda: self.stacking()[-1] == int(large))

    def test_the_long_bar_hides_from_the_pointer_and_comes_back(self):
        self.start_watching(EdgeDetect="1", Refresh="300")
        bar = self.open_bar("Long Bar", LONG_BAR)
        self.assertEqual((0, 0, SCREEN_WIDTH), self.place(bar))
        self.desk.x("xdotool", "mousemove", str(SCREEN_WIDTH - 60), "5", "mousemove", str(SCREEN_WIDTH - 62), "6")
        self.wait_until("the bar to hide", lambda: not self.number_of(LONG_BAR))
        self.desk.x("xdotool", "mousemove", "600", "900")
        self.wait_until("the bar", lambda: self.number_of(LONG_BAR))
        self.assertEqual((0, 0, SCREEN_WIDTH), self.place(bar))

    def test_the_long_bar_ends_the_program_by_its_menu(self):
        self.start_watching()
        self.choose(self.open_bar("Long Bar", LONG_BAR), "Exit")
        self.wait_until("the end of the process", lambda: self.monitor.program.poll() is not None)
        self.assertEqual(0, self.monitor.program.returncode)


if __name__ == "__main__":
    unittest.main()
