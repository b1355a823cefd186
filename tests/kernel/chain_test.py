"""What only real drivers do: fingers, places instead of steps, old wheels, plugs."""

import device_tests  # noqa: F401  (first: it puts the kernel's devices into the tests' ground)
from device_desktop import CENTRE, DeviceTest, total
from devices import await_taken
from quillon_desktop import BAND, WIDTH
from uinput_devices import HORIZONTAL, NOTCH, VERTICAL, CoarseMouse, Tablet
from uinput_touchpads import Touchpad
from witnesses import X11_PROBE, await_idle, wait_until

DIRECTIONS = ("up", "down", "left", "right")
PER_DESKTOP = 4  # notches


def pixel(line: str) -> tuple[int, ...]:
    """Where a motion went."""
    return tuple(int(float(number)) for number in line.split()[1:])


class ChainTest(DeviceTest):
    """With a touchpad, a tablet and an old mouse besides the three that turn and move by steps."""

    maxDiff = None
    Y = CENTRE["GTK 3"][1]

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.fingers, cls.tablet, cls.old_mouse = (
            Touchpad(cls.desktop, "fingers"), Tablet(cls.desktop, "tablet"),
            CoarseMouse(cls.desktop, "old mouse"))
        cls.plugged = {cls.mouse, cls.second_mouse, cls.touchpad, cls.fingers, cls.tablet,
                       cls.old_mouse}

    def setUp(self):
        super().setUp()
        self.client = self.clients["GTK 3"]
        self.go_out_of_band()
        self.addCleanup(self.go_out_of_band)

    def start(self, *edges: str, **settings) -> None:
        """Until it has made its hub, which on an emulated processor takes it longer than a scroll
        may wait."""
        super().start(*edges, **settings)
        await_idle(self.quillon.process, 60)

    def await_held(self) -> None:
        if self.quillon:
            await_taken(self.desktop, {device.name for device in self.plugged})

    def enter(self) -> None:
        self.go_into_band(BAND // 2, self.Y)
        for client in self.clients.values():
            client.forget()

    def begin_in_band(self, desktop: int) -> None:
        self.start("Left")
        self.history.go_to(desktop)
        self.enter()

    def expect_four_notches_to_count(self, device) -> None:
        """Up and down again, and no program gets any."""
        self.history.go_to(2)
        self.client.forget()
        for direction, target in (("up", 1), ("down", 2)):
            device.scroll(direction, 4)
            self.history.expect(target)
        self.assertEqual(self.client.received(), [])


class Fingers(ChainTest):
    def fingers_sum(self) -> tuple[float, float]:
        """Notches to the right and up that the X server has got from them."""
        axes, number = self.desktop.raw_events.axes, self.fingers.number
        return axes[number, HORIZONTAL] / NOTCH, -axes[number, VERTICAL] / NOTCH

    def test_scrolling_in_the_band(self):
        self.begin_in_band(0)
        place = self.desktop.pointer()
        for axis, (there, back) in ((1, ("down", "up")), (0, ("left", "right"))):
            for direction, sign in ((there, 1), (back, -1)):
                before = self.fingers_sum()[axis]
                self.fingers.scroll(direction, 18)
                notches = abs(self.fingers_sum()[axis] - before)
                print(f"{self.id()}: {direction}: {notches:.3f} notches")
                self.assertEqual(notches // PER_DESKTOP, 3)
                self.expect_changes(3, last=3 if sign > 0 else 0)
        self.assertEqual(self.client.received(), [])
        self.assertEqual(self.desktop.pointer(), place)
        self.expect_no_more_changes(self.quillon)

    def test_a_short_one_in_the_band(self):
        """Less than four notches change nothing, and are kept back too."""
        self.begin_in_band(2)
        before = self.fingers_sum()[1]
        self.fingers.scroll("up", 5)
        self.assertEqual((self.fingers_sum()[1] - before) // 1, PER_DESKTOP - 1)
        self.assertEqual(self.client.received(), [])
        self.go_out_of_band()
        self.expect_no_more_changes(self.quillon)

    def test_scrolling_elsewhere(self):
        """All that the server gets arrives, as it does without the program: of each device's first
        step after another's, GTK 3 makes nothing."""
        def missing():
            result = {}
            for name, place in reversed(CENTRE.items()):
                self.go_to(*place)
                for direction in DIRECTIONS:
                    # A toolkit asks for the axes of a device that it learns of, and leaves out
                    # what comes before the answer.
                    self.click_with_pad()
                    self.clients[name].forget()
                    before = self.fingers_sum()
                    self.fingers.scroll(direction, 12)
                    sums = [now - then for now, then in zip(self.fingers_sum(), before)]
                    got = total(self.clients[name].received())
                    self.assertGreater(max(map(abs, sums)), 7)
                    result[name, direction] = tuple(a - b for a, b in zip(sums, got))
            return result
        without = missing()
        self.start("Left", "Right", "Top", "Bottom")
        for key, now in missing().items():
            for a, b in zip(now, without[key]):  # Qt rounds each step, to 120ths
                self.assertAlmostEqual(a, b, delta=0.05, msg=f"{key}: {now}, {without[key]}")
        self.expect_no_more_changes(self.quillon)

    def test_one_finger_goes_in_and_out(self):
        self.begin_in_band(2)
        self.go_out_of_band(BAND + 60, self.Y)
        self.move_finger(-30)
        self.await_held()
        self.assertLess(self.desktop.pointer()[0], BAND + 1)
        self.fingers.scroll("up", 9)
        self.history.expect(1)
        inside = self.desktop.pointer()
        self.client.forget()
        self.move_finger(0, 6)
        self.assertGreater(self.desktop.pointer()[1], inside[1] + 10)
        lines = self.client.received()
        self.assertEqual([line for line in lines if line.split()[0] != "motion"], [])
        self.assertEqual(lines[-1].split()[0], "motion")
        self.move_finger(60)
        self.await_free()
        self.assertGreater(self.desktop.pointer()[0], BAND + 1)
        self.expect_no_more_changes(self.quillon)

    def test_clicks_of_the_pad(self):
        def scenario():
            self.go_into_band(BAND // 2, self.Y)
            for _ in range(3):
                self.click_with_pad()
        received = self.expect_as_without(scenario, "Left")
        self.assertEqual(received["GTK 3"].count("press 1"), 3)

    def click_with_pad(self) -> None:
        self.fingers.touch((50, 30))
        self.click(1, self.fingers)
        self.fingers.lift()

    def move_finger(self, dx: float, dy=0.0) -> None:
        """By so many millimetres."""
        self.fingers.touch((50 - dx / 2, 30 - dy / 2))
        self.fingers.slide(dx, dy, 20)
        self.fingers.lift()
        self.desktop.raw_events.await_quiet(0.1)


class OtherDevices(ChainTest):
    def test_an_old_mouse(self):
        self.begin_in_band(2)
        self.expect_four_notches_to_count(self.old_mouse)
        self.expect_no_more_changes(self.quillon)

    def test_a_tablet_in_the_band(self):
        self.start("Left", "Right")
        for x in (0, BAND, WIDTH - 1):
            self.tablet.go(WIDTH // 2, self.Y)
            self.await_free()
            self.tablet.go(x, self.Y)
            self.await_held()
            self.expect_four_notches_to_count(self.tablet)
        self.tablet.go(WIDTH // 2, self.Y)
        self.await_free()
        self.expect_no_more_changes(self.quillon)

    def test_a_tablet_hovers_clicks_and_drags(self):
        """Each pixel it goes to is seen by the program there, and so is each click."""
        def scenario():
            self.go_with_tablet(WIDTH // 2, self.Y)
            self.go_with_tablet(5, self.Y)
            self.await_held()
            for step in range(20):
                self.go_with_tablet(5 + step % 5, self.Y + step)
            self.click(1, self.tablet)
            self.click(3, self.tablet)
            self.press(1, self.tablet)
            for x in [*range(15, 205, 10), *range(205, 15, -10), 400]:
                self.go_with_tablet(x, self.Y)
            self.release(1, self.tablet)
            self.await_free()
            self.go_with_tablet(*CENTRE["GTK 3"])
        without = self.pixels_and_buttons(scenario)
        self.assertEqual(len(without), 67)
        self.start("Left")
        self.assertEqual(self.pixels_and_buttons(scenario), without)

    def go_with_tablet(self, x: int, y: int) -> None:
        """Until the program there has got it."""
        self.tablet.go(x, y)
        wait_until(lambda: pixel(self.client.last("motion") or "motion -1 -1") == (x, y),
                   f"the program gets motion to {x}, {y}")

    def pixels_and_buttons(self, scenario) -> list:
        self.client.forget()
        scenario()
        lines = [line for line in self.client.received()
                 if line.split()[0] in ("motion", "press", "release")]
        seen = [pixel(line) if line.startswith("motion") else line for line in lines]
        return [now for now, before in zip(seen, [None, *seen]) if now != before]

    def test_a_tablet_elsewhere(self):
        def scenario():
            self.tablet.go(WIDTH // 2, self.Y)
            self.tablet.go(*CENTRE["GTK 3"])
            self.take_up(self.tablet)
            for direction in DIRECTIONS:
                self.tablet.scroll(direction, 5)
                self.tablet.scroll(direction, 16, part=1 / 8)
        received = self.expect_as_without(scenario, "Left", "Right", "Top", "Bottom")
        self.assertTrue(any(line.startswith("scroll") for line in received["GTK 3"]))


class Plugs(ChainTest):
    def unplug(self, device) -> None:
        device.unplug()
        self.plugged.discard(device)

    def plug(self, device) -> None:
        device.plug()
        self.plugged.add(device)

    def no_button_is_down(self) -> bool:
        return self.desktop.run(X11_PROBE, "buttons") == ""

    def test_out_of_the_band(self):
        self.start("Left")
        self.unplug(self.second_mouse)
        self.enter()
        self.expect_four_notches_to_count(self.mouse)
        self.go_out_of_band()
        self.plug(self.second_mouse)
        self.enter()
        self.expect_four_notches_to_count(self.second_mouse)
        self.expect_no_more_changes(self.quillon)

    def test_one_while_it_is_held(self):
        self.begin_in_band(2)
        for _ in range(3):
            self.unplug(self.second_mouse)
            self.await_held()
            self.expect_four_notches_to_count(self.mouse)
            self.plug(self.second_mouse)
            self.await_held()
            self.expect_four_notches_to_count(self.second_mouse)
        self.go_out_of_band()
        self.await_free()
        self.expect_no_more_changes(self.quillon)

    def test_fingers_while_they_are_held(self):
        self.begin_in_band(0)
        self.fingers.touch((40, 40), (60, 40))
        self.fingers.slide(0, 5, 10)
        self.unplug(self.fingers)
        self.await_held()
        self.plug(self.fingers)
        self.await_held()
        self.history.go_to(0)
        self.client.forget()
        self.fingers.scroll("down", 18)
        self.expect_changes(3, last=3)
        self.assertEqual(self.client.received(), [])
        self.expect_no_more_changes(self.quillon)

    def test_in_mid_turn(self):
        self.begin_in_band(2)
        for _ in range(3):
            self.second_mouse.scroll("up", 2)
            self.unplug(self.second_mouse)
            self.plug(self.second_mouse)
            self.await_held()
            self.second_mouse.scroll("down", 2)
        self.expect_four_notches_to_count(self.mouse)
        self.expect_four_notches_to_count(self.second_mouse)
        self.expect_no_more_changes(self.quillon)

    def test_so_short_that_nobody_sees_it(self):
        """As a device that starts anew: it comes back under its old number, at once."""
        self.begin_in_band(2)
        for _ in range(5):
            self.second_mouse.pull()
            self.second_mouse.plug_anew()
            self.await_held()
            self.expect_four_notches_to_count(self.second_mouse)
        self.expect_no_more_changes(self.quillon)

    def test_with_a_button_down(self):
        """It goes up with its device."""
        self.begin_in_band(2)
        self.press(1, self.second_mouse)
        self.unplug(self.second_mouse)
        wait_until(self.no_button_is_down, "no button is down")
        wait_until(lambda: self.client.count("release 1") == self.client.count("press 1"),
                   "the program gets the release")
        self.plug(self.second_mouse)
        self.await_held()
        self.expect_four_notches_to_count(self.second_mouse)
        self.expect_no_more_changes(self.quillon)

    def test_all_at_once(self):
        self.begin_in_band(2)
        devices = sorted(self.plugged, key=lambda device: device.name)
        for device in devices:
            device.pull()
        for device in devices:
            self.unplug(device)
        self.await_held()
        for device in devices:
            self.plug(device)
        self.await_held()
        for device in (self.mouse, self.old_mouse):
            self.expect_four_notches_to_count(device)
        self.go_out_of_band()
        self.assertTrue(self.no_button_is_down())
        self.expect_no_more_changes(self.quillon)
