#!/usr/bin/env python3
"""Following the pointer: at once, whoever moves it, and without harm to the X server."""

import pathlib
import tempfile
import unittest

from quillon_desktop import BAND, HEIGHT, WIDTH, GestureTest
from witnesses import await_idle


class PointerWatch(GestureTest):
    def test_motion_that_makes_the_server_write_to_nobody(self):
        """A device moves the pointer, and no program listens: the first notch counts already."""
        quillon = self.start_quillon("Left")
        self.history.go_to(2)
        for _ in range(5):
            self.go_out_of_band()
            await_idle(quillon.process)
            self.injector.quietly(f"move {BAND // 2} {HEIGHT // 4}")
            await_idle(quillon.process)
            self.injector.quietly("wheel 4 1")
            self.injector.scroll("up", 3)
            self.history.expect(1)
            self.injector.scroll("down", 4)
            self.history.expect(2)

    def test_other_programs_use_the_server_meanwhile(self):
        self.start_quillon("Left")
        with tempfile.TemporaryDirectory() as folder:
            for number in range(10):
                self.desktop.move_pointer(BAND // 2, 100 + number)
                self.desktop.screenshot(pathlib.Path(folder) / "screen.png")
                self.desktop.move_pointer(WIDTH // 2, 100 + number)
        self.assertIsNone(self.desktop.server.poll(), "the X server lives")


if __name__ == "__main__":
    unittest.main()
