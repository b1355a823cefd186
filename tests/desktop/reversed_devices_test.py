#!/usr/bin/env python3
"""Devices with scroll axes whose driver has no setting for the direction: they stay as they are,
but for where a tap sees each notch."""

import unittest

from device_desktop import CENTRE, SCROLLERS, DeviceTest, total
from devices import await_taken
from quillon_desktop import BAND
from reverse_tap import ReverseTap
from witnesses import wait_until


class NoSetting(DeviceTest):
    def setUp(self):
        super().setUp()
        self.tap = ReverseTap(self.desktop, f"reverse-tap-{self.id().rpartition('.')[2]}")
        self.addCleanup(self._end)

    def _end(self) -> None:
        self.tap.stop()
        print(f"{self.id()}: the tap printed:", *self.tap.lines(), sep="\n    ")

    def complaints(self) -> list[str]:
        return [line for line in self.tap.lines() if "no such setting" in line]

    def test_it_is_said_once(self):
        for what in ("both", "mouse", "none", "both"):
            self.tap.reverse(what)
        names = [line.removeprefix("⚠️ ").split(" cannot")[0] for line in self.complaints()]
        self.assertEqual(names, list(SCROLLERS))

    def test_elsewhere_and_in_a_band(self):
        for what, sign in (("none", 1), ("both", -1)):
            self.tap.reverse(what)
            self.tap.hold_band("pass")
            self.go_to(*CENTRE["Qt 6"])
            self.take_up(self.mouse)
            self.clients["Qt 6"].forget()
            self.scroll(self.mouse, "up", 4)
            self.assertEqual(total(self.clients["Qt 6"].received()), (0, 4))

            self.go_to(BAND // 2, CENTRE["Qt 6"][1])
            await_taken(self.desktop, SCROLLERS)
            self.clients["Qt 6"].forget()
            self.tap.forget()
            self.mouse.scroll("up", 4)
            wait_until(lambda: len(self.tap.notches()) == 4, "the tap was asked")
            self.assertEqual(set(self.tap.notches()), {(1, 0, 0, 0)})
            self.assertEqual(total(self.clients["Qt 6"].received()), (0, 4 * sign))
            self.go_to(*CENTRE["GTK 3"])
            await_taken(self.desktop, ())


if __name__ == "__main__":
    unittest.main()
