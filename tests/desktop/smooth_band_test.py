#!/usr/bin/env python3
"""Devices with scroll axes in a band: each notch counts once, and none slips through."""

import concurrent.futures
import unittest

from device_desktop import CENTRE, DeviceTest, gathered
from quillon_desktop import BAND
from witnesses import wait_until

ROW = 60  # desktops, so that the end of the row does not matter


class SmoothBand(DeviceTest):
    maxDiff = None

    def setUp(self):
        super().setUp()
        self.go_out_of_band()
        self.start("Left")
        self.addCleanup(self.go_out_of_band)
        self.history.go_to(0)

    def enter(self, name="GTK 3") -> None:
        """The band over this client, which has nothing to tell any more."""
        self.go_into_band(BAND // 2, CENTRE[name][1])
        self.clients[name].received()

    def expect_no_leak(self, name="GTK 3") -> None:
        """Nothing at all but the notches came from the devices."""
        self.assertEqual(gathered(self.clients[name].received()), [])

    def have_a_long_row(self) -> None:
        self.desktop.run("wmctrl", "-n", ROW)
        self.addCleanup(self.desktop.run, "wmctrl", "-n", 4)
        wait_until(lambda: self.desktop.desktop_count() == ROW, "a long row of desktops")

    def at_once(self, *actions) -> None:
        with concurrent.futures.ThreadPoolExecutor(len(actions)) as pool:
            for done in [pool.submit(action) for action in actions]:
                done.result()

    def test_two_hundred_notches_are_fifty_desktops(self):
        self.have_a_long_row()
        for name in CENTRE:
            self.go_out_of_band()
            self.history.go_to(0)
            self.enter(name)
            self.mouse.scroll("down", 200, gap=0.005)
            self.expect_changes(50, last=50)
            self.expect_no_leak(name)
        self.expect_no_more_changes(self.quillon)

    def test_two_thousand_notches_in_two_seconds(self):
        self.enter()
        for _ in range(250):
            self.mouse.scroll("down", 4)
            self.mouse.scroll("up", 4)
        self.expect_changes(500, last=0, limit=60)
        self.expect_no_leak()
        self.expect_no_more_changes(self.quillon)

    def test_two_devices_at_once(self):
        self.have_a_long_row()
        self.enter("Qt 6")
        self.at_once(lambda: self.mouse.scroll("down", 100, gap=0.003),
                     lambda: self.second_mouse.scroll("down", 100, gap=0.002))
        self.expect_changes(50, last=50)
        self.expect_no_leak("Qt 6")
        self.expect_no_more_changes(self.quillon)

    def test_devices_without_axes_at_the_same_time(self):
        self.have_a_long_row()
        self.enter()
        self.at_once(lambda: self.mouse.scroll("down", 100, gap=0.005),
                     lambda: self.injector.scroll("down", 100))
        self.expect_changes(50, last=50)
        # A grab of buttons, which is how such wheels are held, takes the pointer away for a moment.
        received = gathered(self.clients["GTK 3"].received())
        self.assertEqual([line for line in received if line not in ("enter", "leave")], [])
        self.expect_no_more_changes(self.quillon)

    def test_each_direction_of_each_device(self):
        """Up and right count as positive, which is a desktop to the left."""
        self.enter()
        self.history.go_to(2)
        for device in (self.mouse, self.second_mouse, self.touchpad):
            for direction, target in (("up", 1), ("down", 2), ("right", 1), ("left", 2)):
                device.scroll(direction, 4)
                self.history.expect(target)
        self.expect_no_leak()
        self.expect_no_more_changes(self.quillon)

    def test_parts_of_a_notch_add_up(self):
        self.enter()
        self.history.go_to(2)
        for device in (self.mouse, self.touchpad):
            device.scroll("up", 32, part=1 / 8)
            self.history.expect(1)
            device.scroll("left", 480, part=1 / 120)
            self.history.expect(2)
            device.scroll("up", 31, part=1 / 8)
            device.scroll("up", 1, part=1 / 8)
            self.history.expect(1)
            device.scroll("down", 2, part=2)  # quick wheels send several notches at once
            self.history.expect(2)
        self.expect_no_leak()
        self.expect_no_more_changes(self.quillon)

    def test_the_rest_is_dropped_when_the_direction_turns(self):
        self.enter()
        self.history.go_to(1)
        self.mouse.scroll("down", 7, part=1 / 8)
        self.mouse.scroll("up", 31, part=1 / 8)
        self.go_out_of_band()
        self.assertEqual(self.history.remainder(fence=3), [])
        self.history.go_to(1)
        self.enter()
        self.mouse.scroll("down", 7, part=1 / 8)
        self.mouse.scroll("up", 32, part=1 / 8)
        self.history.expect(0)
        self.expect_no_leak()
        self.expect_no_more_changes(self.quillon)

    def test_notches_while_the_pointer_moves_along_the_band(self):
        self.enter()
        for _ in range(25):
            for direction, dy in (("down", 1), ("up", -1)):
                for _ in range(4):
                    self.mouse.move(0, dy)
                    self.mouse.scroll(direction, 1)
        self.expect_changes(50, last=0)
        received = self.clients["GTK 3"].received()
        self.assertEqual([line for line in received if not line.startswith("motion")], [])
        self.assertEqual(len(received), 200)
        self.expect_no_more_changes(self.quillon)


if __name__ == "__main__":
    unittest.main()
