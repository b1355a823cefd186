#!/usr/bin/env python3
"""Presses of the left button while a tap may consume them, as programs get them: exactly as
without it when they pass; a middle click and nothing else when three fingers rest."""

import unittest

from device_desktop import CENTRE
from press_tap import LEFT, MIDDLE, InjectedHand, TapTest, TouchpadHand
from witnesses import wait_until

LEFT_HEARD = ("heard 1 0", "heard 2 0")
MIDDLE_HEARD = ("heard 25 2", "heard 26 2")


class Scenarios(TapTest):
    def test_three_contacts(self):
        for name in self.clients:
            self.go(name)
            self.tap.contacts(3)
            heard = self.heard(*MIDDLE_HEARD)
            for _ in range(3):
                self.click_middle(name)
            self.assertEqual(self.heard(*MIDDLE_HEARD), heard, "those are our own")
            self.tap.contacts(0)
            self.click_left(name)
            wait_until(lambda: self.heard(*LEFT_HEARD) == 2, "the last click is heard of")
            self.assertEqual(self.buttons(name), [*MIDDLE * 3, *LEFT])
            x, y = CENTRE[name]
            self.assertEqual(self.tap.count(f"asked {x} {y}"), 3)
            self.start_tap()

    def test_other_contacts(self):
        for name in self.clients:
            self.go(name)
            for number in (2, 4, 0):
                self.tap.contacts(number)
                self.click_left(name)
            self.assertEqual(self.buttons(name), LEFT * 3)
        self.assertEqual(self.tap.count("asked"), 0)

    def test_dragging_and_hovering_after_it(self):
        for name in self.clients:
            without = self.listen(name, self.drag)
            self.tap.contacts(3)
            self.click_middle(name)
            self.tap.contacts(0)
            self.assertEqual(self.listen(name, self.drag), without)

    def test_dragging_passes(self):
        self.tap.answer("pass")
        for name in self.clients:
            self.expect_as_unarmed(name, self.drag)
        self.assertEqual(self.tap.count("asked"), 2)

    def test_double_clicks_pass(self):
        self.tap.answer("pass")
        for name in self.clients:
            got = self.expect_as_unarmed(name, self.double_click)
            self.assertIn("double 1", got)
        self.assertEqual(self.tap.count("asked"), 4)

    def test_window_managers_that_wait_for_clicks_get_them(self):
        self.tap.answer("pass")
        self.tap.contacts(3)
        for name in reversed(self.clients):
            self.go(name)
            self.click_left(name)
            window = int(self.desktop.window(name), 16)
            wait_until(lambda: self.active_window() == window, f"the keyboard is with {name}")

    def test_disarmed_while_it_is_down(self):
        for name in self.clients:
            self.go(name)
            self.tap.answer("pass")
            self.tap.contacts(3)
            self.press_left(name)
            self.tap.contacts(0)
            self.release_left(name)
            self.assertEqual(self.buttons(name), LEFT)
            self.tap.answer("click")
            self.tap.contacts(3)
            self.until(name, "press 2", lambda: self.hand.press(1))
            self.tap.contacts(0)
            self.hand.release(1)
            self.injector.await_up()
            self.assertEqual(self.buttons(name), MIDDLE)

    def heard(self, *lines: str) -> int:
        """How often a monitor in the tap's program has heard of this."""
        return sum(line in lines for line in self.tap.lines())

    def drag(self, name: str) -> None:
        self.press_left(name)
        for _ in range(5):
            self.step(3, 2)
        self.release_left(name)
        self.step(-15, -10)

    def double_click(self, name: str) -> None:
        self.click_left(name)
        self.until(name, "double 1", lambda: self.hand.press(1))
        self.release_left(name)

    def expect_as_unarmed(self, name: str, scenario) -> list[str]:
        without = self.listen(name, scenario)
        self.tap.contacts(3)
        self.assertEqual(self.listen(name, scenario), without)
        self.tap.contacts(0)
        return without

    def listen(self, name: str, scenario) -> list[str]:
        """All that the client gets of it."""
        self.go(name)
        self.clients[name].received()
        scenario(name)
        # Whoever asks about a press takes the pointer for that moment, as window managers do.
        return [line for line in self.clients[name].received() if line not in ("enter", "leave")]

    def active_window(self) -> int:
        answer = self.desktop.run("xprop", "-root", "_NET_ACTIVE_WINDOW")
        return int(answer.split()[-1], 16)


class InjectedPresses(Scenarios, InjectedHand):
    def step(self, dx: int, dy: int) -> None:
        x, y = self.desktop.pointer()
        line = f"motion {x + dx} {y + dy}"
        self.injector.move(x + dx, y + dy)
        wait_until(lambda: any(client.last("motion") == line for client in self.clients.values()),
                   f"a program gets {line!r}")


class DevicePresses(Scenarios, TouchpadHand):
    pass


if __name__ == "__main__":
    unittest.main()
