#!/usr/bin/env python3
"""Each window manager has its own idea of what lies beyond the last desktop: ours is the same."""

import unittest

from quillon_desktop import BAND, HEIGHT, DesktopTest
from witnesses import Failed, Injector, await_wheel, wait_until

IN_BAND = BAND // 2, HEIGHT // 4


class RowEnds(DesktopTest):
    """At the ends of the row we do what the manager's own shortcut does."""

    options = {"window_manager": "openbox"}

    def setUp(self):
        self.injector = Injector(self.desktop)

    def settle(self, number: int) -> None:
        self.desktop.set_desktop(number)
        wait_until(lambda: self.desktop.current_desktop() == number, f"desktop {number}")

    def after(self, act, start: int) -> int:
        """Where `act` leads from `start`; staying there shows only in time that passes."""
        self.settle(start)
        act()
        try:
            wait_until(lambda: self.desktop.current_desktop() != start, "a change", limit=1.5)
        except Failed:
            return start
        return self.desktop.current_desktop()

    def check_ends(self, keys: dict[str, str]):
        self.start_quillon("Left")
        for start, direction, wheel in ((0, "left", "up"), (3, "right", "down")):
            key = keys[direction]
            self.injector.move(640, 400)
            theirs = self.after(lambda: self.desktop.run("xdotool", "key", key), start)
            self.injector.move(*IN_BAND)
            await_wheel(self.desktop, "taken")
            ours = self.after(lambda: self.injector.scroll(wheel, 4), start)
            print(f"{self.options['window_manager']}: {direction} of desktop {start}: "
                  f"shortcut {theirs}, gesture {ours}")
            self.assertEqual(ours, theirs)
            # And the shortcut is the right one: in the other direction it leads to the neighbour.
            other = "right" if direction == "left" else "left"
            self.injector.move(640, 400)
            inward = self.after(lambda: self.desktop.run("xdotool", "key", keys[other]), start)
            self.assertEqual(inward, start + 1 if start == 0 else start - 1)

    def test_ends(self):
        self.check_ends({"left": "ctrl+alt+Left", "right": "ctrl+alt+Right"})


class RowEndsIcewm(RowEnds):
    options = {"window_manager": "icewm"}


class RowEndsMetacity(RowEnds):
    options = {"window_manager": "metacity", "bus": True}


class RowEndsXfwm4(RowEnds):
    options = {"window_manager": "xfwm4", "bus": True}


if __name__ == "__main__":
    unittest.main()
