#!/usr/bin/env python3
"""While another program has a menu open, the wheel is that menu's, in the bands too."""

import unittest

from quillon_desktop import BAND, GestureTest
from witnesses import X11_PROBE, Lines, wait_until


class OpenMenu(GestureTest):
    options = {"programs": ["mousepad"]}

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.program = cls.desktop.window("Mousepad")
        cls.desktop.show_everywhere(cls.program)

    def setUp(self):
        super().setUp()
        self.quillon = self.start_quillon("Left")
        self.history.go_to(2)

    def expect_gestures(self) -> None:
        self.injector.scroll("up", 4)
        self.history.expect(1)
        self.injector.scroll("down", 4)
        self.history.expect(2)

    def test_what_the_menu_gets(self):
        for opened_first in (True, False):
            with self.subTest(opened_first=opened_first):
                self.go_out_of_band()
                if not opened_first:
                    self.go_into_band(BAND // 2, 400)
                menu = self.desktop.start(f"menu-{opened_first}", [X11_PROBE, "hold-menu", "60"])
                lines = Lines(self.desktop, f"menu-{opened_first}")
                wait_until(lambda: lines.all() == ["held"], "the menu is open")
                self.go_into_band(BAND // 2, 400)
                for direction in ("up", "down", "right", "left"):
                    self.injector.scroll(direction, 5)
                wheel = [f"wheel {button}" for button in (4, 5, 7, 6) for _ in range(5)]
                wait_until(lambda: len(lines.all()) > len(wheel), "the menu gets the wheel")
                self.assertEqual(lines.all(), ["held", *wheel])
                self.desktop.end(menu)
                self.expect_gestures()
        self.expect_no_more_changes(self.quillon)

    def test_a_menu_of_a_real_program(self):
        self.go_into_band(BAND // 2, 400)
        before = self.windows()
        self.desktop.run("xdotool", "windowactivate", "--sync", self.program, "key", "F10")
        wait_until(lambda: self.windows() > before, "the menu is open")
        self.injector.move(BAND // 2, 500)
        self.injector.scroll("up", 8)
        self.desktop.run("xdotool", "key", "Escape", "Escape")
        wait_until(lambda: self.windows() == before, "the menu is closed")
        self.assertEqual(self.history.changes(), [])
        self.expect_gestures()
        self.expect_no_more_changes(self.quillon)

    def windows(self) -> set[str]:
        """What can be seen of the program, menus included."""
        return set(self.desktop.run("xdotool", "search", "--onlyvisible", "--class",
                                    "mousepad").split())


if __name__ == "__main__":
    unittest.main()
