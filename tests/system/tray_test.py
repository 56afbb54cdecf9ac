#!/usr/bin/env python3
"""The icon in the system's tray: the way back to a program of which no window shows."""
import os
import re
import subprocess
import sys
import unittest
from pathlib import Path

from desk import at_rest
from monitor import LONG_BAR, SHORT_BAR, TITLE
from page_server import AREA, PAGE, PageServer
from system_test import SystemTest


class TrayTest(SystemTest):
    def setUp(self):
        super().setUp()
        self.use_server(PageServer(PAGE))
        self.use_settings(ad='" 5"', Area=AREA)  # no banner

    def is_on_screen(self, title):
        return any(re.search(title, name) for name in self.desk.windows(self.monitor.program))

    def close_records(self):
        """Uses the close box, which leaves the program running."""
        self.desk.activate(self.monitor.window)
        self.desk.press("alt+F4")
        self.wait_until("the window to hide", lambda: not self.is_on_screen(TITLE))


class TrayIcon(TrayTest):
    """A tray that takes the icon's window in."""

    def start_tray(self):
        # At the bottom: the long bar is across the top of the screen.
        return self.desk.start("trayer", "--edge", "bottom", "--align", "right", "--widthtype", "request", "--height", "32",
                               "--SetDockType", "true")

    def start_with_tray(self):
        self.start_tray()
        self.monitor = self.start_monitor()
        self.wait_until("the icon", self.icon)

    def icon(self):
        """The icon's middle on the screen; None while it is not in the tray."""
        for panel in self.desk.x("xdotool", "search", "--onlyvisible", "--class", "^trayer$").split():
            tree = self.desk.x("xwininfo", "-id", panel, "-tree")
            found = re.search(r'\("borvane" "borvane"\) +(\d+)x(\d+)\S* +\+(\d+)\+(\d+)', tree)
            if found:
                width, height, left, top = map(int, found.groups())
                return left + width // 2, top + height // 2
        return None

    def click_icon(self, button=1):
        # The tray moves when it gets an icon.
        self.desk.click_at(*self.wait_until("the icon at rest", lambda: at_rest(self.icon)), button)

    def choose(self, place):
        """Opens the icon's menu and clicks the entry at that place, from 1."""
        menu = self.desk.open_menu(self.monitor.program, lambda: self.click_icon(button=3))
        self.desk.click_entry(menu, place, 2)

    def cover(self):
        """Opens a window of another program and returns its number; it has the keyboard."""
        other = self.desk.start(os.environ["BORVANE_TEST_DESKTOP"], "--show-windows")
        window = self.desk.window(other, "^Sample$")
        self.desk.activate(window)
        return window

    def is_above(self, upper, lower):
        order = self.desk.stacking()
        return upper in order and lower in order and order.index(upper) > order.index(lower)

    def assert_click_raises(self, window):
        other = self.cover()
        self.wait_until("the other program above", lambda: self.is_above(other, window))
        self.click_icon()
        self.wait_until("the face above", lambda: self.is_above(window, other))
        self.wait_until("the keyboard in the face", lambda: self.desk.active() == window)

    def open_bar(self, title):
        """From the records window, with a refresh; returns the bar's window."""
        if not self.monitor.is_down("Auto Refresh"):
            self.monitor.press_button("Auto Refresh")
            self.monitor.wait_for_rows()
        bar = self.monitor.open_bar(title)
        self.wait_until("the window to give way", lambda: not self.is_on_screen(TITLE))
        return bar

    def close_bar(self, title):
        """Closes a bar as the window manager does it: by its key."""
        self.desk.activate(self.open_bar(title))
        self.desk.press("alt+F4")
        self.wait_until("the bar to close", lambda: not self.is_on_screen(title))

    def shows_tip(self, text):
        """Whether the pointer on the icon makes the text show."""
        x, y = self.icon()
        self.desk.x("xdotool", "mousemove", "5", "500", "sleep", "0.2", "mousemove", str(x - 1), str(y), "mousemove", str(x), str(y),
                    "sleep", "1.5")
        return self.desk.look(self.monitor.program, text, "tool tip")

    def test_click_raises_the_window_above_other_programs(self):
        self.start_with_tray()
        self.assert_click_raises(self.monitor.window)

    def test_click_brings_back_what_was_closed_or_minimised(self):
        self.start_with_tray()
        self.close_records()
        self.click_icon()
        self.wait_until("the window", lambda: self.is_on_screen(TITLE))
        self.wait_until("the keyboard in it", lambda: self.desk.active() == self.monitor.window)

        self.desk.x("xdotool", "windowminimize", "--sync", self.monitor.window)
        self.wait_until("the window to go", lambda: not self.is_on_screen(TITLE))
        self.click_icon()
        self.wait_until("the window again", lambda: self.is_on_screen(TITLE))

    def test_click_raises_the_short_bar(self):
        self.start_with_tray()
        self.assert_click_raises(self.open_bar(SHORT_BAR))
        self.assertFalse(self.is_on_screen(TITLE))

    def test_click_brings_back_the_long_bar_that_h_has_hidden(self):
        self.start_with_tray()
        bar = self.open_bar(LONG_BAR)
        self.desk.activate(bar)
        self.desk.press("h")
        self.wait_until("the bar to hide", lambda: not self.is_on_screen(LONG_BAR))
        self.click_icon()
        self.wait_until("the bar", lambda: self.is_on_screen(LONG_BAR))
        self.assertFalse(self.is_on_screen(TITLE))

    def test_click_shows_the_window_after_a_bar_was_closed(self):
        self.start_with_tray()
        for title in SHORT_BAR, LONG_BAR:
            self.close_bar(title)
            self.assertEqual({}, self.desk.windows(self.monitor.program))
            self.click_icon()
            self.wait_until("the window", lambda: self.is_on_screen(TITLE))

    def test_menu_shows_the_window_and_ends_the_program(self):
        show, end = 1, 2
        self.start_with_tray()
        self.close_records()
        self.choose(show)
        self.wait_until("the window", lambda: self.is_on_screen(TITLE))
        self.close_records()
        self.choose(end)
        self.wait_until("the end of the process", lambda: self.monitor.program.poll() is not None)
        self.assertEqual(0, self.monitor.program.poll())
        self.wait_until("the icon to go", lambda: self.icon() is None)

    def test_pointer_on_the_icon_shows_the_windows_title(self):
        self.start_with_tray()
        self.wait_until("the title", lambda: self.shows_tip(TITLE))
        self.monitor.press_button("Auto Refresh")
        self.monitor.wait_for_rows()
        self.assertEqual(f"3.1 - {TITLE}", self.monitor.title())
        self.close_records()
        self.wait_until("the title with the magnitude", lambda: self.shows_tip(f"3.1 - {TITLE}"))

    def test_comes_with_a_tray_that_starts_later_and_again_with_the_next_one(self):
        self.monitor = self.start_monitor()
        self.wait_until("the program on the bus", lambda: self.desk.application(self.monitor.program))
        self.close_records()
        for _ in range(2):
            tray = self.start_tray()
            self.click_icon()
            self.wait_until("the window", lambda: self.is_on_screen(TITLE))
            self.close_records()
            self.desk.end(tray)
            self.wait_until("the tray to go", lambda: self.icon() is None)
            self.assertEqual({}, self.desk.windows(self.monitor.program))

    def test_without_a_tray_nothing_changes(self):
        self.monitor = self.start_monitor()
        self.monitor.press_button("Auto Refresh")
        self.monitor.wait_for_rows()  # long after the icon would have come
        self.assertEqual([f"3.1 - {TITLE}"], list(self.desk.windows(self.monitor.program)))
        self.close_records()
        self.assertEqual({}, self.desk.windows(self.monitor.program))
        self.assertIsNone(self.monitor.program.poll())
        self.assertEqual("", self.desk.output_of(self.monitor.program))


class TrayOverBus(TrayTest):
    """A tray that reaches the icon over the session bus, as large desktops have it."""

    def start_host(self, *options):
        self.icons = self.folder / "icons"
        self.host = subprocess.Popen([sys.executable, "-B", Path(__file__).with_name("notifier_host.py"), self.icons, *options],
                                     stdin=subprocess.PIPE)
        self.addCleanup(self.host.wait)
        self.addCleanup(self.host.stdin.close)
        self.wait_until("the tray", self.icons.exists)

    def icon(self):
        """The icon's name on the bus, as soon as it is there."""
        return self.wait_until("the icon", lambda: self.icons.read_text(encoding="utf-8").split())[0]

    def call(self, path, method, *arguments):
        done = subprocess.run(["gdbus", "call", "--session", "--dest", self.icon(), "--object-path", path, "--method", method, "--",
                               *arguments], capture_output=True, text=True, timeout=60)
        return done.stdout

    def activate(self):
        self.assertEqual("()\n", self.call("/StatusNotifierItem", "org.kde.StatusNotifierItem.Activate", "1", "1"))

    def entry(self, label):
        """The number of a menu's entry."""
        layout = self.call("/MenuBar", "com.canonical.dbusmenu.GetLayout", "0", "-1", "@as []")
        found = re.search(rf"<\((\d+), {{[^}}]*'label': <'{label}'>", layout)
        self.assertTrue(found, layout)
        return found[1]

    def choose(self, label):
        self.call("/MenuBar", "com.canonical.dbusmenu.Event", self.entry(label), "clicked", "<''>", "0")

    def assert_works(self, text=TITLE):
        self.assertIn(f"'{text}'", self.call("/StatusNotifierItem", "org.freedesktop.DBus.Properties.Get",
                                              "org.kde.StatusNotifierItem", "ToolTip"))
        self.close_records()
        self.activate()
        self.wait_until("the window", lambda: self.is_on_screen(TITLE))
        self.close_records()
        self.choose("Show")
        self.wait_until("the window again", lambda: self.is_on_screen(TITLE))
        self.choose("Exit")
        self.wait_until("the end of the process", lambda: self.monitor.program.poll() is not None)
        self.assertEqual(0, self.monitor.program.poll())

    def test_leads_back_and_ends_the_program(self):
        self.start_host()
        self.monitor = self.start_monitor()
        self.assert_works()

    def start_monitor_without_tray(self):
        """Starts the monitor and lets it look for a tray in vain."""
        self.monitor = self.start_monitor()
        self.monitor.press_button("Auto Refresh")
        self.monitor.wait_for_rows()
        self.monitor.press_button("Auto Refresh")

    def test_comes_with_a_tray_that_starts_later(self):
        self.start_monitor_without_tray()
        self.start_host()
        self.assert_works(f"3.1 - {TITLE}")

    def test_comes_with_a_tray_that_starts_later_than_its_service(self):
        self.start_host("late")
        self.start_monitor_without_tray()
        self.assertEqual([], self.icons.read_text(encoding="utf-8").split())
        self.host.stdin.write(b"\n")
        self.host.stdin.flush()
        self.assert_works(f"3.1 - {TITLE}")


if __name__ == "__main__":
    unittest.main()
