#!/usr/bin/env python3
"""The wheel is held only while the pointer is in an armed band; other clients can have it then."""

import subprocess
import time
import unittest

from quillon_desktop import BAND, HEIGHT, OFF, WIDTH, GestureTest
from witnesses import X11_PROBE, Lines, await_idle, await_wheel, wait_until, wheel_is_free

PLACES_IN_BANDS = ((0, 400), (WIDTH - 1, 400), (640, 0), (640, HEIGHT - 1))


class Grabs(GestureTest):
    def expect_free_everywhere(self, quillon) -> None:
        for place in (*PLACES_IN_BANDS, (WIDTH // 2, HEIGHT // 2)):
            self.injector.move(*place)
            await_idle(quillon.process)
            self.assertTrue(wheel_is_free(self.desktop), f"the wheel is held at {place}")

    def test_no_edge_is_armed(self):
        quillon = self.start_quillon()
        quillon.wait_for_line("launched")
        self.expect_free_everywhere(quillon)

    def test_the_tool_is_off(self):
        quillon = self.start_quillon("Left", "Right", "Top", "Bottom", **OFF)
        quillon.wait_for_line("launched")
        self.expect_free_everywhere(quillon)

    def test_the_pointer_comes_and_goes(self):
        self.start_quillon("Left", "Right", "Top", "Bottom")
        for place in PLACES_IN_BANDS:
            self.go_into_band(*place)
            left = time.monotonic()
            self.go_out_of_band()
            self.assertLess(time.monotonic() - left, 1)

    def test_another_program_takes_the_wheel(self):
        self.start_quillon("Left")
        self.go_into_band(0, 400)
        self.assertEqual(self.hold_wheel("in the band"), "refused")
        self.go_out_of_band()
        self.assertEqual(self.hold_wheel("outside"), "held")
        self.injector.scroll("up", 3)
        lines = Lines(self.desktop, "outside")
        wait_until(lambda: lines.all()[1:] == ["wheel 4"] * 3, "the other program gets the wheel")

    def hold_wheel(self, name: str) -> str:
        holder = self.desktop.start(name, [X11_PROBE, "hold-wheel"], stdin=subprocess.PIPE)
        self.addCleanup(self.desktop.end, holder)
        lines = Lines(self.desktop, name)
        return wait_until(lambda: lines.all()[:1], "the other program's word")[0]

    def test_it_ends_with_the_pointer_in_a_band(self):
        quillon = self.start_quillon("Left")
        self.go_into_band(BAND, 400)
        self.assertEqual(quillon.stop(), 0)
        self.assertTrue(wheel_is_free(self.desktop))


if __name__ == "__main__":
    unittest.main()
