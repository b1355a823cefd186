#!/usr/bin/env python3
"""Fast wheels: every notch counts once, and none slips through to a program."""

import unittest

from quillon_desktop import BAND, HEIGHT, WIDTH, ClientTest
from witnesses import SCROLLS, wait_until


class QuickScrolling(ClientTest):
    def setUp(self):
        super().setUp()
        self.quillon = self.start_quillon("Left")

    def test_eight_notches_are_two_desktops(self):
        self.history.go_to(3)
        self.go_into_band(BAND // 2, HEIGHT // 4)
        self.injector.scroll("up", 8)
        self.expect_changes(2, last=1)
        self.injector.scroll("down", 8)
        self.expect_changes(2, last=3)
        self.assertEqual(self.gtk.received(), [])
        self.expect_no_more_changes(self.quillon)

    def test_two_hundred_notches_are_fifty_desktops(self):
        self.desktop.run("wmctrl", "-n", 60)
        self.addCleanup(self.desktop.run, "wmctrl", "-n", 4)
        wait_until(lambda: self.desktop.desktop_count() == 60, "sixty desktops")
        for client, y in self.clients:
            self.history.go_to(0)
            self.go_into_band(BAND // 2, y)
            self.injector.scroll("down", 200)
            self.expect_changes(50, last=50)
            self.assertEqual(client.received(), [])
        self.expect_no_more_changes(self.quillon)

    def test_back_and_forth_in_the_order_of_the_notches(self):
        # At the first desktop a move to the left goes nowhere: one that comes before the move to
        # the right that it should follow is lost.
        self.history.go_to(0)
        self.go_into_band(BAND // 2, HEIGHT // 4)
        for _ in range(25):
            self.injector.scroll("down", 4)
            self.injector.scroll("up", 4)
        self.expect_changes(50, last=0)
        self.assertEqual(self.gtk.received(), [])
        self.expect_no_more_changes(self.quillon)

    def test_two_hundred_notches_elsewhere(self):
        self.history.go_to(1)
        for client, y in self.clients:
            self.go_into_band(BAND // 2, y)
            self.go_out_of_band(WIDTH // 2, y)
            self.injector.scroll("down", 200)
            self.assertEqual(client.received(), [SCROLLS["down"]] * 200)
        self.expect_no_more_changes(self.quillon)


if __name__ == "__main__":
    unittest.main()
