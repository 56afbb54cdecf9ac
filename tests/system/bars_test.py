#!/usr/bin/env python3
"""The two bars on a screen with a window manager: in place of the window and back, their order among windows, the edge, the end."""
import re
import time
import unittest

from monitor import LONG_BAR, SHORT_BAR, TITLE
from page_server import AREA, PAGE, PageServer
from system_test import SystemTest

ENTRIES = {
    SHORT_BAR: ("Settings", "Expand", "More Info", "Strong Motion Maps", "On Top", "About", "Exit"),
    LONG_BAR: ("Refresh", "More Info", "Strong Motion Maps", "Expand", "Settings", "On Top", "About", "Exit"),
}
SCREEN_WIDTH = 1280
LATER_PAGE = PAGE.replace(b" 3.1 ", b" 5.2 ")
MOVE, HIDE, IGNORE = "0", "1", "2"  # the stored choices of what the long bar does at the screen's edge


class BarsTest(SystemTest):
    def start_watching(self, **settings):
        """A monitor with the rows of its page, without the banner, which has the short bar's title."""
        self.server = self.use_server(PageServer(PAGE))
        self.use_settings(**{"ad": '" 5"', "Area": AREA, **settings})
        self.start_with_rows()

    def start_with_rows(self):
        self.monitor = self.start_monitor()
        self.monitor.press_button("Auto Refresh")
        self.monitor.wait_for_rows()
        self.move_pointer_away()

    def move_pointer_away(self):
        """A pointer on a bar would open it or send it away."""
        self.desk.x("xdotool", "mousemove", "600", "900")

    def number_of(self, title):
        return next((number for name, number in self.desk.windows(self.monitor.program).items() if re.search(title, name)), None)

    def place(self, window):
        """The place and the width of a window on the screen."""
        lines = self.desk.x("xdotool", "getwindowgeometry", "--shell", window).splitlines()
        values = dict(line.split("=") for line in lines if "=" in line)
        return int(values["X"]), int(values["Y"]), int(values["WIDTH"])

    def choose(self, window, entry, open_menu=None):
        """Opens the menu of a bar, by its key if nothing else is given, and chooses an entry with the keyboard."""
        entries = ENTRIES[next(title for title in ENTRIES if self.number_of(title) == window)]
        self.desk.activate(window)
        menu = self.monitor.open_menu(open_menu or (lambda: self.desk.press("Menu")))
        self.monitor.press_in_menu(menu, *["Down"] * (entries.index(entry) + 1), "Return")

    def wait_for_the_window(self):
        self.wait_until("the records window", lambda: self.number_of(TITLE))
        self.wait_until("no bar", lambda: not self.number_of(SHORT_BAR) and not self.number_of(LONG_BAR))

    def expand(self, window):
        self.choose(window, "Expand")
        self.wait_for_the_window()

    def wait_for_the_end(self):
        self.wait_until("the end of the process", lambda: self.monitor.program.poll() is not None)
        self.assertEqual(0, self.monitor.program.returncode)

    def open_other_program(self):
        """A window of another program, which has the keyboard; its number."""
        self.desk.start("xev", "-geometry", "400x300+400+500", "-name", "Other")
        found = self.wait_until("its window", lambda: self.desk.x("xdotool", "search", "--onlyvisible", "--name", "^Other$").split())
        self.desk.activate(found[0])
        return found[0]


class Bars(BarsTest):
    def hold_next_page(self):
        """Lets the next page wait in the server, which then has a stronger event; `request` makes the monitor ask for it."""
        self.server.page = LATER_PAGE
        self.server.hold()
        self.requests = len(self.server.pages_requested())

    def wait_for_the_request(self):
        self.wait_until("the request", lambda: len(self.server.pages_requested()) > self.requests)

    def open_during_a_fetch(self, title):
        self.start_watching()
        self.hold_next_page()
        self.monitor.press_key("r")
        self.wait_for_the_request()
        return self.monitor.open_bar(title)

    def test_each_face_leads_to_the_others(self):
        self.start_watching()
        for title in (SHORT_BAR, LONG_BAR, LONG_BAR, SHORT_BAR):
            bar = self.monitor.open_bar(title)
            self.wait_until("the records window to hide", lambda: not self.number_of(TITLE))
            self.expand(bar)
            self.assertEqual("3.1", self.monitor.rows()[0][0])

    def test_the_long_bar_opens_during_a_fetch(self):
        bar = self.open_during_a_fetch(LONG_BAR)
        self.wait_until("the event that is listed", lambda: self.monitor.shows("Last: 3.1"))
        self.server.release()
        self.expand(bar)
        self.wait_until("the rows of the later page", lambda: [row[0] for row in self.monitor.rows()[:1]] == ["5.2"])

    def test_the_short_bar_opens_during_a_fetch_and_follows_it(self):
        bar = self.open_during_a_fetch(SHORT_BAR)
        self.wait_until("the event that is listed", lambda: self.monitor.shows("Mag: 3.1"))
        self.server.release()
        self.wait_until("the newest event", lambda: self.monitor.shows("Mag: 5.2"))
        self.expand(bar)
        self.assertEqual("5.2", self.monitor.rows()[0][0])

    def test_a_bar_is_left_during_a_fetch(self):
        self.start_watching()
        bar = self.monitor.open_bar(LONG_BAR)
        self.hold_next_page()
        self.choose(bar, "Refresh")
        self.wait_for_the_request()
        self.expand(bar)
        self.assertEqual("3.1", self.monitor.title()[:3])
        self.server.release()
        self.wait_until("the rows of the later page", lambda: self.monitor.title()[:3] == "5.2")
        self.assertEqual("5.2", self.monitor.rows()[0][0])

    def test_the_short_bar_is_moved_by_keys_and_found_there_after_a_restart(self):
        self.start_watching(KeepPosition="1")
        bar = self.monitor.open_bar(SHORT_BAR)
        self.desk.activate(bar)
        self.desk.press("l", *["Down"] * 12)
        self.wait_until("the new place", lambda: self.place(bar)[:2] == (0, 40))
        self.wait_until("the stored place", lambda: self.monitor.settings().get("shortTop") == "600")
        self.choose(bar, "Exit")
        self.wait_for_the_end()

        self.start_with_rows()
        bar = self.monitor.open_bar(SHORT_BAR)
        self.wait_until("the place", lambda: self.place(bar)[:2] == (0, 40))

    def open_maximized_window(self):
        """A window of another program over the whole screen, which has the keyboard; its number."""
        window = self.open_other_program()
        self.desk.double_click_title(window)
        self.move_pointer_away()
        return window

    def test_on_top_keeps_the_long_bar_above_a_maximized_window(self):
        self.start_watching()
        bar = self.monitor.open_bar(LONG_BAR)
        self.choose(bar, "On Top")
        large = self.open_maximized_window()
        self.desk.activate(large)
        self.wait_until("the bar on top", lambda: self.desk.stacking()[-1] == bar)

        self.choose(bar, "On Top")
        self.desk.activate(large)
        self.wait_until("the bar below", lambda: self.desk.stacking()[-1] == large)

    def test_on_top_at_its_load_keeps_the_short_bar_above_a_maximized_window(self):
        self.start_watching(TopForm="1")
        bar = self.monitor.open_bar(SHORT_BAR)
        large = self.open_maximized_window()
        self.desk.activate(large)
        self.wait_until("the bar on top", lambda: self.desk.stacking()[-1] == bar)

    def test_without_on_top_the_short_bar_is_below_a_maximized_window(self):
        self.start_watching(TopForm="0")
        bar = self.monitor.open_bar(SHORT_BAR)
        large = self.open_maximized_window()
        self.desk.activate(large)
        self.wait_until("the bar below", lambda: self.desk.stacking()[-1] == large)
        self.assertIn(bar, self.desk.stacking())

    def test_the_long_bar_ends_the_program_by_its_menu(self):
        self.start_watching()
        self.choose(self.monitor.open_bar(LONG_BAR), "Exit")
        self.wait_for_the_end()

    def test_a_right_click_on_the_long_bars_handle_opens_its_menu(self):
        self.start_watching()
        bar = self.monitor.open_bar(LONG_BAR)
        handle = self.desk.find(self.monitor.program, "Menu", "check box")
        self.choose(bar, "Expand", open_menu=lambda: self.desk.click(handle, button=3))
        self.wait_for_the_window()

    def test_the_short_bar_collapses_and_opens_under_the_pointer(self):
        self.start_watching(Refresh="50")
        bar = self.monitor.open_bar(SHORT_BAR)
        left, top, _ = self.place(bar)
        self.wait_until("the collapse", lambda: self.place(bar)[2] == 491)
        self.assertIsNone(self.desk.look(self.monitor.program, "Menu", "check box"))
        beside_the_texts = left + 470
        self.desk.x("xdotool", "mousemove", str(beside_the_texts), str(top + 10), "mousemove", str(beside_the_texts), str(top + 9))
        self.wait_until("the open bar", lambda: self.place(bar)[2] == 529)
        self.move_pointer_away()
        self.wait_until("the next collapse", lambda: self.place(bar)[2] == 491)

    def test_the_short_bars_box_switches_the_refresh(self):
        self.start_watching()
        bar = self.monitor.open_bar(SHORT_BAR)
        switch = self.desk.find(self.monitor.program, "Auto Refresh", "check box")
        self.assertTrue(self.desk.is_checked(switch))
        self.desk.click(switch)
        self.wait_until("the switch to be off", lambda: not self.desk.is_checked(switch))
        self.expand(bar)
        self.assertFalse(self.monitor.is_down("Auto Refresh"))


class Edge(BarsTest):
    """The long bar under a real pointer at its right end."""

    PERIOD = 1.5  # seconds, of the bar's timer

    def open_long_bar(self, choice, **settings):
        self.start_watching(EdgeDetect=choice, **{"Refresh": str(int(self.PERIOD * 1000)), **settings})
        bar = self.monitor.open_bar(LONG_BAR)
        self.wait_for_its_place(bar)
        return bar

    def wait_for_its_place(self, bar):
        self.wait_until("the bar across the top of the screen", lambda: self.place(bar) == (0, 0, SCREEN_WIDTH))

    def touch(self):
        self.desk.x("xdotool", "mousemove", str(SCREEN_WIDTH - 42), "5", "mousemove", str(SCREEN_WIDTH - 40), "6")

    def assert_comes_back_on_the_fourth_tick(self, is_away):
        before = time.monotonic()
        self.touch()
        self.wait_until("the bar to get out of the way", is_away)
        self.move_pointer_away()
        self.wait_until("the bar", lambda: not is_away())
        ticks = (time.monotonic() - before) / self.PERIOD
        self.assertGreater(ticks, 3.5)
        self.assertLess(ticks, 10)  # a busy machine is slow to look

    def test_the_bar_moves_and_comes_back_on_the_fourth_tick(self):
        bar = self.open_long_bar(MOVE)
        self.assert_comes_back_on_the_fourth_tick(lambda: self.place(bar)[0] == -60)
        self.wait_for_its_place(bar)

    def test_the_bar_hides_and_comes_back_on_the_fourth_tick(self):
        bar = self.open_long_bar(HIDE)
        self.assert_comes_back_on_the_fourth_tick(lambda: not self.number_of(LONG_BAR))
        self.wait_for_its_place(bar)

    def test_a_bar_that_comes_back_leaves_the_keyboard_to_another_program(self):
        self.open_long_bar(HIDE)
        other = self.open_other_program()
        self.touch()
        self.wait_until("the bar to hide", lambda: not self.number_of(LONG_BAR))
        self.move_pointer_away()
        self.wait_until("the bar", lambda: self.number_of(LONG_BAR))
        time.sleep(0.5)  # what it would take the keyboard by comes after its show
        self.assertEqual(other, self.desk.active())

    def test_a_bar_that_ignores_the_pointer_stays_and_follows_the_list_from_then_on(self):
        # 600 ticks of 10 ms; the list is refreshed at every tenth tick of 700 ms.
        bar = self.open_long_bar(IGNORE, Refresh="10")
        self.server.page = LATER_PAGE
        before = len(self.server.pages_requested())
        self.wait_until("two refreshes", lambda: len(self.server.pages_requested()) > before + 1)
        self.assertTrue(self.monitor.shows("Last: 3.1"))
        self.touch()
        self.wait_until("the newest event", lambda: self.monitor.shows("Last: 5.2"))
        self.assertEqual((0, 0, SCREEN_WIDTH), self.place(bar))


if __name__ == "__main__":
    unittest.main()
