#!/usr/bin/env python3
"""A server without synthetic input denies trust: nothing is held, the rest goes on, and the
program asks again and again."""

import json
import time
import unittest

from process_facts import processor_time
from quillon_desktop import BAND, DesktopTest
from witnesses import QUILLON, wheel_is_free, write_settings
from x_servers import Relay, expect_gestures_on_a_new_server, free_display, stop_server

DENIES_TRUST = ("-extension", "XTEST")
DENIAL = "does not grant input control"


class TrustDenied(DesktopTest):
    options = {"server_args": DENIES_TRUST}

    def test_it_says_so_once_and_holds_nothing_and_asks_again(self):
        relay = Relay(self.desktop.display)
        self.addCleanup(relay.close)
        quillon = self.start_quillon("Left", environment={"DISPLAY": relay.display})
        quillon.wait_for_line(DENIAL)
        self.desktop.run("xdotool", "mousemove", BAND // 2, 400)
        self.assertEqual(self.desktop.pointer(), (BAND // 2, 400))

        start, used, asked = time.monotonic(), processor_time(quillon.process.pid), len(relay.times)
        relay.await_connections(2, limit=10, meanwhile=lambda: self.assertTrue(
            wheel_is_free(self.desktop)))
        passed = time.monotonic() - start
        self.assertLess(len(relay.times) - asked, passed / 2 + 2)
        self.assertLess(processor_time(quillon.process.pid) - used, passed / 10)
        self.assertTrue(quillon.is_running())
        self.assertEqual([line for line in quillon.lines() if "launched" not in line],
                         [line for line in quillon.lines() if DENIAL in line][:1])

    def test_settings_can_be_changed_meanwhile(self):
        path = write_settings(self.desktop, {"Tool4LeftEdge": True})
        quillon = self.run_quillon()
        quillon.wait_for_line(DENIAL)
        self.desktop.run(QUILLON, "defaults", "write", "Tool4EdgeSensitivity", "25")
        self.assertEqual(json.loads(path.read_text()),
                         {"Tool4LeftEdge": True, "Tool4EdgeSensitivity": 25})
        self.assertTrue(quillon.is_running())


class TrustArrives(DesktopTest):
    options = {"server_args": [free_display(), *DENIES_TRUST]}

    def test_with_another_server_of_the_same_name(self):
        quillon = self.start_quillon("Left")
        quillon.wait_for_line(DENIAL)
        stop_server(self.desktop)
        expect_gestures_on_a_new_server(quillon, self.desktop)


if __name__ == "__main__":
    unittest.main()
