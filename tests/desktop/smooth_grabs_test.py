#!/usr/bin/env python3
"""Devices with scroll axes: while another program has taken the pointer, it gets all of it."""

import subprocess
import time
import unittest

from device_desktop import CENTRE, SCROLLERS
from devices import taken_devices
from quillon_desktop import BAND
from recovery import PATIENCE, RecoveryTest
from witnesses import X11_PROBE, Lines, wait_until

MASTERS = {"Virtual core pointer", "Virtual core keyboard"}


class OtherGrabs(RecoveryTest):
    def take_screen(self, name: str) -> tuple[subprocess.Popen, Lines]:
        """As open menus and screen lockers do."""
        holder = self.desktop.start(name, [X11_PROBE, "hold-screen"], stdin=subprocess.PIPE)
        lines = Lines(self.desktop, name)
        wait_until(lambda: lines.all()[:1] == ["held"], "another program has pointer and keyboard")
        lines.forget()
        return holder, lines

    def expect_everything(self, lines: Lines) -> None:
        """Motion, clicks and notches of all devices reach the other program, in order."""
        lines.forget()
        x, y = self.desktop.pointer()
        expected = []
        for step, device in enumerate((self.mouse, self.touchpad, self.second_mouse), 1):
            device.move(0, 2)
            device.scroll("up", 3)
            device.scroll("left", 2)
            device.click(1)
            expected += [f"motion {x} {y + 2 * step}", *["press 4", "release 4"] * 3,
                         *["press 6", "release 6"] * 2, "press 1", "release 1"]
        wait_until(lambda: self.without_scroll_motion(lines) == expected, "all of it arrives", 2)

    @staticmethod
    def without_scroll_motion(lines: Lines) -> list[str]:
        """Scrolling is also motion, to nowhere."""
        result, place = [], None
        for line in lines.new():
            if line.startswith("motion"):
                if line == place:
                    continue
                place = line
            result.append(line)
        return result

    def test_an_open_menu(self):
        self.go_out_of_band()
        menu, lines = self.take_screen("menu")
        self.go_to(BAND // 2, CENTRE["GTK 3"][1])
        for _ in range(3):
            self.expect_everything(lines)
            self.assertEqual(taken_devices(self.desktop), MASTERS)
        self.desktop.end(menu)
        self.await_gestures()
        self.expect_all_is_well()

    def test_an_open_menu_is_closed_in_the_band(self):
        self.go_out_of_band()
        menu, lines = self.take_screen("closed-menu")
        self.go_to(BAND // 2, CENTRE["GTK 3"][1])
        self.expect_everything(lines)
        self.desktop.end(menu)
        wait_until(self.gesture, "gestures work", PATIENCE)
        self.expect_all_is_well()

    def test_a_locker_comes_while_the_devices_are_held(self):
        start = time.monotonic()
        locker, lines = self.take_screen("locker")

        def reaches():
            self.mouse.move(0, 1)
            self.mouse.scroll("up", 1)
            return any("press 4" in line for line in lines.new())
        wait_until(reaches, "scrolling reaches the locker", PATIENCE + 5)
        passed = time.monotonic() - start
        print(f"{self.id()}: scrolling reaches the locker after {passed:.3f} s")
        self.assertLess(passed, PATIENCE)
        self.assertFalse(taken_devices(self.desktop) & set(SCROLLERS))
        self.expect_everything(lines)
        self.desktop.end(locker)
        self.await_gestures()
        self.expect_all_is_well()

    def test_clicks_reach_a_locker_at_once(self):
        """Even the very first, whoever holds what."""
        locker, lines = self.take_screen("quick-locker")
        self.mouse.click(1)
        wait_until(lambda: [line for line in lines.new() if not line.startswith("motion")] ==
                   ["press 1", "release 1"], "the click arrives", PATIENCE)
        self.desktop.end(locker)
        self.await_gestures()
        self.expect_all_is_well()


if __name__ == "__main__":
    unittest.main()
