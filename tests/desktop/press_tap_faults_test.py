#!/usr/bin/env python3
"""Presses of the left button that a tap is asked about: of a device that is held for its scrolling,
while the tap's program stops or dies, and at random."""

import os
import random
import signal
import time
import unittest

from device_desktop import CENTRE, SCROLLERS
from devices import await_taken
from press_tap import LEFT, MIDDLE, TapTest, TouchpadHand, left_button
from quillon_desktop import BAND
from recovery import PATIENCE
from witnesses import wait_until

SEQUENCES = 1000


class TouchpadTest(TapTest, TouchpadHand):
    pass


class HeldPresses(TouchpadTest):
    """In a band, where the devices themselves are held."""

    def setUp(self):
        super().setUp()
        self.tap.hold_band()
        self.addCleanup(self.go_to, *CENTRE["GTK 3"])

    def enter(self, name: str) -> None:
        self.go_to(BAND // 2, CENTRE[name][1])
        await_taken(self.desktop, SCROLLERS)

    def test_three_contacts(self):
        for name in self.clients:
            self.enter(name)
            self.tap.contacts(3)
            for _ in range(3):
                self.click_middle(name)
            self.tap.contacts(0)
            self.click_left(name)
            self.assertEqual(self.buttons(name), [*MIDDLE * 3, *LEFT])
            self.mouse.scroll("up", 1)
        wait_until(lambda: self.tap.count("scrolled") == 2, "the wheel is still held")

    def test_passing(self):
        self.tap.answer("pass")
        for name in self.clients:
            self.enter(name)
            self.tap.contacts(3)
            asked = self.tap.count("asked")
            for _ in range(3):
                self.press_left(name)
                self.step(0, 3)
                self.release_left(name)
                self.step(0, -3)
            self.tap.contacts(0)
            self.assertEqual(self.tap.count("asked"), asked + 3, "once for each")
            self.assertEqual(self.buttons(name), LEFT * 3)

    def test_leaving_and_coming_back_with_the_finger_on_it(self):
        for name in self.clients:
            self.enter(name)
            self.tap.contacts(3)
            self.until(name, "release 2", lambda: self.hand.press(1))
            self.go_to(*CENTRE[name])
            await_taken(self.desktop, ())
            self.enter(name)
            self.hand.release(1)
            self.until(name, "release 2", lambda: self.hand.press(1))
            self.hand.release(1)
            self.tap.contacts(0)
            self.assertEqual(self.buttons(name), MIDDLE * 2)

    def test_two_devices_at_once(self):
        for name in self.clients:
            self.enter(name)
            self.tap.contacts(3)
            self.until(name, "release 2", lambda: self.hand.press(1))
            self.until(name, "release 2", lambda: self.mouse.press(1))
            self.hand.release(1)
            self.mouse.release(1)
            self.injector.await_up()
            self.tap.contacts(0)
            self.click_left(name)
            self.assertEqual(self.buttons(name), [*MIDDLE * 2, *LEFT])


class PressFaults(TouchpadTest):
    def await_free(self, start: float) -> None:
        """The pointer moves, the button is nobody's, and clicks arrive."""
        x, y = self.desktop.pointer()

        def moves():
            self.mouse.move(1, 0)
            return self.desktop.pointer() != (x, y)
        wait_until(lambda: moves() and left_button(self.desktop) == "free", "the pointer moves")
        print(f"{self.id()}: free after {time.monotonic() - start:.3f} s")
        self.assertLess(time.monotonic() - start, PATIENCE)

    def expect_all_is_well(self, name: str) -> None:
        self.injector.await_up()
        self.go(name)
        self.forget()
        self.click_left(name)
        self.assertEqual(self.buttons(name), LEFT)

    def fault(self, answer: str) -> list[str]:
        """It comes in the midst of a question; answers what the program under the pointer gets."""
        self.tap.answer(answer)
        self.tap.contacts(3)
        start = time.monotonic()
        self.hand.press(1)
        wait_until(lambda: self.tap.count("asked") == 1, "the tap is asked")
        self.await_free(start)
        self.injector.await_up()  # though the finger is still on it
        self.hand.release(1)
        return self.buttons("GTK 3")

    # The server drops the press, and its release goes by itself, before a click is made in its
    # place.
    ANEW = ["release 1", *LEFT]

    def test_killed_while_the_press_waits(self):
        self.assertEqual(self.fault("die"), self.ANEW)
        self.expect_all_is_well("GTK 3")

    def test_stopped_while_the_press_waits(self):
        self.assertEqual(self.fault("stop"), self.ANEW)
        self.expect_all_is_well("GTK 3")
        self.tap.process.send_signal(signal.SIGCONT)
        self.tap.contacts(0)
        self.expect_all_is_well("Qt 6")
        self.tap.contacts(3)
        self.click_middle("Qt 6")
        self.tap.contacts(0)
        self.assertEqual(self.buttons("Qt 6"), MIDDLE)

    def test_stopped_and_killed_while_the_button_is_held(self):
        self.tap.contacts(3)
        start = time.monotonic()
        self.tap.process.send_signal(signal.SIGSTOP)
        self.await_free(start)
        self.expect_all_is_well("GTK 3")
        self.tap.process.send_signal(signal.SIGCONT)
        self.tap.contacts(0)
        self.tap.contacts(3)
        self.press_consumed()
        self.tap.process.send_signal(signal.SIGKILL)
        self.tap.process.wait(5)
        self.hand.release(1)
        self.expect_all_is_well("GTK 3")

    def press_consumed(self) -> None:
        self.until("GTK 3", "release 2", lambda: self.hand.press(1))

    def test_killed_between_down_and_up(self):
        self.tap.die_pressed()
        self.tap.contacts(3)
        self.until("GTK 3", "press 2", lambda: self.hand.press(1))
        start = time.monotonic()
        self.tap.process.send_signal(signal.SIGKILL)
        wait_until(lambda: self.clients["GTK 3"].count("release 2") > 0, "the button comes up",
                   PATIENCE)
        print(f"{self.id()}: up after {time.monotonic() - start:.3f} s")
        self.hand.release(1)
        self.assertEqual(self.buttons("GTK 3"), MIDDLE)
        self.expect_all_is_well("GTK 3")

    def test_middle_button_is_down_already(self):
        self.tap.contacts(3)
        self.until("GTK 3", "press 2", lambda: self.mouse.press(2))
        self.hand.press(1)  # goes with the other one, to who has the pointer
        self.hand.release(1)
        self.until("GTK 3", "release 2", lambda: self.mouse.release(2))
        self.injector.await_up()
        self.assertEqual(self.buttons("GTK 3"), ["press 2", *LEFT, "release 2"])
        self.assertEqual(self.tap.count("asked"), 0)


class RandomPresses(TouchpadTest):
    def test_a_thousand(self):
        seed = int(os.environ.get("RANDOM_PRESSES_SEED") or random.randrange(1 << 32))
        print(f"{self.id()}: RANDOM_PRESSES_SEED={seed}")
        chance = random.Random(seed)
        start, number = time.monotonic(), 0
        self.tap.answer("click")
        name, contacts = "GTK 3", 0
        clicks = {"GTK 3": 0, "Qt 6": 0}
        for number in range(SEQUENCES):
            if number % 100 == 0:
                name = "Qt 6" if name == "GTK 3" else "GTK 3"
                self.go(name)
            device = chance.choice([self.touchpad, self.mouse])
            if chance.random() < 0.5:
                contacts = chance.choice([0, 2, 3, 3])
                self.tap.say_contacts(contacts)
            if chance.random() < 0.3:
                self.tap.answer(chance.choice(["click", "pass"]))
            clicks[name] += 1
            device.press(1)
            if chance.random() < 0.3:
                contacts = 3 - contacts if contacts in (0, 3) else 0
                self.tap.say_contacts(contacts)
            if name == "Qt 6" or chance.random() < 0.5:
                self.await_presses(name, clicks[name])
            device.release(1)
            self.await_presses(name, clicks[name])
            self.injector.await_up()
        print(f"{self.id()}: {time.monotonic() - start:.1f} s, {self.tap.count('asked')} asked, "
              f"{self.tap.count('down')} middle clicks")
        self.tap.contacts(0)
        middle = 0
        for name in self.clients:
            self.go(name)
            lines = self.buttons(name)
            counts = {line: lines.count(line) for line in [*LEFT, *MIDDLE]}
            print(f"{self.id()}: {name} {counts}")
            self.assertEqual(counts["press 1"], counts["release 1"])
            self.assertEqual(counts["press 2"], counts["release 2"])
            self.assertEqual(counts["press 1"] + counts["press 2"], clicks[name])
            middle += counts["press 2"]
        self.assertEqual(middle, self.tap.count("down"))
        self.assertEqual(self.tap.count("disabled"), 0)
        self.assertGreater(middle, SEQUENCES / 10)

    def await_presses(self, name: str, number: int) -> None:
        client = self.clients[name]
        wait_until(lambda: client.count("press 1") + client.count("press 2") >= number,
                   f"{name} gets click {number}")


if __name__ == "__main__":
    unittest.main()
