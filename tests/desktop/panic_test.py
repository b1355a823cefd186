#!/usr/bin/env python3
"""The chord that gives all input back, pressed by an ordinary keyboard."""

import json
import unittest

from quillon_desktop import BAND, ClientTest
from witnesses import SCROLLS, await_wheel, wheel_is_free

CHORD = "ctrl+super+Escape"


class Panic(ClientTest):
    def press_chord(self) -> None:
        self.desktop.run("xdotool", "key", CHORD)

    def expect_scrolls_pass(self) -> None:
        for client, y in self.clients:
            self.injector.move(BAND // 2, y)
            client.forget()
            self.injector.scroll("up", 8)
            self.assertEqual(client.received(), [SCROLLS["up"]] * 8)

    def test_everything_is_let_go_of_until_the_next_start(self):
        quillon = self.start_quillon("Left")
        self.go_into_band(BAND // 2, 200)
        self.press_chord()
        quillon.wait_for_line("Ctrl+Super+Escape")
        await_wheel(self.desktop, "free")
        self.expect_scrolls_pass()
        self.expect_no_more_changes(quillon)

        self.run_quillon()
        self.go_into_band(BAND // 2, 200)

    def test_settings_stay(self):
        quillon = self.start_quillon("Left", Tool4EnabledState=True)
        self.go_into_band(BAND // 2, 200)
        self.press_chord()
        quillon.wait_for_line("Ctrl+Super+Escape")
        self.assertEqual(quillon.stop(), 0)
        stored = self.desktop.config / "com.pelorin.PelorinApp/defaults.json"
        settings = json.loads(stored.read_text())
        for key in ("Tool4LeftEdge", "Tool4EnabledState", "Tool5EnabledState",
                    "MediaControlEnabled"):
            self.assertIs(settings[key], True, key)

    def test_with_caps_and_num_lock_on(self):
        self.desktop.run("xdotool", "key", "Caps_Lock", "key", "Num_Lock")
        self.addCleanup(self.desktop.run, "xdotool", "key", "Caps_Lock", "key", "Num_Lock")
        quillon = self.start_quillon("Left")
        self.go_into_band(BAND // 2, 200)
        self.press_chord()
        quillon.wait_for_line("Ctrl+Super+Escape")
        await_wheel(self.desktop, "free")

    def test_other_keys_stay_where_they_are(self):
        client, y = self.clients[0]
        self.start_quillon("Left")
        self.go_into_band(BAND // 2, y)
        self.injector.click(1)
        client.forget()
        for keys in ("Escape", "ctrl+Escape", "super+Escape"):
            self.desktop.run("xdotool", "key", keys)
        received = [line for line in client.received() if line == "key Escape"]
        self.assertEqual(len(received), 3)
        self.assertFalse(wheel_is_free(self.desktop))


if __name__ == "__main__":
    unittest.main()
