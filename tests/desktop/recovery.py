"""The ground of the tests in which something goes wrong while the devices are held."""

import time

from device_desktop import CENTRE, DeviceTest
from devices import taken_devices
from process_facts import children
from quillon_desktop import BAND
from witnesses import X11_PROBE, Failed, await_idle, await_wheel, wait_until

PATIENCE = 0.5  # seconds for which input may stop, at most
RECOVERY = 5.0  # seconds until gestures work again
WATCHDOG = "quillon-watchdog"


def happens(condition, limit: float) -> bool:
    try:
        wait_until(condition, "", limit)
    except Failed:
        return False
    return True


class RecoveryTest(DeviceTest):
    """Each test begins in the band, with the devices held."""

    def setUp(self):
        super().setUp()
        self.client = self.clients["GTK 3"]
        self.go_out_of_band()
        self.addCleanup(self.go_to, *CENTRE["GTK 3"])
        self.start("Left")
        self.history.go_to(2)
        self.enter()

    def enter(self) -> None:
        self.go_into_band(BAND // 2, CENTRE["GTK 3"][1])

    def watchdog(self) -> int | None:
        names = children(self.quillon.process.pid)
        return next((pid for pid, name in names.items() if name == WATCHDOG), None)

    def flows(self) -> bool:
        """A device moves the pointer, and its scrolling and clicks reach a program."""
        x, y = self.desktop.pointer()
        self.mouse.move(0, 1 if y < CENTRE["GTK 3"][1] else -1)
        if self.desktop.pointer() == (x, y):
            return False
        before = self._received()
        self.mouse.scroll("up", 1)
        self.mouse.click(8)
        return happens(lambda: all(now > then for now, then in zip(self._received(), before)), 0.2)

    def _received(self) -> list[int]:
        return [self.client.count(what) for what in ("scroll", "press 8", "release 8")]

    def gesture(self) -> bool:
        """Four notches change the desktop."""
        current = self.desktop.current_desktop()
        self.mouse.scroll("up" if current > 0 else "down", 4)
        return happens(lambda: self.desktop.current_desktop() != current, 0.2)

    def finish_gesture(self) -> None:
        """What was interrupted may have left some notches of either direction, and changes of the
        desktop that the program has yet to make."""
        await_idle(self.quillon.process)
        self.desktop.set_desktop(2)
        for _ in range(7):
            self.mouse.scroll("up", 1)
            if happens(lambda: self.desktop.current_desktop() == 1, 0.1):
                return
        self.fail("seven notches do not change the desktop")

    def no_button_is_down(self) -> bool:
        return self.desktop.run(X11_PROBE, "buttons") == ""

    def await_no_button(self, limit=1.0) -> None:
        wait_until(self.no_button_is_down, "no button is down", limit)

    def await_flow(self, since: float) -> None:
        """By the clock: PATIENCE has begun at `since`."""
        wait_until(self.flows, "input flows", PATIENCE + 5)
        passed = time.monotonic() - since
        print(f"{self.id()}: input flows after {passed:.3f} s")
        self.assertLess(passed, PATIENCE)

    def await_gestures(self, limit=RECOVERY) -> None:
        """As someone does who tries again and again."""
        start = time.monotonic()

        def works():
            self.assertTrue(self.quillon.is_running(), "the program has ended")
            self.go_to(*CENTRE["GTK 3"])
            self.go_to(BAND // 2, CENTRE["GTK 3"][1])
            return self.gesture()
        wait_until(works, "gestures work again", limit)
        print(f"{self.id()}: gestures work after {time.monotonic() - start:.3f} s")

    def expect_all_is_well(self) -> None:
        """Gestures count exactly, nothing else is kept back, and nothing is left behind."""
        self.go_out_of_band()
        self.enter()
        self.finish_gesture()
        self.history.go_to(2)
        self.client.received()
        self.mouse.scroll("up", 4)
        self.history.expect(1)
        self.assertEqual(self.client.received(), [])
        self.go_out_of_band()
        self.assertTrue(self.flows())
        self.expect_nothing_is_held()

    def expect_nothing_is_held(self) -> None:
        self.assertEqual(taken_devices(self.desktop), set())
        self.assertTrue(self.no_button_is_down())
        await_wheel(self.desktop, "free")
