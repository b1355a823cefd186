#!/usr/bin/env python3
"""Devices with scroll axes: what is scrolled outside the bands arrives as if nobody were there."""

import unittest

from device_desktop import CENTRE, DeviceTest, total
from quillon_desktop import BAND, HEIGHT, OFF, WIDTH

EDGES = ("Left", "Right", "Top", "Bottom")


class SmoothElsewhere(DeviceTest):
    def scroll_everything(self) -> None:
        """Wheels, wheels with a finer grain, and fingers, along both axes. Whole notches in all:
        the server keeps what is left for the next time."""
        for place in CENTRE.values():
            self.go_to(*place)
            self.take_up(self.mouse)
            self.scroll(self.mouse, "down", 20)
            self.scroll(self.mouse, "right", 10)
            self.take_up(self.second_mouse)
            self.scroll(self.second_mouse, "up", 32, part=1 / 8)
            self.scroll(self.second_mouse, "left", 8, part=1 / 8)
            self.take_up(self.touchpad)
            self.scroll(self.touchpad, "down", 48, part=5 / 120)
            self.scroll(self.touchpad, "right", 120, part=1 / 120)
            self.take_up(self.mouse)
            self.scroll(self.mouse, "up", 20)

    def expect_scrolls(self, received: dict) -> None:
        """What was compared was something. GTK 3 makes nothing of a device's first step along an
        axis; what the server derives for it has all."""
        self.assertEqual(total(received["Qt 6"]), (10, 2))
        self.assertEqual(total(received["GTK 3"], "derived"), (10, 2))

    def test_no_edge_is_armed(self):
        self.expect_scrolls(self.expect_as_without(self.scroll_everything))

    def test_the_tool_is_off(self):
        self.expect_scrolls(self.expect_as_without(self.scroll_everything, *EDGES,
                                                   **OFF))

    def test_outside_of_the_bands(self):
        self.expect_scrolls(self.expect_as_without(self.scroll_everything, *EDGES))

    def test_right_beside_the_band(self):
        def scenario():
            for x in (BAND + 1, WIDTH - BAND - 1):
                self.go_to(x, HEIGHT // 4)
                self.take_up(self.mouse)
                self.scroll(self.mouse, "down", 20)
                self.take_up(self.touchpad)
                self.scroll(self.touchpad, "left", 24, part=1 / 8)
        self.expect_as_without(scenario, "Left", "Right")

    def test_another_device_after_scrolling_in_a_band(self):
        def scenario(in_band: bool):
            for _, y in CENTRE.values():
                self.go_into_band(BAND // 2, y)
                if in_band:
                    self.scroll(self.touchpad, "left", 12, part=1 / 4)
                    self.scroll(self.mouse, "up", 3)
                self.go_out_of_band(WIDTH // 2, y)
                for device in (self.touchpad, self.second_mouse):
                    self.take_up(device)
                    self.scroll(device, "down", 24, part=1 / 8)

        without = self.listen(lambda: scenario(in_band=False))
        self.start("Left")
        received = self.listen(lambda: scenario(in_band=True))
        self.assertEqual({name: total(lines) for name, lines in received.items()},
                         {name: total(lines) for name, lines in without.items()})
        self.assertEqual(total(received["Qt 6"]), (0, -6))


if __name__ == "__main__":
    unittest.main()
