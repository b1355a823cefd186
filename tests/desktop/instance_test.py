#!/usr/bin/env python3
"""Started again, the program shows the hub of the one that runs."""

import signal
import subprocess
import unittest

from process_facts import children
from shell_desktop import ShellTest
from witnesses import X11_PROBE, wait_until


class SecondStart(ShellTest):
    def test_it_shows_the_hub_and_never_hides_it(self):
        first = self.start_shell()
        for _ in range(3):
            second = self.run_quillon()
            self.assertEqual(second.wait(), 0)
            wait_until(self.shell.hub_has_focus, "the hub is open and has the keyboard's focus")
        self.assertTrue(first.is_running())
        self.shell.click_item()
        self.shell.await_no_hub()

    def test_many_at_once(self):
        self.start_shell()
        others = [self.run_quillon() for _ in range(5)]
        for other in others:
            self.assertEqual(other.wait(10), 0)
        self.shell.await_hub()

    def test_two_that_start_together_are_one(self):
        starts = [self.run_quillon() for _ in range(2)]
        wait_until(lambda: any(not start.is_running() for start in starts), "one has ended")
        ended = next(start for start in starts if not start.is_running())
        self.assertEqual(ended.wait(), 0)
        self.shell.await_hub()
        self.assertEqual(sum(start.is_running() for start in starts), 1)

    def test_one_that_hangs_is_named(self):
        first = self.start_shell()
        first.process.send_signal(signal.SIGSTOP)
        self.addCleanup(first.process.send_signal, signal.SIGCONT)
        second = self.run_quillon(stderr=subprocess.STDOUT)
        second.may_say("already running but does not answer")
        self.assertEqual(second.wait(15), 1)
        self.assertTrue(any("does not answer" in line for line in second.lines()))


class NoBus(ShellTest):
    options = {"panel": "tint2"}

    def test_everything_works_without(self):
        quillon = self.start_shell()
        self.shell.open_hub()
        self.shell.click_item()
        self.shell.await_no_hub()
        # Nor has it started a bus of its own.
        self.assertEqual([name for name in children(quillon.process.pid).values()
                          if "dbus" in name], [])


class Restarted(ShellTest):
    """Somebody has the server kill the hub's window."""

    def test_it_is_back_and_still_the_only_one(self):
        quillon = self.start_shell()
        for line in ("starting again", "The X server closed"):
            quillon.may_say(line)
        self.shell.open_hub()
        self.desktop.run(X11_PROBE, "kill", str(int(self.shell.hub(), 16)))
        wait_until(lambda: sum("Setup complete" in line for line in quillon.lines()) == 2,
                   "it has started again")
        self.assertEqual(self.run_quillon().wait(), 0)
        wait_until(self.shell.hub_has_focus, "the hub is open and has the keyboard's focus")
        self.assertTrue(quillon.is_running())


class BusDies(ShellTest):
    def test_it_goes_on(self):
        quillon = self.start_shell()
        quillon.may_say("The session bus is gone")
        self.desktop.bus.send_signal(signal.SIGKILL)
        self.desktop.bus.wait()
        for _ in range(2):
            self.shell.open_hub()
            self.shell.click_item()
            self.shell.await_no_hub()
        self.assertTrue(quillon.is_running())


if __name__ == "__main__":
    unittest.main()
