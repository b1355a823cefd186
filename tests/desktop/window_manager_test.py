#!/usr/bin/env python3
"""The window manager may go, come back and be another one: gestures follow."""

import time
import unittest

from quillon_desktop import BAND, GestureTest
from witnesses import parts, wait_until


class WindowManagerChanges(GestureTest):
    def setUp(self):
        super().setUp()
        self.quillon = self.start_quillon("Left")
        self.go_into_band(BAND // 2, 400)
        self.expect_gestures()

    def expect_gestures(self) -> None:
        # A window manager that has just begun says so before it listens to anybody.
        for number in (3, 2):
            wait_until(lambda: self.obeys(number), "the window manager obeys")  # noqa: B023
        for direction, target in (("up", 1), ("down", 2)):
            self.injector.scroll(direction, 4)
            wait_until(lambda: self.desktop.current_desktop() == target, f"desktop {target}")  # noqa: B023

    def obeys(self, number: int) -> bool:
        self.desktop.run("wmctrl", "-s", number)
        return self.desktop.current_desktop() == number

    def expect_gestures_within(self, limit: float, since: float) -> None:
        self.expect_gestures()
        seconds = time.monotonic() - since
        print(f"{self.id()}: gestures work {seconds:.2f} s after the window manager was started")
        self.assertLess(seconds, limit)

    def test_killed_and_started_again(self):
        self.desktop.window_manager.kill()
        self.desktop.end(self.desktop.window_manager)
        self.injector.scroll("up", 4)
        self.quillon.wait_for_line("no window manager that knows desktops is running")
        start = time.monotonic()
        self.desktop.start_window_manager("openbox")
        self.expect_gestures_within(5, start)

    def test_stopped_and_started_again_behind_its_back(self):
        self.desktop.end(self.desktop.window_manager)
        start = time.monotonic()
        self.desktop.start_window_manager("openbox")
        self.expect_gestures_within(5, start)

    def test_replaced_by_another_and_back(self):
        for name in ("icewm", "openbox"):
            start = time.monotonic()
            self.replace_window_manager(name)
            self.expect_gestures_within(5, start)

    def replace_window_manager(self, name: str) -> None:
        old, desktop = self.desktop.window_manager, self.desktop
        command = parts.window_manager(name, desktop.home, desktop.config)
        desktop.window_manager = desktop.start(name, [*command, "--replace"])
        desktop.wait_for(desktop.window_manager, lambda: old.poll() is not None, "the other's end")
        desktop.wait_for(desktop.window_manager, lambda: desktop.has_window_manager() and
                         name in desktop.run("wmctrl", "-m").lower(), f"a running {name}")


if __name__ == "__main__":
    unittest.main()
