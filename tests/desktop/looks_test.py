#!/usr/bin/env python3
"""The hub looks as the desktop's settings want it, at once when they change."""

import signal
import unittest

from shell_desktop import ShellTest
from witnesses import wait_until


class Looks(ShellTest):
    def setUp(self):
        super().setUp()
        self.settings = self.desktop.folder / "xsettingsd.conf"

    def start_manager(self, theme: str):
        self.settings.write_text(f'Net/ThemeName "{theme}"\n')
        manager = self.desktop.start("xsettingsd", ["xsettingsd", "-c", self.settings])
        self.addCleanup(self.desktop.end, manager)
        return manager

    def choose(self, manager, theme: str) -> None:
        self.settings.write_text(f'Net/ThemeName "{theme}"\n')
        manager.send_signal(signal.SIGHUP)

    def ground(self) -> float:
        """How light the hub is beside its cards, 0…1."""
        place = self.shell.hub_place()
        picture = self.desktop.folder / "screen.png"
        self.desktop.screenshot(picture)
        return float(self.desktop.run(
            "convert", picture, "-crop", f"1x1+{place.x + 5}+{place.y + 120}", "-colorspace", "gray",
            "-format", "%[fx:mean]", "info:"))

    def await_ground(self, lightness: str) -> None:
        wait_until(lambda: self.ground() < 0.3 if lightness == "dark" else self.ground() > 0.9,
                   f"the hub is {lightness}")

    def test_dark_before_it_starts_and_light_while_it_runs(self):
        manager = self.start_manager("Adwaita-dark")
        self.start_shell()
        self.shell.open_hub()
        self.await_ground("dark")
        self.choose(manager, "Adwaita")
        self.await_ground("light")
        self.choose(manager, "HighContrastInverse")
        self.await_ground("dark")

    def test_a_manager_that_comes_late_and_goes(self):
        self.start_shell()
        self.shell.open_hub()
        self.await_ground("light")
        manager = self.start_manager("Greybird-dark")
        self.await_ground("dark")
        self.desktop.end(manager)
        self.await_ground("light")


if __name__ == "__main__":
    unittest.main()
