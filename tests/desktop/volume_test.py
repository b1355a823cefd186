#!/usr/bin/env python3
"""Scrolling at the edge moves the volume, as the sound server tells it."""

import time
import unittest

from key_grabber import VOLUME_DOWN, VOLUME_UP, KeyGrabber
from quillon_desktop import HEIGHT, WIDTH
from sound_servers import NORM, PipeWire, PulseAudio
from volume_desktop import INTERVAL, VolumeTest
from witnesses import await_idle, wait_until


class VolumePulseAudio(VolumeTest):
    server_type = PulseAudio

    def test_each_scroll_is_one_step(self):
        self.start_sound()
        for steps in (1, 4, 10):
            with self.subTest(steps=steps):
                self.start_tool(steps)
                self.go_to_edge()
                for direction in ("up", "up", "down", "right", "left"):
                    self.expect_step(direction, steps)
                self.assertEqual(self.quillon.stop(), 0)

    def test_the_program_under_the_pointer_scrolls_too(self):
        self.start_sound()
        self.start_tool()
        self.go_to_edge()
        for direction in ("up", "down", "up"):
            self.expect_step(direction, 1)
        self.expect_scrolls(["up", "down", "up"])

    def expect_scrolls(self, directions) -> None:
        """Of the program at the edge."""
        lines = [line for line in self.gtk.received() if line.startswith("scroll")]
        self.assertEqual(lines, ["scroll 0 1" if direction == "up" else "scroll 0 -1"
                                 for direction in directions])

    def test_only_at_the_edge(self):
        self.start_sound()
        self.start_tool()
        self.injector.move(WIDTH // 2, HEIGHT // 4)
        self.turn("up")
        await_idle(self.quillon.process)  # where the pointer is counts when it is heard of
        self.go_to_edge()
        before = self.sound.volume()
        self.expect_step("down", 1)  # the first that counted
        self.assertAlmostEqual(self.sound.volume(), before - NORM / 400, delta=1)

    def test_what_comes_too_soon_does_not_count(self):
        self.start_sound(0)
        self.start_tool(10)
        self.go_to_edge()
        start = time.monotonic()
        self.injector.scroll("up", 30)
        await_idle(self.quillon.process)
        most = 1 + int((time.monotonic() - start) / INTERVAL)
        steps = self.sound.volume() / NORM * 40
        self.assertAlmostEqual(steps, round(steps), delta=0.01)
        self.assertTrue(1 <= round(steps) <= most, f"{steps} steps, at most {most}")
        self.expect_step("up", 10)

    def test_limits(self):
        self.start_sound(NORM - 100)
        self.start_tool(10)
        self.go_to_edge()
        self.turn("up")
        self.expect_volume(NORM)
        self.turn("up")
        self.expect_step("down", 10)  # the step before has left it where it was
        self.expect_volume(NORM * 0.975)
        self.sound.set_volume(100)
        self.turn("down")
        self.expect_volume(0)
        self.turn("down")
        self.expect_step("up", 10)

    def test_mute(self):
        self.start_sound()
        self.start_tool()
        self.go_to_edge()
        self.sound.set_mute(True)
        self.expect_step("down", 1)
        self.assertTrue(self.sound.is_muted())
        self.expect_step("up", 1)
        self.assertFalse(self.sound.is_muted())

    def test_follows_the_default_sink(self):
        self.sound.start("speakers", "headphones")
        self.addCleanup(self.sound.kill)
        self.sound.set_volume(NORM // 2, sink="speakers")
        self.sound.set_volume(NORM // 4, sink="headphones")
        self.start_tool(4)
        self.go_to_edge()
        self.expect_step("up", 4)
        self.sound.switch_to("headphones")
        self.expect_step("up", 4)
        self.assertAlmostEqual(self.sound.volume("headphones"), NORM * 0.26, delta=1)
        self.assertAlmostEqual(self.sound.volume("speakers"), NORM * 0.51, delta=1)
        self.sound.remove_sink("headphones")
        self.sound.switch_to("speakers")
        self.expect_step("down", 4)
        self.assertAlmostEqual(self.sound.volume("speakers"), NORM * 0.5, delta=1)

    def test_the_server_comes_back(self):
        self.start_sound()
        self.start_tool(4)
        self.go_to_edge()
        self.expect_step("up", 4)
        for end in (self.sound.kill, self.sound.end):
            end()
            self.turn("up")
            self.sound.start()
            self.sound.set_volume(NORM // 2)
            back = time.monotonic()
            before = self.sound.volume()
            while self.sound.volume() == before:  # as a hand would try
                self.turn("up")
                self.assertLess(time.monotonic() - back, 1)
            print(f"{self.id()}: works again {time.monotonic() - back:.2f} s after the server")
            self.expect_step("down", 4)

    def test_a_server_that_hangs_does_not_hang_the_program(self):
        self.start_sound()
        self.start_tool(4)
        self.go_to_edge()
        self.expect_step("up", 4)
        self.sound.stop()
        for _ in range(5):
            self.turn("up")
        self.expect_scrolls(["up"] * 6)
        self.sound.go_on()
        before = self.sound.volume()
        wait_until(lambda: self.turn("up") or self.sound.volume() > before, "it works again")


class VolumePipeWire(VolumePulseAudio):
    server_type = PipeWire


class VolumeWithoutServer(VolumeTest):
    def test_the_keys_are_pressed_instead(self):
        grabber = KeyGrabber(self.desktop, VOLUME_UP, VOLUME_DOWN)
        self.start_tool(1)
        self.go_to_edge()
        self.turn("up")
        grabber.expect(VOLUME_UP)
        self.assertEqual(self.quillon.stop(), 0)
        self.start_tool(8)
        self.turn("up")
        grabber.expect(*[VOLUME_UP] * 5)
        # What cannot be read is silent, and silence does not become softer.
        self.turn("down")
        self.turn("up")
        grabber.expect(*[VOLUME_UP] * 5)

    def test_a_server_that_comes_later_is_used(self):
        self.start_tool(4)
        self.go_to_edge()
        self.turn("up")
        self.start_sound()
        before = self.sound.volume()
        wait_until(lambda: self.turn("up") or self.sound.volume() > before, "it works", 2)
        self.expect_step("down", 4)


class VolumeAndDesktops(VolumeTest):
    """Both tools have the right edge."""

    def test_what_the_desktop_switcher_consumes_leaves_the_volume_alone(self):
        self.start_sound()
        self.start_tool(10, Tool4RightEdge=True, Tool4ScrollSensitivity=1.0,
                        Tool4EdgeSensitivity=20.0)
        self.history.go_to(1)
        self.go_into_band(WIDTH - 5, HEIGHT // 4)
        before = self.sound.volume()
        self.turn("down")
        self.expect_changes(1, 2)
        # Beside its band, but in that of the volume.
        self.go_out_of_band(WIDTH - 30, HEIGHT // 4)
        self.expect_step("up", 10)
        self.assertAlmostEqual(self.sound.volume(), before + NORM / 40, delta=1)
        self.go_into_band(WIDTH - 5, HEIGHT // 4)
        self.turn("up")
        self.expect_changes(1, 1)
        self.go_out_of_band()
        self.assertAlmostEqual(self.sound.volume(), before + NORM / 40, delta=1)


if __name__ == "__main__":
    unittest.main()
