#!/usr/bin/env python3
"""What a monitor hears of scrolls and clicks: that which the programs get, and each once."""

import concurrent.futures
import pathlib
import re
import unittest

from device_desktop import CENTRE, SCROLLERS, DeviceTest, total
from devices import await_taken
from listening import CLICKS, HEARD, Listening
from quillon_desktop import BAND, HEIGHT, WIDTH, GestureTest
from witnesses import GTK3_CLIENT, Client, await_idle, wait_until

MANY = 200


class WheelMonitors(Listening, GestureTest):
    """Plain wheels, which are held by their buttons."""

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.hand = cls.injector
        cls.client = Client(cls.desktop, cls.hand, GTK3_CLIENT, "GTK 3", (0, 0, WIDTH, HEIGHT))

    def enter(self, answer: str) -> None:
        self.tap.hold_band()
        self.tap.answer_scrolls(answer)
        self.go_into_band(BAND // 2, HEIGHT // 2)
        self.addCleanup(self.go_out_of_band)
        self.client.received()
        self.heard()

    def test_out_of_a_band(self):
        self.go_out_of_band()
        for direction, line in HEARD.items():
            self.injector.scroll(direction, 3)
            self.assertEqual(self.heard(), [line] * 3)

    def test_passing(self):
        self.enter("pass")
        self.injector.scroll("down", MANY)
        self.assertEqual(self.heard(), [HEARD["down"]] * MANY)
        self.assertEqual(total(self.client.received()), (0, -MANY))
        self.assertEqual(self.tap.count("scrolled"), MANY)

    def test_consumed(self):
        self.enter("consume")
        self.injector.scroll("down", MANY)
        self.assertEqual(self.heard(), [])
        self.assertEqual(total(self.client.received()), (0, 0))
        self.assertEqual(self.tap.count("scrolled"), MANY)

    def test_each_by_turns(self):
        self.enter("each")
        for _ in range(MANY // 2):
            self.injector.scroll("up", 1)  # is consumed
            self.injector.scroll("down", 1)
        self.assertEqual(self.heard(), [HEARD["down"]] * (MANY // 2))
        self.assertEqual(total(self.client.received()), (0, -MANY // 2))

    def test_the_pointer_turns_it_over(self):
        self.go_out_of_band()
        self.injector.scroll("up", 1)
        self.assertEqual(self.heard(), [HEARD["up"]])
        self.addCleanup(self.desktop.run, "xmodmap", "-e", "pointer = default")
        self.desktop.run("xmodmap", "-e", "pointer = 3 2 1 5 4 7 6 8 9 10")
        self.injector.scroll("up", 1)
        self.injector.scroll("left", 1)
        self.injector.click(1)
        self.assertEqual(self.heard(), [HEARD["down"], HEARD["right"], *CLICKS[3]])


class DeviceMonitors(Listening, DeviceTest):
    """Mice and touchpads that scroll by axes, and are held themselves."""

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.hand = cls.mouse
        cls.devices = (cls.mouse, cls.second_mouse, cls.touchpad)

    def setUp(self):
        super().setUp()
        self.addCleanup(self.go_to, *CENTRE["GTK 3"])
        self.go_to(*CENTRE["GTK 3"])
        self.take_up(self.mouse)
        self.heard()

    def enter(self, answer: str) -> None:
        self.tap.hold_band()
        self.tap.answer_scrolls(answer)
        self.go_to(BAND // 2, CENTRE["GTK 3"][1])
        await_taken(self.desktop, SCROLLERS)
        self.clients["GTK 3"].received()
        self.heard()

    def at_once(self, *actions) -> None:
        with concurrent.futures.ThreadPoolExecutor(len(actions)) as pool:
            for done in [pool.submit(action) for action in actions]:
                done.result()

    def expect_clicks(self) -> None:
        for device in self.devices:
            for button, lines in CLICKS.items():
                device.click(button)
                self.assertEqual(self.heard(), lines)

    def test_out_of_a_band(self):
        for device in self.devices:
            for direction, line in HEARD.items():
                device.scroll(direction, 3)
                self.assertEqual(self.heard(), [line] * 3)
        self.touchpad.scroll("up", 8, part=1 / 4)
        self.mouse.scroll("up", 1, part=2)
        self.assertEqual(self.heard(), [HEARD["up"]] * 4)
        self.mouse.scroll("down", MANY)
        self.assertEqual(self.heard(), [HEARD["down"]] * MANY)
        self.expect_clicks()

    def test_passing(self):
        self.enter("pass")
        for device in self.devices:
            self.clients["GTK 3"].received()
            device.scroll("down", MANY)
            self.assertEqual(self.heard(), [HEARD["down"]] * MANY)
            self.assertEqual(total(self.clients["GTK 3"].received()), (0, -MANY))
            for direction, line in HEARD.items():
                device.scroll(direction, 2)
                self.assertEqual(self.heard(), [line] * 2)

    def test_consumed(self):
        self.enter("consume")
        for device in self.devices:
            before = self.tap.count("scrolled")
            device.scroll("down", MANY)
            wait_until(lambda: self.tap.count("scrolled") == before + MANY, "all were asked about")
            self.assertEqual(self.heard(), [])

    def test_each_by_turns(self):
        self.enter("each")
        self.at_once(lambda: self.mouse.scroll("down", MANY, gap=0.003),
                     lambda: self.touchpad.scroll("down", MANY, gap=0.002))
        self.assertEqual(self.heard(), [HEARD["down"]] * MANY)

    def test_clicks_in_a_band(self):
        self.enter("consume")
        self.expect_clicks()

    def test_left_clicks_in_a_band_that_a_tap_is_asked_about(self):
        self.enter("consume")
        self.tap.contacts(3)
        self.addCleanup(self.tap.contacts, 0)
        for device in self.devices:
            self.tap.answer("pass")
            device.click(1)
            self.assertEqual(self.heard(), CLICKS[1])
            self.tap.answer("click")
            ups = self.tap.count("up")
            device.press(1)
            wait_until(lambda: self.tap.count("up") > ups, "a middle click is posted")
            device.release(1)
            self.assertEqual(self.heard(), [], "nor the middle click")
        self.assertEqual(self.tap.count("asked"), 2 * len(self.devices))

    def test_in_and_out_while_it_is_turned(self):
        self.enter("pass")

        def wander():
            for _ in range(10):
                self.second_mouse.glide(20, 0, 5, gap=0.01)
                self.second_mouse.glide(-20, 0, 5, gap=0.01)
        self.at_once(wander, lambda: self.mouse.scroll("down", MANY, gap=0.005))
        lines = self.heard()
        self.assertGreater(self.tap.count("scrolled"), 0)
        self.assertLess(self.tap.count("scrolled"), MANY)
        self.assertEqual(lines, [HEARD["down"]] * MANY)

    def test_axes_are_numbered_by_nobody(self):
        """A program that reads the axes knows nothing of buttons that are swapped."""
        self.addCleanup(self.desktop.run, "xinput", "set-button-map", "mouse",
                        *range(1, 11))
        self.desktop.run("xinput", "set-button-map", "mouse", 3, 2, 1, 5, 4, 7, 6, 8, 9, 10)
        self.clients["GTK 3"].received()
        self.heard()
        self.mouse.click(1)
        self.scroll(self.mouse, "up", 2)
        self.scroll(self.mouse, "left", 2)
        self.assertEqual(self.heard(),
                         [*CLICKS[3], *[HEARD["up"]] * 2, *[HEARD["left"]] * 2])
        # The first step along an axis only tells the toolkit where the axis stands.
        right, up = total(self.clients["GTK 3"].received())
        self.assertLess(right, 0)
        self.assertGreater(up, 0)

    def test_what_wakes_it(self):
        self.mouse.scroll("up", 1)
        self.heard()
        await_idle(self.tap.process)
        before = self.wakeups()
        self.mouse.glide(1, 0, 500)
        await_idle(self.tap.process)
        self.assertEqual(self.wakeups(), before, "not motion")
        self.mouse.scroll("up", 1)
        self.assertEqual(self.heard(), [HEARD["up"]])
        self.assertGreater(self.wakeups(), before)
        self.tap.listen("no")
        await_idle(self.tap.process)
        before = self.wakeups()
        self.mouse.scroll("up", 50)
        self.mouse.click(8)
        await_idle(self.tap.process)
        self.assertEqual(self.wakeups(), before, "nothing at all")
        self.tap.listen("yes")
        self.assertEqual(self.heard(), [])

    def wakeups(self) -> list[str]:
        """How often each of its threads has been put to sleep."""
        return [re.search(r"^voluntary_ctxt_switches:.*", (task / "status").read_text(),
                          re.MULTILINE)[0]
                for task in sorted(pathlib.Path(f"/proc/{self.tap.process.pid}/task").iterdir())]


if __name__ == "__main__":
    unittest.main()
