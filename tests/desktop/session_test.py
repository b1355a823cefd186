#!/usr/bin/env python3
"""How the program starts and ends, with what settings, and what it answers on the command line."""

import json
import os
import pathlib
import random
import shutil
import signal
import subprocess
import tempfile
import threading
import unittest

from quillon_desktop import BAND, DesktopTest, GestureTest
from witnesses import QUILLON, await_idle, wheel_is_free


class Endings(DesktopTest):
    def test_asked_to_end(self):
        for number in (signal.SIGTERM, signal.SIGINT, signal.SIGHUP):
            quillon = self.start_quillon("Left")
            quillon.wait_for_line("launched")
            self.assertEqual(quillon.stop(number), 0)

    def test_reader_of_the_diagnostics_goes_away(self):
        read_end, write_end = os.pipe()
        quillon = self.run_quillon(stdout=write_end)
        os.close(write_end)
        os.close(read_end)
        await_idle(quillon.process)
        self.assertEqual(quillon.stop(), 0)

    def test_wayland_is_named(self):
        quillon = self.start_quillon(environment={"WAYLAND_DISPLAY": "wayland-0"})
        quillon.wait_for_line("Wayland session")


class EndingInMidGesture(GestureTest):
    def test_asked_to_end_while_scrolling(self):
        moments = random.Random(7)
        for _ in range(15):
            quillon = self.start_quillon("Left", Tool4ScrollSensitivity=1)
            self.go_into_band(BAND // 2, 300)
            scrolling = threading.Thread(target=self.scroll_back_and_forth)
            scrolling.start()
            try:
                quillon.process.wait(moments.uniform(0.001, 0.1))
            except subprocess.TimeoutExpired:
                pass
            self.assertEqual(quillon.stop(), 0)
            scrolling.join()

    def scroll_back_and_forth(self):
        for _ in range(30):
            self.injector.scroll("up", 1)
            self.injector.scroll("down", 1)


class EndingsWhileBusy(GestureTest):
    def test_the_window_manager_hangs(self):
        """One move waits for it and others wait for that one; the end waits for none of these."""
        manager = self.desktop.window_manager
        for number in (signal.SIGTERM, signal.SIGINT):
            self.history.go_to(2)
            quillon = self.start_quillon("Left")
            quillon.may_say("did not switch to desktop")
            self.go_into_band(BAND, 400)
            manager.send_signal(signal.SIGSTOP)
            self.addCleanup(manager.send_signal, signal.SIGCONT)
            self.injector.scroll("up", 80)
            await_idle(quillon.process)
            self.assertEqual(quillon.stop(number), 0)
            manager.send_signal(signal.SIGCONT)


class Settings(GestureTest):
    def run_with(self, write) -> tuple:
        folder = self.desktop.config / "com.pelorin.PelorinApp"
        folder.mkdir(exist_ok=True)
        write(folder / "defaults.json")
        quillon = self.run_quillon()
        quillon.wait_for_line("launched")
        return quillon, folder

    def test_damaged_file_is_survived_and_kept(self):
        damaged = '{"Tool4LeftEdge": true, "Tool4E'
        quillon, folder = self.run_with(lambda file: file.write_text(damaged))
        quillon.wait_for_line("defaults.json")
        self.expect_nothing_armed(quillon)
        self.desktop.run(QUILLON, "defaults", "write", "Tool4LeftEdge", "true")
        self.assertEqual((folder / "defaults.json.damaged").read_text(), damaged)
        self.assertIs(json.loads((folder / "defaults.json").read_text())["Tool4LeftEdge"], True)

    def test_unreadable_file_is_survived(self):
        folder = self.desktop.config / "com.pelorin.PelorinApp"
        shutil.rmtree(folder, ignore_errors=True)
        # Even an administrator, who may read every file, cannot read a folder as one.
        quillon, _ = self.run_with(lambda file: file.mkdir(parents=True))
        self.addCleanup(shutil.rmtree, folder)
        quillon.wait_for_line("defaults.json")
        self.expect_nothing_armed(quillon)

    def expect_nothing_armed(self, quillon) -> None:
        self.injector.move(0, 300)
        await_idle(quillon.process)
        self.assertTrue(wheel_is_free(self.desktop))

    def test_wrong_type_costs_one_setting(self):
        text = '{"Tool4LeftEdge": true, "Tool4EdgeSensitivity": "wide"}'
        quillon, _ = self.run_with(lambda file: file.write_text(text))
        quillon.wait_for_line("Tool4EdgeSensitivity")
        self.go_into_band(BAND, 300)
        self.go_out_of_band(BAND + 1, 300)


class CommandLine(unittest.TestCase):
    def run_quillon(self, *arguments):
        with tempfile.TemporaryDirectory() as folder:
            return subprocess.run([QUILLON, *arguments], capture_output=True, text=True, timeout=20,
                                  env=os.environ | {"XDG_CONFIG_HOME": folder})

    def test_version_and_help(self):
        self.assertRegex(self.run_quillon("--version").stdout, r"^quillon \d+\.\d+\.\d+\n$")
        self.assertIn("replay", self.run_quillon("--help").stdout)

    def test_unknown_option(self):
        result = self.run_quillon("--frobnicate")
        self.assertEqual(result.returncode, 2)
        self.assertIn("--frobnicate", result.stderr)
        self.assertIn("--help", result.stderr)

    def test_defaults(self):
        self.assertEqual(self.run_quillon("defaults", "read", "Tool4LeftEdge").returncode, 1)
        self.assertEqual(self.run_quillon("defaults", "write", "Key", "{}").returncode, 2)

    def test_replay_says_where(self):
        with tempfile.TemporaryDirectory() as folder:
            trace = pathlib.Path(folder) / "bad.trace"
            trace.write_text("0 pointer 1 1\n5 wheal 1\n")
            result = self.run_quillon("replay", trace)
        self.assertEqual(result.returncode, 2)
        self.assertIn("bad.trace:2:3:", result.stderr)
        self.assertIn("wheal", result.stderr)


if __name__ == "__main__":
    unittest.main()
