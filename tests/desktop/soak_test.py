#!/usr/bin/env python3
"""Thousands of times the same: nothing piles up."""

import unittest

from process_facts import private_memory
from shell_desktop import ShellTest
from witnesses import QUILLON, await_idle, wait_until

TOGGLES, LEVELS = 2000, 20_000
ALLOWED = 3 << 20  # bytes that an allocator may keep for itself


class Soak(ShellTest):
    # What is freed may otherwise be kept back, to see uses of it, where the build looks for them.
    options = {"panel": "tint2", "bus": True,
               "environment": {"ASAN_OPTIONS": "quarantine_size_mb=1:thread_local_quarantine_size_kb=64"}}

    def test_toggles(self):
        quillon = self.start_shell()
        self.toggle(100)
        before = self.memory(quillon)
        self.toggle(TOGGLES)
        grown = self.memory(quillon) - before
        print(f"{self.id()}: {grown / 1024:.0f} KiB more after {TOGGLES} toggles")
        self.assertLess(grown, ALLOWED)

    def toggle(self, times: int) -> None:
        """By clicks on the item, each when the one before has been seen to."""
        self.injector.move(*self.shell.await_item().middle)
        lines = self.quillon.lines
        for number in range(times):
            done = sum("Popover" in line for line in lines()) + 1
            self.injector.click(1)
            wait_until(lambda: sum("Popover" in line for line in lines()) >= done,
                       f"toggle {number}")
        self.assertIsNone(self.shell.hub())

    def test_levels(self):
        quillon = self.start_shell()
        self.send(1000)
        before = self.memory(quillon)
        self.send(LEVELS)
        grown = self.memory(quillon) - before
        print(f"{self.id()}: {grown / 1024:.0f} KiB more after {LEVELS} levels")
        self.assertLess(grown, ALLOWED)

    def send(self, count: int) -> None:
        percents = [str(number % 1001 / 10) for number in range(count)]
        for start in range(0, count, 1000):
            self.desktop.run(QUILLON, "show-level", *percents[start:start + 1000], limit=60)

    def memory(self, quillon) -> int:
        await_idle(quillon.process)
        return private_memory(quillon.process.pid)


if __name__ == "__main__":
    unittest.main()
