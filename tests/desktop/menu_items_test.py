#!/usr/bin/env python3
"""What the items of the status item's menu do, chosen by keyboard."""

import configparser
import unittest

from shell_desktop import ShellTest
from witnesses import QUILLON, wait_until

UPDATES, LAUNCH_AT_LOGIN, SUPPORT = 1, 2, 3  # presses of Down


class MenuItems(ShellTest):
    def setUp(self):
        super().setUp()
        self.start_shell()

    def choose(self, presses: int) -> None:
        self.shell.click_item(3)
        self.shell.await_menu()
        self.shell.press_key(*["Down"] * presses, "Return")
        self.shell.await_no_menu()

    def message(self) -> str | None:
        """The window of a message, which is the program's only one besides the hub."""
        return self.desktop.window("Quillon")

    def answer_message(self) -> None:
        window = wait_until(self.message, "a message")
        state = self.desktop.run("xprop", "-id", window, "_NET_WM_STATE")
        self.assertIn("SKIP_TASKBAR", state)
        wait_until(lambda: self.shell.hub_has_focus(), "the message has the keyboard")
        self.shell.press_key("Return")
        wait_until(lambda: self.message() is None, "the message is gone")

    def test_launch_at_login(self):
        entry = self.desktop.config / "autostart/com.pelorin.PelorinApp.desktop"
        self.choose(LAUNCH_AT_LOGIN)
        wait_until(entry.exists, "the login item")
        parser = configparser.ConfigParser(interpolation=None)
        parser.read(entry)
        self.assertEqual(parser["Desktop Entry"]["Exec"].strip('"'), str(QUILLON))
        self.choose(LAUNCH_AT_LOGIN)
        wait_until(lambda: not entry.exists(), "the login item is gone")
        self.assertIsNone(self.message())

    def test_launch_at_login_fails(self):
        folder = self.desktop.config / "autostart"
        if folder.is_dir():
            folder.rmdir()
        folder.write_text("in the way")
        self.addCleanup(folder.unlink)
        self.choose(LAUNCH_AT_LOGIN)
        self.answer_message()

    def test_updates_without_a_feed(self):
        self.choose(UPDATES)
        self.answer_message()

    def test_support_opens_the_page(self):
        bin_folder, opened = self.desktop.folder / "bin", self.desktop.folder / "opened"
        bin_folder.mkdir()
        browser = bin_folder / "xdg-open"
        browser.write_text(f'#!/bin/sh\necho "$1" >"{opened}"\n')
        browser.chmod(0o755)
        self.assertEqual(self.quillon.stop(), 0)
        self.start_shell(environment={
            "PATH": f"{bin_folder}:{self.desktop.environment.get('PATH', '/usr/bin:/bin')}"})
        self.choose(SUPPORT)
        wait_until(lambda: opened.exists() and opened.read_text().startswith("https://"), "a page")


if __name__ == "__main__":
    unittest.main()
