#!/usr/bin/env python3
"""Killed at any moment, the program leaves the input as if it had never been there."""

import random
import threading
import unittest

from quillon_desktop import BAND, ClientTest
from witnesses import SCROLLS, await_wheel

SCROLLING_KILLS, STARTING_KILLS = 20, 10


class Killed(ClientTest):
    def kill_after(self, seconds: float, quillon) -> threading.Timer:
        timer = threading.Timer(seconds, quillon.process.kill)
        timer.start()
        return timer

    def expect_input_as_before(self, client) -> None:
        await_wheel(self.desktop, "free", limit=1)
        client.received()  # the notches that came after the end
        self.injector.click(1)
        self.injector.scroll("up", 1)
        self.injector.click(3)
        self.assertEqual(client.received(), ["press 1", "release 1", SCROLLS["up"], "press 3",
                                             "release 3"])

    def test_while_scrolling(self):
        for kill in range(SCROLLING_KILLS):
            client, y = self.clients[kill % 2]
            quillon = self.start_quillon("Left")
            self.go_into_band(BAND // 2, y)
            timer = self.kill_after(random.uniform(0, 0.04), quillon)
            for direction in ("up", "down", "right", "left") * 2:
                self.injector.scroll(direction, 4)
            timer.join()
            self.assertEqual(quillon.wait(), -9)
            self.expect_input_as_before(client)
        self.expect_that_it_works()

    def test_while_starting(self):
        self.injector.move(BAND // 2, 200)
        for _ in range(STARTING_KILLS):
            quillon = self.start_quillon("Left")
            self.kill_after(random.uniform(0, 0.1), quillon).join()
            self.assertEqual(quillon.wait(), -9)
            self.expect_input_as_before(self.gtk)
        self.expect_that_it_works()

    def expect_that_it_works(self) -> None:
        self.start_quillon("Left")
        self.history.go_to(2)
        self.go_into_band(BAND // 2, 200)
        self.injector.scroll("up", 4)
        self.history.expect(1)
        self.assertEqual(self.gtk.received(), [])


if __name__ == "__main__":
    unittest.main()
