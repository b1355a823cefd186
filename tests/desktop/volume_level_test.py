#!/usr/bin/env python3
"""The volume level in the tray, watched on the screen."""

import time
import unittest

from shell_desktop import PixelWatch, ShellTest
from witnesses import QUILLON, wait_until

HOLD, FADE, INTERVAL = 1.5, 0.2, 0.09


class VolumeLevel(ShellTest):
    def setUp(self):
        super().setUp()
        self.start_shell()
        self.pixels = PixelWatch(self.desktop, self.shell.await_item())
        self.addCleanup(self.pixels.close)

    def send(self, *percents, every=10):
        """A burst, so many milliseconds apart; answers when it began and ended."""
        start = time.monotonic()
        self.desktop.run(QUILLON, "show-level", *percents, "--every", every)
        return start, time.monotonic()

    def await_icon(self):
        """Until it looks again as before."""
        wait_until(lambda: self.pixels.all()[-1][1] == 0, "the icon is back")

    def test_it_fades_in_holds_and_fades_out(self):
        start, _end = self.send(42.5)
        wait_until(self.pixels.changes, "the level")
        self.await_icon()
        changes = self.pixels.changes()
        full = max(distance for _moment, distance, _hash in changes)
        at_full = [moment for moment, distance, _hash in changes if distance == full]
        last_full = next(moment for moment, distance, _hash in changes
                         if moment > at_full[-1] and distance < full)
        appeared, gone = changes[0][0], changes[-1][0]
        print(f"{self.id()}: seen after {appeared - start:.3f} s, full after another "
              f"{at_full[0] - appeared:.3f}, fades from {last_full - appeared:.3f} to "
              f"{gone - appeared:.3f} s in {len(changes)} pictures")
        self.assertGreater(len(changes), 10)
        self.assertAlmostEqual(gone - appeared, FADE + HOLD + FADE, delta=0.15)
        self.assertAlmostEqual(gone - last_full, FADE, delta=0.08)

    def test_a_burst_is_thinned_out_and_ends_on_the_newest(self):
        self.send(10)
        wait_until(lambda: len(self.pixels.changes()) > 5, "the level")
        self.send(*range(20, 71), every=10)
        values = self.settled_pictures()
        self.send(70)  # what it ended on: nothing changes
        wait_until(self.await_icon_is_back, "the icon is back")
        moments = [moment for moment, _hash in values]
        gaps = [after - before for before, after in zip(moments[-6:], moments[-5:])]
        print(f"{self.id()}: {len(values)} pictures, {[round(gap, 3) for gap in gaps]} s apart")
        # What is seen late, on a busy machine, makes one gap longer and the next one shorter.
        for gap in gaps[:-1]:
            self.assertLess(gap, INTERVAL + 0.06)
        self.assertGreater(sum(gaps[:-1]), len(gaps[:-1]) * (INTERVAL - 0.01) - 0.02)

    def await_icon_is_back(self):
        return self.pixels.all()[-1][1] == 0

    def settled_pictures(self):
        """The pictures of the burst: those at full strength."""
        wait_until(lambda: time.monotonic() - self.pixels.all()[-1][0] > 0.3, "the burst is over")
        return [(moment, number) for moment, _distance, number in self.pixels.changes()]

    def test_a_percent_during_the_fade_out_brings_it_back(self):
        self.send(30)
        wait_until(lambda: len(self.pixels.changes()) > 3, "the level")
        full = self.await_full()
        wait_until(lambda: self.pixels.all()[-1][1] < full, "it fades out")
        self.send(30)
        wait_until(lambda: self.pixels.all()[-1][1] == full, "it is back", 0.5)
        back = self.pixels.all()[-1][0]
        self.await_icon()
        self.assertAlmostEqual(self.pixels.all()[-1][0] - back, HOLD + FADE, delta=0.15)

    def await_full(self):
        """How far the level at full strength is from the icon."""
        wait_until(lambda: time.monotonic() - self.pixels.all()[-1][0] > 0.4, "the level stands")
        return self.pixels.all()[-1][1]

    def test_a_click_restores_the_icon_and_opens_the_hub(self):
        self.send(30)
        self.await_full()
        self.shell.click_item()
        self.shell.await_hub()
        wait_until(lambda: not self.looks_like_a_level(), "the icon")
        self.send(40)
        wait_until(self.looks_like_a_level, "the level")
        self.shell.click_item()  # with the hub open, it only restores the icon
        wait_until(lambda: not self.looks_like_a_level(), "the icon")
        self.assertIsNotNone(self.shell.hub())

    def looks_like_a_level(self):
        return self.pixels.all()[-1][1] > 0

    def test_the_menu_bar_does_not_shift(self):
        before = self.shell.await_item()
        self.send(100)
        self.await_full()
        self.assertEqual(self.shell.item(), before)


if __name__ == "__main__":
    unittest.main()
