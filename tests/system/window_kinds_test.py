#!/usr/bin/env python3
"""What a window manager does with the kinds of windows: one above all others, one without a frame, a popup menu."""
import os
import re
import unittest

from system_test import SystemTest


class WindowKinds(SystemTest):
    """Works the sample windows of the desktop's tests by their function keys."""

    def setUp(self):
        super().setUp()
        self.program = self.desk.start(os.environ["BORVANE_TEST_DESKTOP"], "--show-windows")
        self.sample = self.desk.window(self.program, "^Sample$")
        self.desk.activate(self.sample)
        self.done = 0

    def press(self, key):
        """Presses a function key in the window that has the keyboard, and waits until its work is done."""
        self.done += 1
        self.desk.press(key)
        self.wait_until(f"{key} to be done", lambda: self.output()[self.done - 1:] == [key])

    def output(self):
        return [line for line in self.desk.output_of(self.program).split("\n")[:-1] if line.startswith("F")]

    def states(self, window):
        return set(re.findall(r"_NET_WM_STATE_(\w+)", self.desk.x("xprop", "-id", window, "_NET_WM_STATE")))

    def geometry(self, window):
        """Left, top, width and height of the client area."""
        text = self.desk.x("xwininfo", "-id", window)
        return tuple(int(re.search(rf"{part}: +(-?\d+)", text)[1])
                     for part in ("Absolute upper-left X", "Absolute upper-left Y", "Width", "Height"))

    def frame_corner(self, window):
        text = self.desk.x("xwininfo", "-id", window)
        return tuple(int(re.search(rf"Absolute upper-left {axis}: +(-?\d+)", text)[1])
                     - int(re.search(rf"Relative upper-left {axis}: +(-?\d+)", text)[1]) for axis in "XY")

    def test_window_above_all_others_leaves_the_keyboard_alone(self):
        self.press("F1")
        notice = self.desk.window(self.program, "^Notice$")
        self.wait_until("the window above the others", lambda: self.desk.stacking()[-1] == notice)
        self.wait_until("its place in the middle of the screen", lambda: self.frame_corner(notice) == (579, 473))
        self.assertEqual(self.sample, self.desk.active())

        self.press("F2")
        self.desk.activate(self.sample)
        self.press("F11")
        self.assertEqual(notice, self.desk.stacking()[-1])
        self.assertEqual(self.sample, self.desk.active())

    def test_show_of_an_open_window_that_leaves_the_keyboard_does_not_raise_it(self):
        self.press("F1")
        notice = self.desk.window(self.program, "^Notice$")
        self.press("F7")
        self.wait_until("the end of its place above the others", lambda: "ABOVE" not in self.states(notice))
        self.desk.x("xdotool", "windowmove", notice, "300", "250")
        self.press("F11")
        self.wait_until("the sample window above it", lambda: self.desk.stacking()[-1] == self.sample)
        self.press("F2")
        self.press("F2")
        self.assertEqual(self.sample, self.desk.stacking()[-1])
        self.assertEqual(self.sample, self.desk.active())

    def assert_is_bar(self, bar):
        self.wait_until("the bar at its place", lambda: self.geometry(bar) == (40, 200, 500, 29))
        self.wait_until("it to be left out", lambda: {"SKIP_TASKBAR", "SKIP_PAGER"} <= self.states(bar))
        self.assertIn("= 0, 0, 0, 0", self.desk.x("xprop", "-id", bar, "_NET_FRAME_EXTENTS"))
        self.wait_until("the keyboard in the bar", lambda: self.desk.active() == bar)

    def test_window_without_a_frame_keeps_its_place_and_stays_out_of_the_task_bar(self):
        self.press("F3")
        bar = self.desk.window(self.program, "^Bar$")
        self.assert_is_bar(bar)
        self.press("F4")
        self.wait_until("the bar to go", lambda: "Bar" not in self.desk.windows(self.program))
        self.desk.activate(self.sample)
        self.press("F3")
        bar = self.desk.window(self.program, "^Bar$")
        self.assert_is_bar(bar)

        self.press("F8")
        self.wait_until("the bar off the screen", lambda: self.geometry(bar) == (-80, 200, 500, 1))

    def test_window_goes_above_the_others_and_back_while_it_is_open(self):
        self.press("F3")
        bar = self.desk.window(self.program, "^Bar$")
        self.assert_is_bar(bar)
        self.press("F5")
        self.wait_until("the bar above the others", lambda: "ABOVE" in self.states(bar))
        self.assert_is_bar(bar)
        self.press("F4")
        self.wait_until("the bar to go", lambda: "Bar" not in self.desk.windows(self.program))
        self.desk.activate(self.sample)
        self.press("F3")
        bar = self.desk.window(self.program, "^Bar$")  # Qt may have created the window again
        self.wait_until("the bar above the others again", lambda: "ABOVE" in self.states(bar))
        self.assert_is_bar(bar)
        self.press("F6")
        self.wait_until("the bar among the others", lambda: "ABOVE" not in self.states(bar))
        self.assert_is_bar(bar)

    def test_menu_opens_at_the_pointer_and_is_worked_with_the_keyboard(self):
        self.press("F3")
        bar = self.desk.window(self.program, "^Bar$")
        self.assert_is_bar(bar)
        self.desk.x("xdotool", "mousemove", "140", "210")
        self.desk.press("F9")
        self.wait_until("the menu at the pointer", lambda: "+140+210" in self.desk.x("xwininfo", "-root", "-tree"))
        self.desk.press("Down", "Return")
        self.wait_until("the entry's click", lambda: self.desk.output_of(self.program).split("\n")[-3:] == ["expand", "F9", ""])


if __name__ == "__main__":
    unittest.main()
