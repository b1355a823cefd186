#!/usr/bin/env python3
"""Without an X server the program waits for one; when the one that it had is gone, it ends."""

import signal
import time
import unittest

from quillon_desktop import BAND, DesktopTest, ProgramTest
from witnesses import Injector, PrivateDesktop, await_idle, await_wheel, write_settings
from x_servers import Relay, expect_gestures_on_a_new_server, free_display, stop_server

NO_SERVER = "No X server to be reached"
SERVER_GONE = "The X server is gone"


class ServerGone(ProgramTest):
    def setUp(self):
        super().setUp()
        # What a test ends is its own, and so is the name: another server may not answer to it.
        self.desktop = self.enterContext(PrivateDesktop(window_manager=None,
                                                        server_args=[free_display()]))

    def expect_end_after(self, number: int, quillon) -> None:
        start = time.monotonic()
        self.desktop.server.send_signal(number)
        quillon.wait_for_line(SERVER_GONE, limit=5)
        self.assertEqual(quillon.wait(limit=5), 1)
        print(f"{self.id()}: ended {time.monotonic() - start:.2f} s after the server was signalled")
        self.assertEqual(sum(SERVER_GONE in line for line in quillon.lines()), 1)

    def test_killed_while_the_wheel_is_held(self):
        quillon = self.start_quillon("Left")
        Injector(self.desktop).move(BAND // 2, 400)
        await_wheel(self.desktop, "taken")
        self.expect_end_after(signal.SIGKILL, quillon)

    def test_asked_to_end_while_the_wheel_is_held(self):
        quillon = self.start_quillon("Left")
        Injector(self.desktop).move(BAND // 2, 400)
        await_wheel(self.desktop, "taken")
        self.expect_end_after(signal.SIGTERM, quillon)

    def test_killed_while_nothing_is_armed(self):
        quillon = self.start_quillon()
        quillon.wait_for_line("launched")
        await_idle(quillon.process)
        self.expect_end_after(signal.SIGKILL, quillon)


class NoServer(DesktopTest):
    options = {"server_args": [free_display()]}

    def test_no_display_is_named(self):
        write_settings(self.desktop, {"Tool4LeftEdge": True})
        environment = dict(self.desktop.environment)
        del environment["DISPLAY"]
        quillon = self.run_quillon(env=environment)
        quillon.wait_for_line(NO_SERVER)
        await_idle(quillon.process)

    def test_it_asks_again_and_says_so_once(self):
        relay = Relay()
        self.addCleanup(relay.close)
        quillon = self.start_quillon("Left", environment={"DISPLAY": relay.display})
        quillon.wait_for_line(NO_SERVER)
        start, asked = time.monotonic(), len(relay.times)
        relay.await_connections(2, limit=10)
        self.assertLess(len(relay.times) - asked, (time.monotonic() - start) / 2 + 2)
        self.assertEqual(sum(NO_SERVER in line for line in quillon.lines()), 1)

    def test_a_server_appears(self):
        stop_server(self.desktop)
        quillon = self.start_quillon("Left")
        quillon.wait_for_line(NO_SERVER)
        expect_gestures_on_a_new_server(quillon, self.desktop)


if __name__ == "__main__":
    unittest.main()
