#!/usr/bin/env python3
"""What an assistive technology finds of the program."""

import unittest

from screen_reader import ALWAYS_ON, READER, start_accessibility_bus
from shell_desktop import SYSTEM_PYTHON, ShellTest
from shell_view import TITLE
from witnesses import Failed, Lines, wait_until

PROGRAM = "Quillon"


class Accessibility(ShellTest):
    options = {"panel": "tint2", "bus": True, "environment": ALWAYS_ON}

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        start_accessibility_bus(cls.desktop)

    def tree(self):
        """(depth, role, name, states) of everything, or nothing while it cannot be read."""
        try:
            text = self.desktop.run(SYSTEM_PYTHON, "-B", "-W", "ignore", READER, "tree", PROGRAM)
        except Failed:
            return []
        lines = (line.split("\t") for line in text.splitlines() if line.count("\t") == 3)
        return [(int(depth), role, name, set(states.split(","))) for depth, role, name, states
                in lines]

    def test_the_hub_and_its_title(self):
        self.start_shell()
        self.shell.open_hub()

        def found():
            tree = self.tree()
            windows = [states for depth, _role, name, states in tree
                       if depth == 1 and name == TITLE]
            titles = [states for depth, role, name, states in tree
                      if depth > 1 and name == TITLE and role in ("heading", "label", "static")]
            return (any("showing" in states for states in windows)
                    and any("showing" in states for states in titles))
        wait_until(found, f"the hub's window and title in {self.tree()}")

    def test_the_menu_can_be_walked(self):
        self.start_shell()
        watcher = self.desktop.start(
            "reader", [SYSTEM_PYTHON, "-B", "-W", "ignore", READER, "watch", PROGRAM])
        self.addCleanup(lambda: self.desktop.end(watcher))
        lines = Lines(self.desktop, "reader")
        self.desktop.wait_for(watcher, lambda: "ready" in lines.all(), "the reader")
        self.shell.click_item(3)
        self.shell.await_menu()
        for title in ("Check for Updates...", "Launch at Login", "Support", "Quit"):
            lines.forget()
            self.shell.press_key("Down")
            wait_until(lambda: any(title in line for line in lines.new()),
                       f"{title} is announced, not {lines.new()}")
        self.shell.press_key("Escape")
        self.shell.await_no_menu()


if __name__ == "__main__":
    unittest.main()
