#!/usr/bin/env python3
"""Bands on several monitors and on a scaled desktop, also when these change while it runs."""

import unittest

from quillon_desktop import BAND, HEIGHT, WIDTH, GestureTest
from witnesses import await_wheel

HALF = WIDTH // 2


class Monitors(GestureTest):
    def set_monitors(self, *rectangles) -> None:
        self.desktop.set_monitors(rectangles)
        self.addCleanup(self.desktop.set_monitors, [(0, 0, WIDTH, HEIGHT)])

    def expect_band(self, inside, outside) -> None:
        """Both ways, so that each answer is one that has just changed."""
        self.go_into_band(*inside)
        self.go_out_of_band(*outside)
        self.go_into_band(*inside)

    def test_a_shared_edge_is_an_edge_of_each(self):
        self.set_monitors((0, 0, HALF, HEIGHT), (HALF, 0, HALF, HEIGHT))
        quillon = self.start_quillon("Left")
        self.expect_band(inside=(HALF, 400), outside=(HALF - 1, 400))
        self.expect_band(inside=(HALF + BAND, 400), outside=(HALF + BAND + 1, 400))
        self.expect_band(inside=(BAND, 400), outside=(BAND + 1, 400))
        self.assertEqual(quillon.stop(), 0)
        self.start_quillon("Right")
        self.expect_band(inside=(HALF - 1, 400), outside=(HALF, 400))
        self.expect_band(inside=(HALF - BAND, 400), outside=(HALF - BAND - 1, 400))
        self.expect_band(inside=(WIDTH - BAND, 400), outside=(WIDTH - BAND - 1, 400))

    def test_the_main_monitor_is_not_at_the_origin(self):
        top = 200  # of the main monitor, which stands lower than the other
        self.set_monitors((HALF, top, HALF, 600), (0, 0, HALF, 700))
        quillon = self.start_quillon("Left", "Top")
        self.expect_band(inside=(BAND, 400), outside=(BAND + 1, 400))
        self.expect_band(inside=(HALF + BAND, 400), outside=(HALF + BAND + 1, 400))
        self.expect_band(inside=(960, top + BAND), outside=(960, top + BAND + 1))
        self.expect_band(inside=(300, BAND), outside=(300, BAND + 1))
        # What belongs to no monitor has no edge.
        self.expect_band(inside=(960, top), outside=(960, top - 1))
        self.expect_band(inside=(0, 699), outside=(0, 700))
        self.history.go_to(2)
        self.injector.move(960, top + 1)
        await_wheel(self.desktop, "taken")
        self.injector.scroll("up", 4)
        self.history.expect(1)
        self.expect_no_more_changes(quillon)

    def test_monitors_change(self):
        self.start_quillon("Left")
        self.go_into_band(0, 400)
        self.go_out_of_band(HALF, 400)
        # The pointer stays where it is, and the edge comes to it.
        self.set_monitors((0, 0, HALF, HEIGHT), (HALF, 0, HALF, HEIGHT))
        await_wheel(self.desktop, "taken")
        self.set_monitors((0, 0, HALF + 100, HEIGHT), (HALF + 100, 0, HALF - 100, HEIGHT))
        await_wheel(self.desktop, "free")
        self.expect_band(inside=(HALF + 100, 400), outside=(HALF + 99, 400))


class Scale(GestureTest):
    def set_dpi(self, dpi: int) -> None:
        self.desktop.run("xprop", "-root", "-format", "RESOURCE_MANAGER", "8s",
                         "-set", "RESOURCE_MANAGER", f"*color: red\nXft.dpi:\t{dpi}\nXft.hinting:\t1\n")

    def test_the_band_is_as_wide_as_the_desktop_is_scaled(self):
        self.set_dpi(192)
        quillon = self.start_quillon("Left", "Bottom")
        self.go_into_band(2 * BAND, 400)
        self.go_out_of_band(2 * BAND + 1, 400)
        self.go_into_band(640, HEIGHT - 2 * BAND)
        self.go_out_of_band(640, HEIGHT - 2 * BAND - 1)
        self.assertEqual(quillon.stop(), 0)

    def test_the_scale_changes(self):
        self.set_dpi(96)
        self.start_quillon("Left")
        self.go_into_band(BAND, 400)
        self.go_out_of_band(2 * BAND, 400)
        self.set_dpi(192)
        await_wheel(self.desktop, "taken")
        self.go_out_of_band(2 * BAND + 1, 400)
        self.set_dpi(288)
        await_wheel(self.desktop, "taken")
        self.set_dpi(96)
        await_wheel(self.desktop, "free")
        self.go_into_band(BAND, 400)


if __name__ == "__main__":
    unittest.main()
