"""Devices that scroll the other way by themselves, as drivers have it and as programs see it."""

import itertools
import re

from chain_test import ChainTest
from device_desktop import CENTRE, total
from devices import await_taken
from quillon_desktop import BAND
from reverse_tap import ReverseTap
from witnesses import wait_until

NATURAL = "libinput Natural Scrolling Enabled"
BEFORE = "Quillon Scrolling Before"
MICE_TURNED = {"none": 1, "mouse": -1, "trackpad": 1, "both": -1}
FINGERS_TURNED = {"none": 1, "mouse": 1, "trackpad": -1, "both": -1}

_numbers = itertools.count(1)


class Reversal(ChainTest):
    def setUp(self):
        super().setUp()
        self.wheels = (self.mouse, self.second_mouse, self.old_mouse)
        self.addCleanup(self.set_way, 1)
        self.start_tap()

    def start_tap(self) -> None:
        self.tap = tap = ReverseTap(self.desktop, f"reverse-tap-{next(_numbers)}")
        self.addCleanup(self._end, tap)

    def _end(self, tap: ReverseTap) -> None:
        if tap.process.returncode is None:
            tap.stop()
        print(f"{self.id()}: the tap printed:", *tap.lines(), sep="\n    ")

    def set_way(self, way: int) -> None:
        for device in (self.mouse, self.second_mouse, self.touchpad, self.old_mouse, self.tablet):
            device.way = way

    def reverse(self, what: str) -> None:
        self.tap.reverse(what)
        self.set_way(MICE_TURNED[what])

    def number(self, device, name: str) -> int | None:
        """A property's, None where it has none."""
        found = re.search(rf"{name} \(\d+\):\s+(\d+)",
                          self.desktop.run("xinput", "list-props", device.number))
        return int(found[1]) if found else None

    def set_natural(self, device, value: int) -> None:
        self.desktop.run("xinput", "set-prop", device.number, NATURAL, value)
        self.addCleanup(self.desktop.run, "xinput", "set-prop", device.number, NATURAL, 0)

    # What programs get

    def sums(self, device) -> list[tuple[float, float]]:
        """To the right and up, by program and direction. Of a device's first step GTK 3 makes
        nothing; what the server derives for it has all."""
        result = []
        for name, place in CENTRE.items():
            self.go_to(*place)
            for direction in ("down", "right"):
                self.take_up(device)
                self.clients[name].forget()
                self.scroll(device, direction, 6)
                kind = "derived" if name == "GTK 3" else "scroll"
                result.append(total(self.clients[name].received(), kind))
        return result

    def finger_sums(self) -> list[tuple[float, float]]:
        """The same, less that first step."""
        result = []
        for name, place in CENTRE.items():
            self.go_to(*place)
            for direction in ("down", "right"):
                self.fingers.touch((50, 30))
                self.click(1, self.fingers)
                self.fingers.lift()
                self.clients[name].forget()
                self.fingers.scroll(direction, 12)
                result.append(total(self.clients[name].received()))
        return result

    def expect_sums(self, now, before, sign: int, delta: float) -> None:
        self.assertEqual(len(now), len(before))
        for one, other in zip(now, before):
            for a, b in zip(one, other):
                self.assertAlmostEqual(a, sign * b, delta=delta, msg=f"{now}, {before}, {sign}")

    def test_each_kind(self):
        self.finger_sums()  # what came before takes part in what is lost
        mouse, old, fingers = (self.sums(self.mouse), self.sums(self.old_mouse),
                               self.finger_sums())
        for sums in (mouse, old, fingers):
            self.assertGreater(min(max(map(abs, one)) for one in sums), 4)
        for what in ("mouse", "trackpad", "both", "none"):
            with self.subTest(what):
                self.reverse(what)
                self.expect_sums(self.sums(self.mouse), mouse, MICE_TURNED[what], 0)
                self.expect_sums(self.sums(self.old_mouse), old, MICE_TURNED[what], 0)
                # Qt rounds each step, to 120ths.
                self.expect_sums(self.finger_sums(), fingers, FINGERS_TURNED[what], 0.1)

    def test_what_the_user_has_is_kept(self):
        for device in (self.mouse, self.fingers):
            self.set_natural(device, 1)
        users = {device: self.number(device, NATURAL)
                 for device in (self.mouse, self.second_mouse, self.fingers)}
        self.assertEqual(list(users.values()), [1, 0, 1])

        def expect(inverted: bool):
            for device, value in users.items():
                self.assertEqual(self.number(device, NATURAL), 1 - value if inverted else value)
                self.assertEqual(self.number(device, BEFORE), value if inverted else None)

        self.tap.reverse("both")
        expect(inverted=True)
        self.tap.reverse("none")
        expect(inverted=False)
        self.tap.reverse("both")
        self.tap.stop()
        expect(inverted=False)
        self.start_tap()
        self.tap.reverse("both")
        self.tap.kill()
        expect(inverted=True)
        self.start_tap()
        expect(inverted=False)

    def test_what_the_user_changes_meanwhile(self):
        self.tap.reverse("both")
        self.set_natural(self.fingers, 1)
        wait_until(lambda: self.number(self.fingers, NATURAL) == 0, "it is inverted again")
        self.assertEqual(self.number(self.fingers, BEFORE), 1)
        self.tap.reverse("none")
        self.assertEqual(self.number(self.fingers, NATURAL), 1)

    def test_devices_that_come(self):
        self.tap.reverse("both")
        for device in (self.second_mouse, self.fingers):
            device.unplug()
            device.plug()
            wait_until(lambda: self.number(device, NATURAL) == 1, "it is inverted")
        self.desktop.run("xinput", "disable", self.second_mouse.number)
        self.tap.reverse("none")
        self.desktop.run("xinput", "enable", self.second_mouse.number)
        for device in (self.second_mouse, self.fingers):
            wait_until(lambda: self.number(device, NATURAL) == 0, "it is as it was")
            self.assertEqual(self.number(device, BEFORE), None)

    # In a band

    def enter_held(self, y: int) -> None:
        self.go_to(BAND // 2, y)
        await_taken(self.desktop, {device.name for device in self.plugged})
        for client in self.clients.values():
            client.forget()
        self.tap.forget()

    def leave(self) -> None:
        self.go_to(*CENTRE["GTK 3"])
        await_taken(self.desktop, ())

    def turn(self, device, direction: str, count: int) -> None:
        before = len(self.tap.notches())
        device.scroll(direction, count)
        wait_until(lambda: len(self.tap.notches()) == before + count, "the tap was asked")

    def test_in_a_band(self):
        for what in ("none", "both", "mouse"):
            self.reverse(what)
            self.tap.hold_band("pass")
            for name, (_, y) in CENTRE.items():
                self.enter_held(y)
                self.turn(self.mouse, "up", 3)
                self.turn(self.mouse, "right", 2)
                # As the device has it before anything of ours.
                self.assertEqual(self.tap.notches(), 3 * [(1, 0, 0, 0)] + 2 * [(0, 1, 0, 0)])
                right, up = total(self.clients[name].received())
                sign = MICE_TURNED[what]
                self.assertEqual((right, up), (2 * sign, 3 * sign), (what, name))
                self.leave()

    def test_fingers_in_a_band(self):
        for what in ("none", "trackpad", "mouse"):
            self.reverse(what)
            self.tap.hold_band("pass")
            for name, (_, y) in CENTRE.items():
                self.enter_held(y)
                self.fingers.scroll("up", 12)
                wait_until(lambda: len(self.tap.notches()) >= 5, "the tap was asked")
                up = total(self.clients[name].received())[1]
                notches = self.tap.notches()
                self.assertEqual(set(notches), {(0, 0, 10, 0)})
                self.assertEqual(up, FINGERS_TURNED[what] * len(notches), (what, name))
                self.leave()

    def test_consumed_in_a_band(self):
        self.reverse("both")
        self.tap.hold_band("consume")
        self.enter_held(self.Y)
        self.turn(self.mouse, "up", 5)
        self.turn(self.mouse, "left", 5)
        self.assertEqual(self.tap.notches(), 5 * [(1, 0, 0, 0)] + 5 * [(0, -1, 0, 0)])
        self.assertEqual(self.client.received(), [])
        # Switched while they are held.
        self.reverse("none")
        self.tap.forget()
        self.turn(self.mouse, "up", 2)
        self.assertEqual(self.tap.notches(), 2 * [(1, 0, 0, 0)])
        self.assertEqual(self.client.received(), [])
        self.leave()

    def test_a_short_press_in_between_costs_nothing(self):
        """Clicks and motion are as before while devices are reversed, in the band and outside."""
        self.reverse("both")
        self.tap.hold_band("pass")
        for place in (CENTRE["GTK 3"], (BAND // 2, self.Y)):
            self.go_to(*place)
            self.client.forget()
            for _ in range(3):
                self.click(1)
            self.assertEqual(self.client.received().count("press 1"), 3)
        self.leave()


del ChainTest  # its tests are run where they are
