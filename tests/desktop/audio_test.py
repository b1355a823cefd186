#!/usr/bin/env python3
"""The sound service on real sound servers, judged by pactl."""

import unittest

from audio_desktop import STEP, Service, on
from sound_servers import NORM, PipeWire, PulseAudio
from witnesses import wait_until


class Steps(Service):
    def test_every_step_is_exact_in_both_directions(self):
        self.start_server()
        self.server.set_volume(0)
        device = self.tool("device")
        self.assertGreater(device, 1)
        for number in [*range(1, 401), *range(399, -1, -1)]:
            self.assertTrue(self.tool("set", device, "vmvc", number * STEP))
            self.assertAlmostEqual(self.tool("get", device, "vmvc"), number * STEP, delta=1 / NORM)
            self.expect_units(round(number * STEP * NORM))

    def test_the_balance_is_kept_down_to_silence_and_back(self):
        self.start_server()
        self.server.set_volume(60000, 20000)
        for _ in range(20):
            self.scroll(up=False, delta=0.05)
        self.assertEqual(self.server.volumes(), [0, 0])
        for _ in range(10):
            self.scroll(up=True, delta=0.05)
        left, right = self.server.volumes()
        self.assertAlmostEqual(left, NORM / 2, delta=10)
        self.assertAlmostEqual(right, left / 3, delta=1)

    def test_a_balance_that_somebody_sets_meanwhile_counts(self):
        self.start_server()
        self.server.set_volume(60000, 20000)
        self.set_volume(0)
        self.server.set_volume(30000, 30000)
        self.server.set_volume(0, 0)
        self.set_volume(0.5)
        left, right = self.server.volumes()
        self.assertAlmostEqual(left, right, delta=1)

    def test_scrolling_down_from_above_the_whole_goes_by_steps(self):
        self.start_server()
        for delta in (STEP, 10 * STEP):
            self.server.set_volume(round(1.1 * NORM))
            self.assertEqual(self.volume(), 1.0)
            before = self.server.volume()
            while before > 0.95 * NORM:
                self.assertGreaterEqual(self.scroll(up=False, delta=delta), delta * 0.2)
                after = self.server.volume()
                self.assertAlmostEqual(before - after, delta * NORM, delta=3)
                before = after
                # As scrolls are apart: so long does a step from above read as it was written.
                reading = min(after / NORM, 1.0)
                wait_until(lambda: abs(self.volume() - reading) < 2 / NORM, "it reads as it is")

    def test_scrolling_up_does_not_lead_above_the_whole(self):
        self.start_server()
        self.server.set_volume(round(0.99 * NORM))
        for _ in range(8):
            self.scroll(up=True)
        self.expect_units(NORM)

    def test_mute(self):
        self.start_server()
        device = self.tool("device")
        self.server.set_mute(True)
        self.assertEqual(self.tool("get", device, "mute"), 1)
        self.assertTrue(self.tool("set", device, "mute", 0))
        self.assertFalse(self.server.is_muted())
        self.assertTrue(self.tool("set", device, "mute", 1))
        self.assertTrue(self.server.is_muted())
        for control in ("vmvc", "volm", "mute"):
            self.assertIs(self.tool("settable", device, control), True)


class Sinks(Service):
    def test_the_default_sink_is_followed(self):
        self.start_server("speakers", "phones")
        for name in ("phones", "speakers"):
            before = self.tool("device")
            self.server.switch_to(name)
            # The server may tell others first.
            wait_until(lambda: self.tool("device") != before, "another default device", 2)
            other = {"phones": "speakers", "speakers": "phones"}[name]
            self.server.set_volume(NORM // 8, sink=other)
            self.assertTrue(self.set_volume(0.25))
            self.expect_units(NORM // 4, sink=name)
            self.expect_units(NORM // 8, sink=other)

    def test_a_sink_goes_and_another_one_is_left(self):
        self.start_server("speakers", "phones")
        device = self.tool("device")
        self.server.remove_sink("speakers")
        wait_until(lambda: self.server.default_sink() == "phones", "another default sink")
        self.assertIsNone(self.tool("get", device, "vmvc"))
        self.assertIs(self.tool("set", device, "vmvc", 0.5), False)
        self.assertIsNone(self.tool("settable", device, "vmvc"))
        # Until the server tells us, too, which one is left.
        wait_until(lambda: self.set_volume(0.5), "the volume can be set", 2)
        self.expect_units(NORM // 2, sink="phones")

    def test_the_last_sink_goes_and_another_one_comes(self):
        self.start_server()
        device = self.tool("device")
        self.server.remove_sink("speakers")
        self.assertIsNone(self.tool("get", device, "vmvc"))
        self.assertIs(self.tool("set", device, "vmvc", 0.5), False)
        if not self.server.sinks():
            self.assertIsNone(self.tool("device"))
        self.server.add_sink("phones")
        self.server.switch_to("phones")
        wait_until(lambda: self.set_volume(0.5), "the volume can be set", 2)
        self.expect_units(NORM // 2, sink="phones")


class StepsPulseAudio(on(PulseAudio, Steps)):
    pass


class StepsPipeWire(on(PipeWire, Steps)):
    pass


class SinksPulseAudio(on(PulseAudio, Sinks)):
    pass


class SinksPipeWire(on(PipeWire, Sinks)):
    pass


if __name__ == "__main__":
    unittest.main()
