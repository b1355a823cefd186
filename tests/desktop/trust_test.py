#!/usr/bin/env python3
"""A server without synthetic input denies trust: nothing is held, and the rest goes on."""

import json
import time
import unittest

from process_facts import processor_time
from quillon_desktop import BAND, DesktopTest
from witnesses import QUILLON, wait_until, wheel_is_free, write_settings
from x_servers import expect_gestures_on_a_new_server, free_display, stop_server

DENIES_TRUST = ("-extension", "XTEST")
POLL = 2  # seconds between two questions for trust
DENIAL = "does not grant input control"


class TrustDenied(DesktopTest):
    options = {"server_args": DENIES_TRUST}

    def test_it_says_so_once_and_holds_nothing(self):
        quillon = self.start_quillon("Left")
        quillon.wait_for_line(DENIAL)
        self.desktop.run("xdotool", "mousemove", BAND // 2, 400)
        self.assertEqual(self.desktop.pointer(), (BAND // 2, 400))
        start, used = time.monotonic(), processor_time(quillon.process.pid)

        def asked_again():
            self.assertTrue(wheel_is_free(self.desktop))
            return time.monotonic() - start > 3 * POLL
        wait_until(asked_again, "it has asked again and again")
        self.assertLess(processor_time(quillon.process.pid) - used, 3 * POLL / 10)
        self.assertEqual(sum(DENIAL in line for line in quillon.lines()), 1)

    def test_settings_can_be_changed_meanwhile(self):
        path = write_settings(self.desktop, {"Tool4LeftEdge": True})
        quillon = self.run_quillon()
        quillon.wait_for_line(DENIAL)
        self.desktop.run(QUILLON, "defaults", "write", "Tool4EdgeSensitivity", "25")
        settings = json.loads(path.read_text())
        self.assertIs(settings["Tool4LeftEdge"], True)
        self.assertEqual(settings["Tool4EdgeSensitivity"], 25)
        self.assertTrue(quillon.is_running())


class TrustDeniedServerGone(DesktopTest):
    options = {"server_args": [free_display(), *DENIES_TRUST]}

    def test_it_ends_and_another_one_serves(self):
        quillon = self.start_quillon("Left")
        quillon.wait_for_line(DENIAL)
        quillon.wait_for_line("Setup complete")
        stop_server(self.desktop)
        quillon.wait_for_line("The X server is gone")
        self.assertEqual(quillon.wait(), 1)
        another = self.run_quillon()
        another.wait_for_line("No X server to be reached")
        expect_gestures_on_a_new_server(another, self.desktop)


if __name__ == "__main__":
    unittest.main()
