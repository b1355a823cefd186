#!/usr/bin/env python3
"""The first scroll after a band counts like any other.

Programs keep in mind where a device's axes stand. In the band the axes move without them, and the
pointer passes from one device to another and back; neither may cost or give them a notch. They read
the axes when they come to it, so they are given the time: no hand scrolls within milliseconds."""

import unittest

from device_desktop import CENTRE, DeviceTest, total
from quillon_desktop import BAND


class FirstScroll(DeviceTest):
    def expect_only_the_band_is_missing(self, scenario) -> None:
        """`scenario` is called with whether to scroll in the band as well."""
        without = self.listen(lambda: scenario(False))
        self.start("Left", Tool4ScrollSensitivity=10)
        received = self.listen(lambda: scenario(True))
        for name in CENTRE:
            for kind in ("scroll", "derived"):
                self.assertEqual(total(received[name], kind), total(without[name], kind), name)
        self.assertLess(total(without["Qt 6"])[1], -1, "there was something to compare")
        self.expect_no_more_changes(self.quillon)

    def come_to(self, place) -> None:
        """So that the program under the pointer knows where the axes stand."""
        self.go_out_of_band(*place)
        for device in (self.touchpad, self.mouse):
            self.take_up(device)
            self.settle()
            self.scroll(device, "down", 1)
            self.scroll(device, "right", 1)

    def come_back_to(self, place) -> None:
        self.go_out_of_band(*place)
        self.settle()

    def test_after_leaving_by_the_same_device(self):
        def scenario(in_band: bool):
            for place in CENTRE.values():
                self.come_to(place)
                self.go_into_band(BAND // 2, place[1])
                if in_band:
                    self.scroll(self.mouse, "up", 2)
                    self.scroll(self.mouse, "right", 1)
                self.come_back_to(place)
                self.scroll(self.mouse, "down", 4)
                self.scroll(self.mouse, "left", 1)
        self.expect_only_the_band_is_missing(scenario)

    def test_after_nothing_but_passing_through(self):
        def scenario(_):
            for place in CENTRE.values():
                self.come_to(place)
                self.go_into_band(BAND // 2, place[1])
                self.come_back_to(place)
                self.scroll(self.mouse, "down", 4)
        self.expect_only_the_band_is_missing(scenario)

    def test_after_another_program_took_the_pointer_away(self):
        def scenario(in_band: bool):
            for place in CENTRE.values():
                self.come_to(place)
                self.go_into_band(BAND // 2, place[1])
                if in_band:
                    self.scroll(self.mouse, "up", 3)
                self.desktop.run("xdotool", "mousemove", *place)
                self.await_pointer(*place)
                self.settle()
                self.scroll(self.mouse, "down", 4)
        without = self.listen(lambda: scenario(False))
        self.start("Left", Tool4ScrollSensitivity=10)
        received = self.listen(lambda: scenario(True))
        for name in CENTRE:
            self.assertEqual(total(received[name]), total(without[name]), name)
        self.expect_no_more_changes(self.quillon)

    def test_after_the_program_has_ended_in_the_band(self):
        place = CENTRE["Qt 6"]

        def scenario(in_band: bool):
            self.come_to(place)
            self.go_into_band(BAND // 2, place[1])
            if in_band:
                self.scroll(self.mouse, "up", 3)
                self.assertEqual(self.quillon.stop(), 0)
            self.settle()
            self.scroll(self.mouse, "down", 4)
        without = self.listen(lambda: scenario(False))
        self.start("Left", Tool4ScrollSensitivity=10)
        received = self.listen(lambda: scenario(True))
        self.assertEqual(total(received["Qt 6"]), total(without["Qt 6"]))


if __name__ == "__main__":
    unittest.main()
