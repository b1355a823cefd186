"""A program with a tap of left presses, as the tool has that makes middle clicks of them."""

import subprocess

from device_desktop import CENTRE, HALF, DeviceTest
from quillon_desktop import WIDTH, GestureTest
from witnesses import (GTK3_CLIENT, PRESS_TAP, QT6_CLIENT, WATCHDOG, X11_PROBE, Client, Failed,
                       Lines, wait_until)


# What clients get of a click
LEFT = ["press 1", "release 1"]
MIDDLE = ["press 2", "release 2"]


class PressTap:
    """The running program. Each of its calls returns when the program has done it."""

    def __init__(self, desktop, name: str):
        self._desktop, self._lines = desktop, Lines(desktop, name)
        self.process = desktop.start(name, [PRESS_TAP, WATCHDOG], text=True, stdin=subprocess.PIPE)
        desktop.wait_for(self.process, lambda: "ready" in self.lines(), "a tap")

    def lines(self) -> list[str]:
        return self._lines.all()

    def count(self, start: str) -> int:
        return sum(line.startswith(start) for line in self.lines())

    def contacts(self, number: int) -> None:
        """So many fingers rest, and the button is held or left alone."""
        self.say_contacts(number)
        state = "taken" if number == 3 else "free"
        wait_until(lambda: left_button(self._desktop) == state, f"the left button is {state}")

    def say_contacts(self, number: int) -> None:
        """The same, only that the button may still have to be taken or let go of."""
        self._do(f"contacts {number}")

    def answer(self, word: str) -> None:
        self._do(f"answer {word}")

    def die_pressed(self) -> None:
        self._do("die-pressed")

    def hold_band(self) -> None:
        self._do("band")

    def answer_scrolls(self, word: str) -> None:
        self._do(f"scrolls {word}")

    def listen(self, word: str) -> None:
        self._do(f"listen {word}")

    def _do(self, command: str) -> None:
        before = self.count(command)
        self.process.stdin.write(f"{command}\n")
        self.process.stdin.flush()
        self._desktop.wait_for(self.process, lambda: self.count(command) > before, command)


def left_button(desktop) -> str:
    """Whether any other program could hold the left button at this moment: "free" or "taken"."""
    try:
        return desktop.run(X11_PROBE, "can-grab-left").strip()
    except Failed:
        return "taken"


class TapTest:
    """To be mixed into a test with `clients` by name and a `hand` at the mouse. Each test has the
    program anew."""

    def setUp(self):
        super().setUp()
        self._taps = 0
        self.start_tap()
        self.go("GTK 3")
        self.forget()

    def start_tap(self) -> None:
        self._taps += 1
        tap = PressTap(self.desktop, f"press-tap-{self.id().rpartition('.')[2]}-{self._taps}")
        self.addCleanup(self._end, tap)
        self.tap = tap

    def _end(self, tap: PressTap) -> None:
        try:
            self.desktop.end(tap.process)
            self.assertEqual(self.desktop.run(X11_PROBE, "buttons"), "")
        finally:
            print(f"{self.id()}: the tap printed:", *tap.lines(), sep="\n    ")

    def forget(self) -> None:
        for client in self.clients.values():
            client.forget()

    def until(self, name: str, line: str, action) -> None:
        """Does it, and waits until the client has got this of it."""
        before = self.clients[name].count(line)
        action()
        wait_until(lambda: self.clients[name].count(line) > before, f"{name} gets {line!r}")

    def press_left(self, name: str) -> None:
        self.until(name, "press 1", lambda: self.hand.press(1))

    def release_left(self, name: str) -> None:
        self.until(name, "release 1", lambda: self.hand.release(1))

    def click_left(self, name: str) -> None:
        self.press_left(name)
        self.release_left(name)

    def click_middle(self, name: str) -> None:
        """By the left button, which the finger stays on for a while."""
        self.until(name, "release 2", lambda: self.hand.press(1))
        self.injector.await_up()
        self.hand.release(1)

    def buttons(self, name: str) -> list[str]:
        """What the client, which the pointer is over, has got of them; double clicks are left
        out, since they are a matter of time."""
        return [line for line in self.clients[name].received()
                if line.split()[0] in ("press", "release")]


class InjectedHand(GestureTest):
    """The button is that of the device that other programs inject with."""

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.hand = cls.injector
        cls.clients = {
            name: Client(cls.desktop, cls.hand, program, name, (0, y, WIDTH, HALF), ["--all"])
            for name, program, y in (("GTK 3", GTK3_CLIENT, 0), ("Qt 6", QT6_CLIENT, HALF))}

    def go(self, name: str) -> None:
        self.injector.move(*CENTRE[name])


class TouchpadHand(DeviceTest):
    """The button is a touchpad's own, which it must be let go of on."""

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.hand = cls.touchpad

    def go(self, name: str) -> None:
        self.go_to(*CENTRE[name])
        self.take_up(self.touchpad)
