#!/usr/bin/env python3
"""Devices with scroll axes come and go while others are held."""

import concurrent.futures
import unittest

from device_desktop import CENTRE, SCROLLERS
from devices import await_taken
from recovery import RecoveryTest


class DevicesComeAndGo(RecoveryTest):
    def setUp(self):
        super().setUp()
        self.addCleanup(lambda: self.touchpad.is_enabled or self.touchpad.enable())

    def expect_it_works(self, device) -> None:
        """Outside of the band: it moves the pointer, scrolls and clicks."""
        self.step(2, 2, device)
        self.take_up(device)
        device.scroll("down", 1)
        self.take_up(device)  # and have done with the first notch, whatever GTK 3 makes of it
        self.client.forget()
        device.scroll("down", 1)
        device.click(3)
        self.assertEqual(self.client.received(),
                         ["scroll 0 -1", "derived 0 -1", "press 3", "release 3"])

    def expect_gestures(self, device) -> None:
        self.finish_gesture()
        self.history.go_to(2)
        device.scroll("up", 4)
        self.history.expect(1)

    def test_one_goes_and_comes_within_the_band(self):
        self.touchpad.disable()
        self.expect_gestures(self.mouse)
        self.touchpad.enable()
        self.await_held()
        self.expect_gestures(self.touchpad)
        self.go_out_of_band()
        self.expect_it_works(self.touchpad)

    def test_one_goes_within_the_band_and_comes_outside(self):
        self.touchpad.disable()
        self.go_to(*CENTRE["GTK 3"])
        self.expect_it_works(self.mouse)
        self.touchpad.enable()
        self.await_free()
        self.expect_it_works(self.touchpad)
        self.expect_all_is_well()

    def test_one_goes_outside_and_comes_within_the_band(self):
        self.go_out_of_band()
        self.touchpad.disable()
        self.go_to(20, CENTRE["GTK 3"][1])
        await_taken(self.desktop, [name for name in SCROLLERS if name != "touchpad"])
        self.touchpad.enable()
        self.await_held()
        self.expect_gestures(self.touchpad)
        self.go_out_of_band()
        self.expect_it_works(self.touchpad)

    def test_one_comes_scrolling(self):
        """As a mouse does that sleeps until its wheel is turned. Its scrolling is on its way before
        anybody has taken it, also as presses of wheel buttons; one of them held back for good would
        be a pointer that stands still."""
        with concurrent.futures.ThreadPoolExecutor(1) as other_hand:
            for _ in range(30):
                self.touchpad.disable()
                await_taken(self.desktop, [name for name in SCROLLERS if name != "touchpad"])
                # Another device keeps the program busy meanwhile.
                other = other_hand.submit(self.second_mouse.scroll, "up", 60, gap=0.001)
                self.touchpad.enable()
                self.touchpad.scroll("up", 40, gap=0.001)
                other.result()
                self.await_held()
        self.expect_gestures(self.touchpad)
        self.go_out_of_band()
        self.expect_it_works(self.touchpad)

    def test_one_goes_with_a_button_down(self):
        self.press(1, self.touchpad)
        self.touchpad.disable()
        self.await_no_button()
        self.touchpad.enable()
        self.await_held()
        self.expect_gestures(self.touchpad)
        self.click(1, self.touchpad)
        self.await_no_button()

    def test_one_is_taken_off_the_pointer_and_given_back(self):
        self.desktop.run("xinput", "float", self.touchpad.name)
        self.addCleanup(self.desktop.run, "xinput", "reattach", self.touchpad.name,
                        "Virtual core pointer")
        self.expect_gestures(self.mouse)
        self.desktop.run("xinput", "reattach", self.touchpad.name, "Virtual core pointer")
        self.await_held()
        self.expect_gestures(self.touchpad)
        self.go_out_of_band()
        self.expect_it_works(self.touchpad)


if __name__ == "__main__":
    unittest.main()
