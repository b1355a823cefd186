#!/usr/bin/env python3
"""Windows of other programs: what we say of them, and how they come forward, under each window
manager."""

import contextlib
import os
import signal
import unittest

from window_desktop import (ALL_WINDOWS, EVERY_DESKTOP, IGNORING_OTHERS, WindowsTest, WindowTool)
from witnesses import wait_until

EVERYTHING = ALL_WINDOWS | IGNORING_OTHERS


@contextlib.contextmanager
def stopped(program):
    os.kill(program.pid, signal.SIGSTOP)
    try:
        yield
    finally:
        os.kill(program.pid, signal.SIGCONT)


class WindowsOpenbox(WindowsTest):
    """With openbox; the same for the others below."""

    options = {"window_manager": "openbox"}
    entries = {"org.example.Editor": "Name=Text Editor\nExec=editor %U",
               "viewer": "Name=Viewer\nStartupWMClass=Looker"}

    def test_nothing_is_open(self):
        wait_until(lambda: self.tool("list") in ([], None), "no windows")
        self.assertIsNone(self.tool("front"))

    def test_one_window(self):
        alone = self.open("alone")
        self.expect_focus(alone.windows[0])
        self.assertEqual(self.processes(), [alone.pid])
        self.assertEqual(self.tool("front")["process"], alone.pid)

    def test_order_names_and_places(self):
        editor = self.open("editor")
        viewer = self.open("a", **{"class": "a/Looker"})
        unknown = self.open("unknown", place=(500, 300, 200, 100))
        self.use(viewer.windows[0])
        self.expect_order(*viewer.windows, *unknown.windows, *editor.windows)
        listed = self.listed()
        self.assertEqual([each["name"] for each in listed], ["Viewer", "Unknown", "Text Editor"])
        self.assertEqual([each["process"] for each in listed],
                         [viewer.pid, unknown.pid, editor.pid])
        self.assertEqual([each["bounds"] for each in listed],
                         [self.frame(each.windows[0]) for each in (viewer, unknown, editor)])
        self.assertEqual([each["layer"] for each in listed], [0, 0, 0])
        self.assertTrue(all(each["on screen"] for each in listed))
        self.assertEqual(self.tool("front"),
                         {"process": viewer.pid, "name": "Viewer", "regular": True})

    def test_all_windows_come_forward_in_their_order(self):
        lower, upper = self.open("pair", 2).windows
        other = self.open("other")
        self.use(lower)
        self.use(other.windows[0])
        self.expect_order(*other.windows, lower, upper)
        pair = self.tool("front") and self.listed()[1]["process"]
        self.assertTrue(self.tool("running", pair)["regular"])
        self.tool("activate", pair, EVERYTHING)
        self.expect_focus(lower)
        self.expect_order(lower, upper, *other.windows)

    def test_only_the_front_most_window_comes_forward(self):
        pair = self.open("pair", 2)
        other = self.open("other")
        self.use(other.windows[0])
        self.tool("running", pair.pid)
        self.tool("activate", pair.pid, IGNORING_OTHERS)
        self.expect_focus(pair.windows[1])
        self.expect_order(pair.windows[1], *other.windows, pair.windows[0])

    def test_one_window_of_an_application(self):
        pair = self.open("pair", 2)
        other = self.open("other")
        self.use(other.windows[0])
        self.assertEqual(self.tool("windows", pair.pid), 2)
        self.assertTrue(self.tool("focus", pair.pid, 1))
        self.expect_focus(pair.windows[0])
        self.expect_order(pair.windows[0], *other.windows, pair.windows[1])
        self.assertTrue(self.tool("raise", pair.pid, 0))
        self.expect_order(pair.windows[1], pair.windows[0], *other.windows)

    def test_a_whole_switch_to_a_program_that_hangs(self):
        pair = self.open("pair", 2)
        other = self.open("other")
        self.use(other.windows[0])
        with stopped(pair):
            self.assertTrue(self.tool("bring", pair.pid))
            self.expect_focus(pair.windows[1])
            self.expect_order(pair.windows[1], pair.windows[0], *other.windows)
            self.assertEqual(self.processes(), [pair.pid, pair.pid, other.pid])

    def test_what_is_on_the_screen(self):
        here, minimised, elsewhere, everywhere = (
            self.open(title) for title in ("here", "minimised", "elsewhere", "everywhere"))
        self.minimise(minimised.windows[0])
        self.move_to_desktop(elsewhere.windows[0], 2)
        self.move_to_desktop(everywhere.windows[0], EVERY_DESKTOP)
        self.assertCountEqual(self.processes(), [here.pid, everywhere.pid])
        self.assertCountEqual(self.processes(on_screen=False), [minimised.pid, elsewhere.pid])
        self.desktop.set_desktop(2)
        self.assertCountEqual(self.processes(), [elsewhere.pid, everywhere.pid])
        self.assertTrue(self.tool("running", minimised.pid)["regular"])

    def test_one_that_was_moved_to_another_desktop_is_followed(self):
        moved = self.open("moved")
        beyond = self.open("beyond")
        self.tool("running", moved.pid)
        for program in moved, beyond:
            self.move_to_desktop(program.windows[0], 3)
        self.desktop.set_desktop(3)
        self.use(beyond.windows[0])
        self.desktop.set_desktop(0)
        self.tool("activate", moved.pid, EVERYTHING)
        self.expect_focus(moved.windows[0])
        self.assertEqual(self.desktop.current_desktop(), 3)
        self.expect_order(*moved.windows, *beyond.windows)

    def test_one_that_was_closed_meanwhile_harms_nothing(self):
        pair = self.open("pair", 2)
        other = self.open("other")
        self.use(other.windows[0])
        self.tool("running", pair.pid)
        self.tool("windows", pair.pid)
        pair.close(1)
        wait_until(lambda: pair.windows[1] not in self.stacking(), "it is closed")
        self.tool("activate", pair.pid, EVERYTHING)
        self.expect_focus(pair.windows[0])
        self.assertFalse(self.tool("raise", pair.pid, 0), "the closed one")
        self.use(other.windows[0])
        pair.close(0)
        wait_until(lambda: pair.windows[0] not in self.stacking(), "it is closed")
        self.tool("activate", pair.pid, EVERYTHING)
        self.assertIsNone(self.tool("running", pair.pid))
        self.assertEqual(self.processes(), [other.pid])
        self.expect_focus(other.windows[0])

    def test_one_that_was_minimised_meanwhile_stays_so(self):
        minimised = self.open("minimised")
        other = self.open("other")
        self.use(other.windows[0])
        self.tool("running", minimised.pid)
        self.minimise(minimised.windows[0])
        self.tool("activate", minimised.pid, EVERYTHING)
        self.assertEqual(self.tool("windows", minimised.pid), 0)
        self.expect_focus(other.windows[0])
        self.assertIn("HIDDEN", self.states(minimised.windows[0]))

    def test_whose_it_is_where_the_window_does_not_say(self):
        silent = self.open("silent", pid=0)
        foreign = self.open("foreign", pid=1, machine="somewhere-else")
        self.use(silent.windows[0])
        self.assertEqual(self.processes(), [silent.pid, foreign.pid])
        self.assertEqual(self.tool("front")["process"], silent.pid)

    def test_what_taskbars_do_not_show(self):
        dock = self.open("dock", type="_NET_WM_WINDOW_TYPE_DOCK", place=(0, 700, 1280, 30))
        hint = self.open("hint", state="_NET_WM_STATE_SKIP_TASKBAR")
        ordinary = self.open("ordinary")
        layers = {each["process"]: each["layer"] for each in self.listed()}
        self.assertEqual((layers[hint.pid], layers[ordinary.pid]), (0, 0))
        self.assertNotEqual(layers[dock.pid], 0)
        regular = {each.title: self.tool("running", each.pid)["regular"]
                   for each in (dock, hint, ordinary)}
        self.assertEqual(regular, {"dock": False, "hint": False, "ordinary": True})

    def test_two_hundred_windows(self):
        many = self.open("many", 100)
        more = self.open("more", 99)
        last = self.open("last")
        by_id = {window: each.pid for each in (many, more, last) for window in each.windows}
        self.use(many.windows[0])
        self.assertEqual(self.processes(), [by_id[window] for window in self.stacking()])
        self.tool("running", last.pid)
        self.tool("activate", last.pid, EVERYTHING)
        self.expect_focus(last.windows[0])
        self.assertEqual(self.stacking()[0], last.windows[0])


class WindowsIcewm(WindowsOpenbox):
    options = {"window_manager": "icewm"}


class WindowsMetacity(WindowsOpenbox):
    options = {"window_manager": "metacity", "bus": True}


class WindowsXfwm4(WindowsOpenbox):
    options = {"window_manager": "xfwm4", "bus": True}


class WindowPlaces(WindowsTest):
    """On two monitors, the main one to the right, with two pixels to a point."""

    def test_bounds_are_from_the_main_screens_top_left_in_points(self):
        self.desktop.set_monitors([(640, 100, 640, 700), (0, 0, 640, 800)])
        self.desktop.run("xprop", "-root", "-format", "RESOURCE_MANAGER", "8s", "-set",
                         "RESOURCE_MANAGER", "Xft.dpi:\t192\n")
        window = self.open("window").windows[0]
        x, y, width, height = self.frame(window)
        self.assertEqual(WindowTool(self.desktop)("list")[0]["bounds"],
                         [(x - 640) / 2, (y - 100) / 2, width / 2, height / 2])


if __name__ == "__main__":
    unittest.main()
