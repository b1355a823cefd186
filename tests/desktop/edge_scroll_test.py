#!/usr/bin/env python3
"""Scrolling at an armed edge changes the desktop and reaches nobody; elsewhere it is untouched."""

import unittest

from quillon_desktop import BAND, HEIGHT, WIDTH, ClientTest
from witnesses import SCROLLS, await_wheel


class EdgeScrolling(ClientTest):
    def test_at_the_left_edge(self):
        self.start_quillon("Left")
        for client, y in self.clients:
            self.go_into_band(BAND // 2, y)
            self.history.go_to(2)
            # Up and right count as positive, which is a desktop to the left.
            for direction, target in (("up", 1), ("down", 2), ("right", 1), ("left", 2)):
                self.injector.scroll(direction, 4)
                self.history.expect(target)
            self.assertEqual(client.received(), [])

    def test_elsewhere(self):
        quillon = self.start_quillon("Left")
        self.history.go_to(2)
        for client, y in self.clients:
            self.go_into_band(BAND // 2, y)
            self.go_out_of_band(WIDTH // 2, y)
            for direction in SCROLLS:
                self.injector.scroll(direction, 4)
            self.assertEqual(client.received(),
                             [scroll for scroll in SCROLLS.values() for _ in range(4)])
        self.expect_no_more_changes(quillon)

    def test_three_notches_are_held_back_too(self):
        quillon = self.start_quillon("Left")
        self.history.go_to(2)
        self.go_into_band(BAND // 2, HEIGHT // 4)
        self.injector.scroll("up", 3)
        self.assertEqual(self.gtk.received(), [])
        self.expect_no_more_changes(quillon)

    def test_a_pointer_that_is_warped(self):
        self.start_quillon("Left")
        self.history.go_to(2)
        for client, y in self.clients:
            self.go_out_of_band(WIDTH // 2, y)
            # A program that sets the pointer makes no input event of any device.
            self.desktop.run("xdotool", "mousemove", BAND // 2, y)
            await_wheel(self.desktop, "taken")
            self.injector.scroll("down", 4)
            self.history.expect(3)
            self.injector.scroll("up", 4)
            self.history.expect(2)
            self.assertEqual(client.received(), [])


class OtherEdges(ClientTest):
    # Edge, a place at the inner end of its band, and the place beside it that is outside.
    PLACES = (("Right", (WIDTH - BAND, 200), (WIDTH - BAND - 1, 200)),
              ("Top", (640, BAND), (640, BAND + 1)),
              ("Bottom", (640, HEIGHT - BAND), (640, HEIGHT - BAND - 1)))

    def test_each(self):
        for edge, inside, outside in self.PLACES:
            with self.subTest(edge=edge):
                quillon = self.start_quillon(edge)
                client = self.gtk if inside[1] < HEIGHT / 2 else self.qt
                self.history.go_to(2)
                self.go_into_band(*inside)
                for direction, target in (("up", 1), ("down", 2), ("right", 1), ("left", 2)):
                    self.injector.scroll(direction, 4)
                    self.history.expect(target)
                self.assertEqual(client.received(), [])
                self.go_out_of_band(*outside)
                self.injector.scroll("up", 4)
                self.assertEqual(client.received(), [SCROLLS["up"]] * 4)
                self.expect_no_more_changes(quillon)

    def test_all_at_once_but_one(self):
        self.start_quillon("Right", "Top", "Bottom")
        for _, inside, outside in self.PLACES:
            self.go_into_band(*inside)
            self.go_out_of_band(*outside)
        self.go_into_band(0, HEIGHT - 1)  # the corner belongs to the bottom edge
        self.go_out_of_band(0, HEIGHT // 2)


if __name__ == "__main__":
    unittest.main()
