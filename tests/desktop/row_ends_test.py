#!/usr/bin/env python3
"""Each window manager has its own idea of what lies beyond the last desktop: ours is the same."""

import math
import unittest

from quillon_desktop import BAND, HEIGHT, GestureTest
from witnesses import ask_until, await_idle, wait_until

KEYS = {"left": "ctrl+alt+Left", "right": "ctrl+alt+Right"}  # by default in all four of them
NOTCHES = {"left": "up", "right": "down"}


class RowEnds(GestureTest):
    """With openbox; the same for the others below."""

    options = {"window_manager": "openbox"}

    def setUp(self):
        super().setUp()
        self.quillon = self.start_quillon("Left")
        self.go_into_band(BAND // 2, HEIGHT // 4)

    def press_keys(self, direction: str) -> None:
        self.desktop.run("xdotool", "key", KEYS[direction])

    def turn_wheel(self, direction: str) -> None:
        self.injector.scroll(NOTCHES[direction], 4)
        await_idle(self.quillon.process)

    def end_of(self, act, start: int, direction: str) -> int:
        """Where it leads. That it leads nowhere shows by what is done after it coming first; that
        must not be where one could get to by a step to either side. xfwm4 now and then misses
        its own shortcut."""
        def leads_somewhere() -> bool:
            self.history.go_to(start)
            act(direction)
            return bool(self.history.remainder((start + 2) % 4))

        is_theirs = act == self.press_keys
        if not any(leads_somewhere() for _ in range(3 if is_theirs else 1)):
            return start
        self.history.go_to(start)
        return ask_until(lambda: act(direction), self.history.changes, "another desktop",
                         again=1 if is_theirs else math.inf)[0]

    def compare(self, steps) -> dict:
        """Answers where the window manager's own shortcut leads."""
        theirs = {step: self.end_of(self.press_keys, *step) for step in steps}
        ours = {step: self.end_of(self.turn_wheel, *step) for step in steps}
        print(f"{self.id()}: {theirs}")
        self.assertEqual(ours, theirs)
        return theirs

    def test_one_row(self):
        theirs = self.compare([(0, "left"), (0, "right"), (3, "left"), (3, "right")])
        self.assertEqual((theirs[0, "right"], theirs[3, "left"]), (1, 2), "these are the shortcuts")

    def test_two_rows(self):
        self.set_layout("0, 2, 2, 0")  # rows of two, from the top left
        self.addCleanup(self.set_layout, "0, 4, 1, 0")
        self.compare([(start, direction) for start in range(4) for direction in KEYS])

    def set_layout(self, layout: str) -> None:
        """As a pager does, which also owns the selection that says so."""
        name = "_NET_DESKTOP_LAYOUT"
        self.desktop.run("xprop", "-root", "-format", name, "32c", "-set", name, layout)
        self.assertEqual(self.desktop.root_property(name), layout)


class RowEndsWrappingOpenbox(RowEnds):
    """It does what its settings say, which are those of the user."""

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        settings = cls.desktop.config / "openbox/rc.xml"
        text = settings.read_text()
        settings.write_text(text.replace("<wrap>no</wrap>", "<wrap>yes</wrap>"))
        cls.desktop.run("openbox", "--reconfigure")
        wait_until(cls.shortcut_wraps, "openbox has read its settings anew")

    @classmethod
    def shortcut_wraps(cls) -> bool:
        cls.history.go_to(0)
        cls.desktop.run("xdotool", "key", KEYS["left"])
        return cls.desktop.current_desktop() == 3

    def test_one_row(self):
        super().test_one_row()
        self.assertEqual(self.end_of(self.press_keys, 0, "left"), 3)


class RowEndsIcewm(RowEnds):
    options = {"window_manager": "icewm"}


class RowEndsMetacity(RowEnds):
    options = {"window_manager": "metacity", "bus": True}


class RowEndsXfwm4(RowEnds):
    options = {"window_manager": "xfwm4", "bus": True}


if __name__ == "__main__":
    unittest.main()
