#!/usr/bin/env python3
"""Wheels that scroll the other way, as other programs see it."""

import signal
import unittest

from quillon_desktop import HEIGHT, WIDTH, ClientTest
from witnesses import wait_until

NUMBERS = "1 2 3 4 5 6 7 8 9 10"
TURNED = "1 2 3 5 4 7 6 8 9 10"
WHEEL = "Virtual core XTEST pointer"  # what turns here
UP, DOWN = "scroll 0 1", "scroll 0 -1"
RIGHT, LEFT = "scroll 1 0", "scroll -1 0"


class ScrollReverse(ClientTest):
    def setUp(self):
        super().setUp()
        self.expect_buttons(NUMBERS)

    def start_reversing(self, *edges, mouse=True, trackpad=False, **settings):
        self.quillon = self.start_quillon(*edges, ScrollReverseMouse=mouse,
                                          ScrollReverseTrackpad=trackpad, **settings)
        self.quillon.wait_for_line("Event monitor successfully created")
        self.expect_buttons(TURNED if mouse else NUMBERS)

    def buttons(self) -> str:
        """How the wheel numbers its buttons."""
        return self.desktop.run("xinput", "get-button-map", WHEEL).strip()

    def expect_buttons(self, numbers: str) -> None:
        wait_until(lambda: self.buttons().startswith(numbers), f"buttons {numbers}; they are "
                   f"{self.buttons()}")

    def expect_scrolls(self, **expected: str) -> None:
        """What a notch in each direction is in both programs."""
        for client, y in self.clients:
            self.injector.move(WIDTH // 2, y)
            for direction, line in expected.items():
                client.forget()
                self.injector.scroll(direction, 3)
                self.assertEqual(client.received(), [line] * 3)

    def expect_reversed(self) -> None:
        self.expect_scrolls(up=DOWN, down=UP, left=RIGHT, right=LEFT)

    def expect_as_always(self) -> None:
        self.expect_scrolls(up=UP, down=DOWN, left=LEFT, right=RIGHT)

    def test_the_mouse_alone(self):
        self.expect_as_always()
        self.start_reversing()
        self.expect_reversed()
        self.assertEqual(self.quillon.stop(), 0)
        self.expect_buttons(NUMBERS)
        self.expect_as_always()

    def test_both(self):
        self.start_reversing(trackpad=True)
        self.expect_reversed()

    def test_the_trackpad_alone_leaves_the_mouse_as_it_is(self):
        self.start_reversing(mouse=False, trackpad=True)
        self.expect_as_always()

    def test_none(self):
        self.start_reversing(mouse=False)
        self.expect_as_always()

    def test_2000_notches_are_all_reversed(self):
        self.start_reversing()
        client, y = self.clients[0]
        self.injector.move(WIDTH // 2, y)
        client.forget()
        self.injector.scroll("up", 2000)
        self.assertEqual(client.received(), [DOWN] * 2000)

    def test_what_the_user_had_comes_back(self):
        """He is left-handed, and has reversed the wheel himself."""
        own = "3 2 1 5 4 7 6 8 9 10"
        self.desktop.run("xinput", "set-button-map", WHEEL, *own.split())
        self.addCleanup(lambda: self.desktop.run("xinput", "set-button-map", WHEEL,
                                                 *NUMBERS.split()))
        quillon = self.start_quillon(ScrollReverseMouse=True)
        self.expect_buttons("3 2 1 4 5 6 7 8 9 10")
        self.assertEqual(quillon.stop(), 0)
        self.expect_buttons(own)

        quillon = self.start_quillon(ScrollReverseMouse=True)
        self.expect_buttons("3 2 1 4 5 6 7 8 9 10")
        quillon.stop(signal.SIGKILL)
        # With the tool off by now.
        quillon = self.start_quillon()
        self.expect_buttons(own)

    def test_what_a_settings_program_writes_meanwhile_is_what_comes_back(self):
        self.start_reversing()
        self.addCleanup(lambda: self.desktop.run("xinput", "set-button-map", WHEEL,
                                                 *NUMBERS.split()))
        own = "3 2 1 4 5 6 7 8 9 10"
        self.desktop.run("xinput", "set-button-map", WHEEL, *own.split())
        self.expect_buttons("3 2 1 5 4 7 6 8 9 10")
        self.assertEqual(self.quillon.stop(), 0)
        self.expect_buttons(own)

    def test_the_edges_see_it_reversed_too(self):
        """Reversing was installed last, so it is asked first."""
        self.start_reversing("Left", Tool4ScrollSensitivity=1.0)
        self.history.go_to(1)
        self.go_into_band(5, HEIGHT // 4)
        self.injector.scroll("up", 1)
        self.expect_changes(1, 2)
        self.injector.scroll("down", 1)
        self.expect_changes(1, 1)
        self.go_out_of_band()
        self.expect_reversed()

    def test_out_of_the_band_while_another_edge_is_armed(self):
        self.start_reversing("Left", "Right", "Top")
        self.go_into_band(5, HEIGHT // 4)
        self.go_out_of_band()
        self.expect_reversed()


if __name__ == "__main__":
    unittest.main()
