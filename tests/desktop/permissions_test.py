#!/usr/bin/env python3
"""On a server that grants no input: what the screens say, and where they lead."""

import unittest

from quillon_desktop import DesktopTest
from screen_reader import ALWAYS_ON, ScreenReader, start_accessibility_bus
from trust_test import DENIAL, DENIES_TRUST
from witnesses import QUILLON, ask_until, wait_until

BANNER = "Accessibility permission is required for Window+, Trackpad+, Media+ and 3 more."
PAGE = "Permissions of Quillon"


class Permissions(DesktopTest):
    options = {"server_args": DENIES_TRUST, "bus": True, "panel": "tint2",
               "environment": ALWAYS_ON}

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        start_accessibility_bus(cls.desktop)

    def setUp(self):
        quillon = self.start_quillon()
        quillon.wait_for_line(DENIAL)
        quillon.wait_for_line("Setup complete!")
        ask_until(lambda: self.desktop.run(QUILLON, "show"),
                  lambda: self.desktop.window("Quillon"), "the hub is open")
        self.reader = ScreenReader(self.desktop, "Quillon")

    def test_the_banner_leads_to_a_page_that_says_what_to_do(self):
        wait_until(lambda: any(BANNER in thing.name for thing in self.reader.things()), BANNER)
        self.reader.press("push button", "Open System Settings")
        wait_until(lambda: self.desktop.window(PAGE), "the page")
        said = wait_until(lambda: "\n".join(thing.name for thing in self.reader.things()), "texts")
        self.assertIn("Programs may not send input (XTEST is off)", said)
        self.assertNotIn("XInput 2.1", said)
        self.reader.press("push button", "Close")
        wait_until(lambda: not self.desktop.window(PAGE), "the page is closed")
        self.reader.press("push button", "Open System Settings")
        wait_until(lambda: self.desktop.window(PAGE), "the page, once more")

    def test_each_tool_says_so_and_can_be_set_all_the_same(self):
        for tool in ("Window+", "Media+", "Desktop+", "Volume+", "Trackpad+", "Scroll+"):
            self.reader.press("push button", "Customize", tool)
            wait_until(lambda: self.reader.shows("label", "Permission required"), tool)
            if tool == "Desktop+":
                edge = self.reader.find("check box", "Top edge")
                self.reader.act(edge, "Toggle")
                wait_until(lambda: self.reader.find("check box", "Top edge").is_on, "armed")
            self.reader.press("push button", "Back")


if __name__ == "__main__":
    unittest.main()
