#!/usr/bin/env python3
"""Devices with scroll axes: whatever else the pointer does is as without the program, in the bands
as well as outside."""

import unittest

from device_desktop import CENTRE, HALF, DeviceTest
from quillon_desktop import BAND, HEIGHT, WIDTH


class SmoothPointer(DeviceTest):
    EDGES = ("Left", "Right")

    def expect_same(self, scenario, *needed: str, leave_out="") -> None:
        """The programs receive these kinds of event, among others."""
        without = self.expect_as_without(scenario, *self.EDGES, leave_out=leave_out)
        kinds = {line.split()[0] for lines in without.values() for line in lines}
        self.assertLessEqual(set(needed), kinds)

    def test_hover(self):
        def scenario():
            for _, y in CENTRE.values():
                self.go_into_band(BAND // 2, y)
                for _ in range(50):
                    self.step(0, 2)
                    self.step(1, -1, self.second_mouse)
                    self.step(-1, 0, self.touchpad)
        self.expect_same(scenario, "motion", "enter", "leave")

    def test_clicks(self):
        def scenario():
            for _, y in CENTRE.values():
                self.go_into_band(WIDTH - 5, y)
                for device in (self.mouse, self.touchpad):
                    self.step(0, 30, device)  # so far away that nothing is a double click
                    for button in (1, 3, 2, 8):
                        self.click(button, device)
                self.press(1)
                self.press(3)
                self.release(1)
                self.release(3)
        self.expect_same(scenario, "press", "release")

    def test_double_clicks(self):
        def scenario():
            for _, y in CENTRE.values():
                self.go_into_band(5, y)
                self.step(0, 3)
                self.click(1)
                self.click(1)
                self.step(0, 30)  # too far for a third and fourth
                self.click(1, self.touchpad)
                self.click(1, self.touchpad)
        self.expect_same(scenario, "press", "release", "double")

    def test_drags_within_the_band(self):
        def scenario():
            for _, y in CENTRE.values():
                self.go_into_band(5, y)
                self.press(1)
                for _ in range(20):
                    self.step(1, 1)
                self.release(1)
        self.expect_same(scenario, "press", "motion", "release")

    def test_drags_out_of_the_band(self):
        def scenario():
            for _, y in CENTRE.values():
                self.go_into_band(5, y)
                self.press(1)
                for _ in range(20):
                    self.step(10, 1)
                self.release(1)
                self.await_free()
        self.expect_same(scenario, "press", "motion", "release")

    def test_drags_into_the_band(self):
        """Nothing is held before the button is up."""
        def scenario():
            for _, y in CENTRE.values():
                self.go_to(200, y)
                self.press(1)
                for _ in range(19):
                    self.step(-10, 1)
                self.await_pointer(10, y + 19)
                self.release(1)
        self.expect_same(scenario, "press", "motion", "release")

    def test_drags_across_the_band_and_back(self):
        def scenario():
            for _, y in CENTRE.values():
                self.go_into_band(5, y)
                self.press(3)
                for step in [30] * 5 + [-30] * 5 + [30] * 5:
                    self.step(step, 0)
                self.release(3)
                self.await_free()
                self.press(1)
                for step in [-30] * 5 + [30] * 5:
                    self.step(step, 0)
                self.release(1)
        self.expect_same(scenario, "press", "motion", "release")

    def test_drags_from_one_program_to_the_other(self):
        def scenario():
            self.go_into_band(5, HALF - 100)
            self.press(1)
            for _ in range(20):
                self.step(0, 10)
            self.release(1)
            self.step(0, 10)
        self.expect_same(scenario, "press", "motion", "release")

    def test_leaving_fast(self):
        """Far away within a few milliseconds, and straight through the band from far away: it ends
        where it should, however much of the way the programs get to see."""
        def scenario():
            for _, y in CENTRE.values():
                self.go_into_band(0, y)
                for _ in range(20):
                    self.mouse.glide(60, 0, 10)
                    self.mouse.glide(-60, 0, 10)
                    self.mouse.glide(30, 1, 3)
                    self.click(1)
                    self.mouse.glide(-30, -1, 3)
                    self.click(3)
                self.mouse.glide(20, 0, 20)
                self.await_pointer(400, y)
        self.expect_same(scenario, "press", "release", leave_out="motion")

    def test_against_the_edge(self):
        def scenario():
            for _, y in CENTRE.values():
                self.go_into_band(5, y)
                for _ in range(5):
                    self.step(-10, 3)
                self.step(25, 0)
                self.click(1)
        self.expect_same(scenario, "motion", "press", "release")

    def test_programs_that_set_the_pointer(self):
        """Into the band and out of it, and on from there with a device."""
        def scenario():
            for _, y in CENTRE.values():
                self.go_to(300, y)
                self.warp(10, y)
                self.await_held()
                self.step(3, 4)
                self.click(1)
                self.await_pointer(13, y + 4)
                self.warp(500, y)
                self.await_free()
                self.step(3, 4)
                self.click(1)
                self.await_pointer(503, y + 4)
                self.warp(WIDTH - 10, y)
                self.await_held()
                self.warp(20, y)
                self.step(-3, 4)
                self.click(1)
                self.await_pointer(17, y + 4)
        self.expect_same(scenario, "motion", "press", "release")

    def warp(self, x: int, y: int) -> None:
        """As a program does: no device has moved."""
        self.desktop.run("xdotool", "mousemove", x, y)
        self.await_pointer(x, y)

    def test_keys_and_the_other_pointer(self):
        """What comes by XTEST from others is not ours to pass on twice."""
        def scenario():
            for _, y in CENTRE.values():
                self.go_into_band(5, y)
                self.injector.move(7, y)
                self.click(1, self.injector)
                self.injector.move(9, y + 1)
                self.step(1, 30)  # so far away that it is no double click
                self.click(1)
        self.expect_same(scenario, "motion", "press", "release")


class SmoothMonitors(DeviceTest):
    """Edges where a mouse goes on to the next monitor."""

    def setUp(self):
        super().setUp()
        half = WIDTH // 2
        self.desktop.set_monitors([(0, 0, half, HEIGHT), (half, 0, half, HEIGHT)])
        self.addCleanup(self.desktop.set_monitors, [(0, 0, WIDTH, HEIGHT)])

    def test_across_the_shared_edge(self):
        def scenario():
            for _, y in CENTRE.values():
                self.go_to(WIDTH // 2 - 200, y)
                for step in [10] * 40 + [-10] * 40:
                    self.step(step, 0)
                self.go_into_band(WIDTH // 2 + 5, y)
                self.click(1)
                self.press(1)
                for _ in range(20):
                    self.step(-10, 0)
                self.release(1)
                self.go_into_band(WIDTH // 2 - 5, y)
                for _ in range(10):
                    self.step(50, 0)
        without = self.expect_as_without(scenario, "Left", "Right")
        for name, lines in without.items():
            self.assertGreater(sum(line.startswith("motion") for line in lines), 100, name)

    def test_notches_at_the_shared_edge(self):
        self.go_out_of_band(WIDTH // 4, CENTRE["GTK 3"][1])
        self.start("Right")
        self.history.go_to(2)
        self.go_into_band(WIDTH // 2 - 1, CENTRE["GTK 3"][1])
        self.mouse.scroll("up", 4)
        self.history.expect(1)
        self.go_out_of_band(WIDTH // 2, CENTRE["GTK 3"][1])
        self.mouse.scroll("up", 4)
        self.go_into_band(WIDTH - 1, CENTRE["GTK 3"][1])
        self.mouse.scroll("down", 4)
        self.history.expect(2)
        self.go_out_of_band(WIDTH // 4, CENTRE["GTK 3"][1])
        self.expect_no_more_changes(self.quillon)


if __name__ == "__main__":
    unittest.main()
