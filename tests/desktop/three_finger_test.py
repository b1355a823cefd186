#!/usr/bin/env python3
"""Three fingers on the trackpad and a press, through the whole program: what other programs get."""

import os
import random
import unittest

from device_desktop import CENTRE
from press_tap import LEFT, MIDDLE, InjectedHand, TouchpadHand, left_button
from quillon_desktop import BAND
from switcher_desktop import SAYS, write_switcher_settings
from witnesses import CONTACT_PLAYER, TREE, X11_PROBE, wait_until

SEQUENCES = int(os.environ.get("QUILLON_PRESS_SEQUENCES", 150))


class ThreeFingers:
    """With fingers on a trackpad, which a library of the test plays; to be mixed into a test with
    `clients` by name and a `hand` at the button."""

    def start_tool(self, library=CONTACT_PLAYER, **settings) -> None:
        pipe = self.desktop.folder / "contacts"
        for path in (pipe, f"{pipe}.seen"):
            if not os.path.exists(path):
                os.mkfifo(path)
        self.frames, self.seen = (open(path, "r+b", buffering=0) for path in (pipe, f"{pipe}.seen"))
        self.addCleanup(self.frames.close)
        self.addCleanup(self.seen.close)
        write_switcher_settings(self.desktop, **settings)
        self.quillon = self.start_quillon(environment={
            "QUILLON_TOUCH_LIBRARY": str(library), "QUILLON_TEST_CONTACTS": str(pipe)})
        self.addCleanup(setattr, self, "quillon", None)
        for part in (*SAYS, "Middle mouse click simulated"):
            self.quillon.may_say(part)
        self.quillon.wait_for_line("Window switcher monitoring started")

    def say_touch(self, contacts: int) -> None:
        """The program's monitor has been told; the button may still have to be taken."""
        self.frames.write(f"{contacts}\n".encode())
        self.seen.read(1)

    def touch(self, contacts: int) -> None:
        self.say_touch(contacts)
        state = "taken" if contacts == 3 else "free"
        wait_until(lambda: left_button(self.desktop) == state, f"the left button is {state}")

    def until(self, name: str, line: str, action) -> None:
        before = self.clients[name].count(line)
        action()
        wait_until(lambda: self.clients[name].count(line) > before, f"{name} gets {line!r}")

    def click(self, name: str, button: int) -> None:
        """The left button, which is to become this one."""
        self.until(name, f"press {button}", lambda: self.hand.press(1))
        if button == 2:
            self.until_up()
        self.hand.release(1)

    def until_up(self) -> None:
        """The middle button has come up again by itself."""
        wait_until(lambda: "2" not in self.desktop.run(X11_PROBE, "buttons").split(), "it is up")

    def buttons(self, name: str) -> list[str]:
        """What the client, which the pointer is over, has got of them."""
        return [line for line in self.clients[name].received()
                if line.split()[0] in ("press", "release")]

    def expect(self, name: str, lines: list[str]) -> None:
        self.assertEqual(self.buttons(name), lines)
        self.assertEqual(self.desktop.run(X11_PROBE, "buttons"), "", "a button is stuck")

    def test_three_and_other_numbers(self):
        self.start_tool()
        for name in self.clients:
            self.go(name)
            self.buttons(name)
            for contacts, button in ((3, 2), (2, 1), (4, 1), (3, 2), (0, 1), (3, 2)):
                self.touch(contacts)
                self.click(name, button)
                self.expect(name, MIDDLE if button == 2 else LEFT)
            self.touch(0)

    def test_fingers_that_leave_in_mid_press(self):
        """As they do when the trackpad is unplugged, too."""
        self.start_tool()
        for name in self.clients:
            self.go(name)
            self.buttons(name)
            self.touch(3)
            self.until(name, "press 2", lambda: self.hand.press(1))
            self.touch(0)
            self.hand.release(1)
            self.until_up()
            self.expect(name, MIDDLE)
            self.until(name, "press 1", lambda: self.hand.press(1))
            self.touch(3)
            self.hand.release(1)
            self.expect(name, LEFT)
            self.touch(0)

    def test_a_frame_right_before_the_press(self):
        """Whichever of the two comes first, it is one click."""
        self.start_tool()
        for number in range(20):
            name = list(self.clients)[number % 2]
            self.go(name)
            self.buttons(name)
            before = self.clients[name].count("release")
            self.say_touch(3)
            self.until(name, "press", lambda: self.hand.press(1))
            self.until_up()
            self.hand.release(1)
            wait_until(lambda: self.clients[name].count("release") > before, "a release")  # noqa: B023
            self.assertIn(self.buttons(name), (MIDDLE, LEFT))
            self.touch(0)

    def test_started_again(self):
        for _ in range(2):
            self.start_tool()
            name = next(iter(self.clients))
            self.go(name)
            self.buttons(name)
            self.touch(3)
            self.click(name, 2)
            self.expect(name, MIDDLE)
            self.assertEqual(self.quillon.stop(), 0)
            self.click(name, 1)
            self.expect(name, LEFT)

    def test_libraries_that_lack_something(self):
        without_stop = CONTACT_PLAYER.with_name("contact_player_without_stop.so")
        for library in (TREE / "nothing.so", TREE / "README.md", without_stop):
            self.start_tool(library)
            name = next(iter(self.clients))
            self.go(name)
            self.buttons(name)
            self.click(name, 1)
            self.expect(name, LEFT)
            self.assertEqual(self.quillon.stop(), 0)

    def test_random_sequences(self):
        chance = random.Random(7)
        self.start_tool()
        contacts = 0
        for number in range(SEQUENCES):
            if number % 50 == 0:
                name = list(self.clients)[number // 50 % 2]
                self.go(name)
                self.buttons(name)
            expected = []
            for _ in range(chance.randrange(1, 4)):
                before = chance.choice((0, 1, 2, 3, 3, 4))
                if (before == 3) != (contacts == 3):
                    self.touch(before)
                contacts = before
                button = 2 if contacts == 3 else 1
                self.until(name, f"press {button}", lambda: self.hand.press(1))  # noqa: B023
                if chance.random() < 0.3:
                    contacts = chance.choice((0, 3))
                    self.touch(contacts)
                if button == 2:
                    self.until_up()
                self.hand.release(1)
                expected += MIDDLE if button == 2 else LEFT
            self.expect(name, expected)


class ThreeFingersInjected(ThreeFingers, InjectedHand):
    pass


class ThreeFingersOnDevice(ThreeFingers, TouchpadHand):
    def test_in_a_band(self):
        """There the touchpad itself is held, and its clicks are posted on."""
        self.start_tool(LeftEdge=True)
        for name, (_, y) in CENTRE.items():
            self.go_out_of_band(*CENTRE[name])
            self.go_into_band(BAND // 2, y)
            self.buttons(name)
            for contacts, button in ((3, 2), (0, 1), (3, 2)):
                self.touch(contacts)
                self.click(name, button)
                self.expect(name, MIDDLE if button == 2 else LEFT)
            self.touch(0)


if __name__ == "__main__":
    unittest.main()
