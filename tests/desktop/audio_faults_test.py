#!/usr/bin/env python3
"""The sound service on sound servers that come, go and hang, and what it costs."""

import time
import unittest

from audio_desktop import Service, on
from process_facts import processor_time, wakeups
from sound_servers import NORM, PipeWire, PulseAudio
from witnesses import await_idle, wait_until

PATIENCE, PROMPTLY = 0.25, 0.1  # seconds that a call takes at most that waits, and that does not


def timed(call):
    start = time.monotonic()
    answer = call()
    return answer, time.monotonic() - start


class Faults(Service):
    def expect_return(self) -> float:
        """It works again, soon; answers after how long."""
        start = time.monotonic()
        wait_until(lambda: self.set_volume(0.5), "a volume that can be set", 1.0)
        after = time.monotonic() - start
        self.expect_units(NORM // 2)
        print(f"{self.id()}: the first call that worked ended {after * 1000:.1f} ms after the "
              f"server was back")
        return after

    def test_a_server_that_starts_later_is_found(self):
        answer, taken = timed(lambda: self.tool("device"))
        self.assertIsNone(answer)
        self.assertLess(taken, PROMPTLY)
        self.start_server()
        self.expect_return()

    def test_a_server_that_is_killed_and_comes_back_is_found(self):
        self.start_server()
        for _ in range(3):
            self.assertTrue(self.set_volume(0.25))
            self.server.kill()
            answer, taken = timed(lambda: self.tool("device"))
            self.assertIsNone(answer)
            self.assertLess(taken, PROMPTLY)
            self.server.start()
            self.expect_return()

    def test_a_server_that_hangs_holds_up_one_call_only_until_it_goes_on(self):
        self.start_server()
        device = self.tool("device")
        for _ in range(2):
            self.server.stop()
            answer, taken = timed(lambda: self.tool("get", device, "vmvc"))
            self.assertIsNone(answer)
            self.assertLess(taken, PATIENCE + PROMPTLY)
            for _ in range(50):
                answer, taken = timed(lambda: self.tool("set", device, "vmvc", 0.1))
                self.assertIs(answer, False)
                self.assertLess(taken, PROMPTLY)
            self.server.go_on()
            self.expect_return()

    def test_the_end_of_the_process_does_not_wait_for_a_server_that_hangs(self):
        self.start_server()
        self.assertTrue(self.set_volume(0.25))
        self.server.stop()
        self.assertIsNone(self.tool("device"))
        self.tool.process.stdin.close()
        status, taken = timed(lambda: self.tool.process.wait(5))
        self.assertEqual(status, 0)
        self.assertLess(taken, PROMPTLY)

    def test_nothing_wakes_it_while_nothing_happens(self):
        for state in ("no server", "a server", "a server again", "none again"):
            if state == "a server":
                self.start_server()
            elif state == "a server again":
                self.server.kill()
                self.server.start()
            elif state == "none again":
                self.server.kill()
            self.assertEqual(self.set_volume(0.5), state in ("a server", "a server again"))
            await_idle(self.tool.process)
            pid, start = self.tool.process.pid, time.monotonic()
            before = wakeups(pid), processor_time(pid)
            wait_until(lambda: time.monotonic() - start > 3, "some seconds", 5)
            self.assertEqual((wakeups(pid), processor_time(pid)), before, state)

    def test_calls_are_quick(self):
        self.start_server()
        self.assertTrue(self.set_volume(0.25))
        for name, times in self.tool("measure", 1000).items():
            times.sort()
            print(f"{self.id()}: {name}: median {times[500]:.0f} us, p99 {times[990]:.0f} us, "
                  f"longest {times[-1]:.0f} us")
            self.assertLess(times[500], 5000)


class FaultsPulseAudio(on(PulseAudio, Faults)):
    pass


class FaultsPipeWire(on(PipeWire, Faults)):
    pass


if __name__ == "__main__":
    unittest.main()
