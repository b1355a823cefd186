#!/usr/bin/env python3
"""Whatever becomes of the program while it holds the devices, the input flows again at once."""

import os
import signal
import time
import unittest

from device_desktop import SCROLLERS
from devices import taken_devices
from process_facts import is_alive
from recovery import PATIENCE, RecoveryTest
from witnesses import X11_PROBE, Failed, wait_until

STOPPED = 5.0  # seconds

# What the program says
WATCHDOG_LOST = "The watchdog has ended; input is let go of until another one runs"
CONNECTION_LOST = "The X server closed the connection that holds input"


class Stopped(RecoveryTest):
    def setUp(self):
        super().setUp()
        for words in (WATCHDOG_LOST, CONNECTION_LOST):
            self.quillon.may_say(words)

    def test_stopped_for_a_while(self):
        start = time.monotonic()
        self.quillon.process.send_signal(signal.SIGSTOP)
        self.addCleanup(self.quillon.process.send_signal, signal.SIGCONT)
        self.await_flow(start)
        self.expect_nothing_is_held()
        while time.monotonic() < start + STOPPED:
            self.assertTrue(self.flows())
        self.quillon.process.send_signal(signal.SIGCONT)
        self.await_gestures()
        self.expect_all_is_well()

    def test_stopped_with_a_button_down(self):
        """Which was passed on, and would stay down for ever."""
        self.press(1)
        start = time.monotonic()
        self.quillon.process.send_signal(signal.SIGSTOP)
        self.addCleanup(self.quillon.process.send_signal, signal.SIGCONT)
        wait_until(lambda: not taken_devices(self.desktop) & set(SCROLLERS), "the devices are free",
                   PATIENCE)
        self.mouse.release(1)
        self.await_no_button()
        self.await_flow(time.monotonic())
        print(f"{self.id()}: all is free after {time.monotonic() - start:.3f} s")
        self.quillon.process.send_signal(signal.SIGCONT)
        self.await_gestures()
        self.expect_all_is_well()

    def test_stopped_again_and_again(self):
        for _ in range(3):
            start = time.monotonic()
            self.quillon.process.send_signal(signal.SIGSTOP)
            self.await_flow(start)
            self.quillon.process.send_signal(signal.SIGCONT)
            self.await_gestures()
            self.go_out_of_band()
            self.enter()
        self.expect_all_is_well()


class Ended(RecoveryTest):
    def expect_end_by(self, number: int) -> None:
        watchdog = self.watchdog()
        start = time.monotonic()
        self.quillon.process.send_signal(number)
        self.await_flow(start)
        self.assertEqual(self.quillon.wait(), -number)
        self.expect_nothing_is_held()
        wait_until(lambda: not is_alive(watchdog), "the watchdog ends too")
        self.go_out_of_band()
        self.start("Left")
        self.expect_all_is_well()

    def test_killed(self):
        self.expect_end_by(signal.SIGKILL)

    def test_crashed(self):
        self.expect_end_by(signal.SIGABRT)

    def test_killed_with_a_button_down(self):
        self.press(1)
        watchdog = self.watchdog()
        self.quillon.process.kill()
        self.assertEqual(self.quillon.wait(), -signal.SIGKILL)
        wait_until(lambda: not is_alive(watchdog), "the watchdog ends too")
        self.mouse.release(1)
        self.await_no_button()
        self.await_flow(time.monotonic())
        self.go_out_of_band()

    def test_asked_to_end(self):
        watchdog = self.watchdog()
        start = time.monotonic()
        self.assertEqual(self.quillon.stop(), 0)
        self.await_flow(start)
        self.expect_nothing_is_held()
        wait_until(lambda: not is_alive(watchdog), "the watchdog ends too")


class WatchdogLost(RecoveryTest):
    def setUp(self):
        super().setUp()
        self.quillon.may_say(WATCHDOG_LOST)

    def test_killed(self):
        first = self.watchdog()
        start = time.monotonic()
        os.kill(first, signal.SIGKILL)
        wait_until(lambda: self.flows() or self.watchdog() not in (first, None),
                   "nothing is held without a watchdog", PATIENCE)
        print(f"{self.id()}: after {time.monotonic() - start:.3f} s")
        self.await_gestures()
        self.assertNotIn(self.watchdog(), (first, None))
        self.expect_all_is_well()
        # The new one watches.
        self.quillon.may_say(CONNECTION_LOST)
        self.enter()
        start = time.monotonic()
        self.quillon.process.send_signal(signal.SIGSTOP)
        self.addCleanup(self.quillon.process.send_signal, signal.SIGCONT)
        self.await_flow(start)
        self.quillon.process.send_signal(signal.SIGCONT)
        self.await_gestures()

    def test_killed_outside_of_the_band(self):
        """Where none is needed: another one comes with the pointer."""
        self.go_out_of_band()
        first = self.watchdog()
        os.kill(first, signal.SIGKILL)
        self.quillon.wait_for_line(WATCHDOG_LOST)
        self.assertTrue(self.flows())
        self.expect_all_is_well()
        self.assertNotIn(self.watchdog(), (first, None))


class ConnectionLost(RecoveryTest):
    """Another program has the server close a connection of the program, as one does with a window
    that does not react. It takes a window, or whatever else the connection has made."""

    def test_each_of_them(self):
        watchdog = self.watchdog()
        for line in (CONNECTION_LOST, "starting again", "does not let the pointer be followed"):
            self.quillon.may_say(line)
        # The toolkit's, which is the oldest, comes last: without it there is nothing for the program
        # but to start again, and then the server gives the numbers of the others anew.
        connections = self.desktop.run(X11_PROBE, "connections", self.quillon.process.pid).split()
        killed = [connection for connection in reversed(connections) if self.kill(connection)]
        self.assertGreater(len(killed), 0)
        wait_until(lambda: not is_alive(watchdog), "its watchdog ends")
        self.await_gestures()
        self.expect_all_is_well()

    def kill(self, connection: str) -> bool:
        start = time.monotonic()
        try:
            self.desktop.run(X11_PROBE, "kill", connection)
        except Failed:
            return False
        wait_until(lambda: self.flows() or self.gesture(), "input goes somewhere", PATIENCE)
        print(f"{self.id()}: {connection}: {time.monotonic() - start:.3f} s")
        return True


if __name__ == "__main__":
    unittest.main()
