#!/usr/bin/env python3
"""The list of events on a real screen: its order, its menu by mouse and keys, its read-out, copying."""
import unittest

from page_server import AREA, PageServer
from system_test import SystemTest


def row(magnitude, place):
    return (f'<A HREF="/recenteqs/Maps/117-34.html">map</A> {magnitude}  <A HREF="/recenteqs/Quakes/tt{magnitude}.html">'
            f"2024/02/29 23:59:59 34.000N 117.000W {magnitude}0</A>    {place}\n").encode()


PAGE = b"<PRE>\n" + row("3.1", "1 km N of Sometown, CA") + row("1.6", "2 km E of Elsewhere, CA") + row("2.0", "3 km S of Anytown, CA") + b"</PRE>\n"


class List(SystemTest):
    def setUp(self):
        super().setUp()
        self.server = self.use_server(PageServer(PAGE))
        self.use_settings(Area=AREA)
        self.monitor = self.start_monitor()
        self.monitor.press_button("Auto Refresh")
        self.monitor.wait_for_rows()

    def magnitudes(self):
        return [cells[0] for cells in self.monitor.rows()]

    def click_title(self, title):
        self.desk.activate(self.monitor.window)
        header = self.monitor.list("History").get_table_iface().get_column_header(0)
        extents = header.get_component_iface().get_extents(self.desk.atspi.CoordType.SCREEN)
        self.assertTrue(header.get_name().startswith(title), header.get_name())
        self.desk.click_at(extents.x + extents.width // 3, extents.y + extents.height // 2)

    def shows_place_of(self, magnitude):
        return self.monitor.shows(f"Depth: {magnitude}0") and self.monitor.shows("latitude: 34    longitude: 117")

    def test_titles_sort_and_the_order_stays_through_a_refresh(self):
        self.click_title("Magnitude")
        self.wait_until("the descending order", lambda: self.magnitudes() == ["3.1", "2.0", "1.6"])
        self.click_title("Magnitude, sorted in descending order")
        self.wait_until("the ascending order", lambda: self.magnitudes() == ["1.6", "2.0", "3.1"])

        self.server.page = b"<PRE>\n" + row("2.4", "4 km W of Newtown, CA") + PAGE.partition(b"\n")[2]
        self.monitor.press_key("r")
        self.wait_until("the new row in its place", lambda: self.magnitudes() == ["1.6", "2.0", "2.4", "3.1"])
        self.wait_until("its magnitude in the title", lambda: self.monitor.title() == "2.4 - Borvane - Last Events")

    def test_click_reads_out_depth_and_place(self):
        self.monitor.click_row(2)
        self.wait_until("the read-out", lambda: self.shows_place_of("2.0"))
        self.desk.press("x")
        self.wait_until("no depth", lambda: not self.monitor.shows("Depth: "))

    def place(self, window):
        """The upper left corner of a window on the screen."""
        lines = self.desk.x("xdotool", "getwindowgeometry", "--shell", window).splitlines()
        values = dict(line.split("=") for line in lines if "=" in line)
        return int(values["X"]), int(values["Y"])

    def test_menu_opens_by_the_mouse_and_by_both_keys_at_the_row(self):
        for how in ("mouse", "Menu", "shift+F10"):
            self.monitor.click_row(1)
            menu = self.monitor.open_menu(
                lambda: self.monitor.click_row(1, button=3) if how == "mouse" else self.desk.press(how))
            self.assertLess(abs(self.place(menu)[1] - self.monitor.row_place(1)[1]), 20, how)
            self.monitor.press_in_menu(menu, "Escape")
        self.assertTrue(self.monitor.shows("Depth: "), "no key of the menu is one of the window's, which would empty the panel")
        self.assertFalse(self.monitor.shows("[ ]"), "the heartbeat, which F10 shows")
        self.assertNotIn("Borvane - Quit", self.desk.windows(self.monitor.program), "the question that Esc asks")

    def test_keys_move_what_a_screen_reader_follows(self):
        self.monitor.click_row(0)
        self.desk.press("Down", "Down")
        cell = self.monitor.list("History").get_table_iface().get_accessible_at(2, 0)
        self.wait_until("the row with the keyboard", lambda: cell.get_state_set().contains(self.desk.atspi.StateType.FOCUSED))

    def test_grid_lines_are_drawn_and_kept_over_a_restart(self):
        before = self.monitor.picture()
        self.monitor.choose_for_row(0, "Grid lines")
        self.wait_until("the stored setting", lambda: self.monitor.settings().get("Grid") == "1")
        self.wait_until("the lines", lambda: self.monitor.picture() != before)
        self.monitor.press_button("Quit")
        self.wait_until("the end", lambda: self.monitor.program.poll() is not None)

        self.monitor = self.start_monitor()
        self.monitor.press_button("Auto Refresh")
        self.monitor.wait_for_rows()
        self.monitor.choose_for_row(0, "Grid lines")
        self.wait_until("the setting to be off again", lambda: self.monitor.settings().get("Grid") == "0")


if __name__ == "__main__":
    unittest.main()
