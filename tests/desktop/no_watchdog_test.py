#!/usr/bin/env python3
"""Without its watchdog the program holds no device with scroll axes: nobody could give it back."""

import shutil
import unittest

from device_desktop import CENTRE, SCROLLERS, DeviceTest, total
from devices import await_taken, taken_devices
from quillon_desktop import BAND, GestureTest
from witnesses import QUILLON, await_idle, wheel_is_free, write_settings

WATCHDOG = QUILLON.parent / "quillon-watchdog"


def start_alone(test):
    """The program in a folder of its own."""
    folder = test.desktop.folder / "alone"
    folder.mkdir()
    test.addCleanup(shutil.rmtree, folder)
    for file in (QUILLON, QUILLON.parent / "Info.json"):
        shutil.copy(file, folder)
    write_settings(test.desktop, {"Tool4LeftEdge": True})
    quillon = test.run_quillon(program=folder / QUILLON.name, env=test.desktop.environment)
    quillon.wait_for_line("launched")
    return quillon


class DevicesWithoutWatchdog(DeviceTest):
    def scroll_in_the_band(self) -> None:
        for name, place in CENTRE.items():
            self.go_to(BAND // 2, place[1])
            if self.quillon:
                self.quillon.wait_for_line("quillon-watchdog does not start")
                await_idle(self.quillon.process)
                self.assertEqual(taken_devices(self.desktop), set())
                self.assertTrue(wheel_is_free(self.desktop), "it would catch the devices' scrolls")
            self.take_up(self.mouse)
            self.scroll(self.mouse, "down", 8)
            self.take_up(self.touchpad)
            self.scroll(self.touchpad, "up", 32, part=1 / 8)

    def test_nothing_is_held_and_it_says_so_once(self):
        without = self.listen(self.scroll_in_the_band)
        self.quillon = start_alone(self)
        self.addCleanup(setattr, self, "quillon", None)
        received = self.listen(self.scroll_in_the_band)
        self.assertEqual({name: total(lines) for name, lines in received.items()},
                         {name: total(lines) for name, lines in without.items()})
        self.assertEqual(sum("watchdog" in line for line in self.quillon.lines()), 1)
        self.expect_no_more_changes(self.quillon)

    def test_works_as_soon_as_there_is_one(self):
        self.quillon = start_alone(self)
        self.addCleanup(setattr, self, "quillon", None)
        self.go_to(BAND // 2, CENTRE["GTK 3"][1])
        self.quillon.wait_for_line("quillon-watchdog does not start")
        shutil.copy(WATCHDOG, self.desktop.folder / "alone")
        self.quillon.may_say("The watchdog runs again")

        def moves_on():
            self.mouse.move(0, 1)
            return taken_devices(self.desktop) == set(SCROLLERS)
        self.desktop.wait_for(self.quillon.process, moves_on, "devices that are held")
        self.go_out_of_band()
        await_taken(self.desktop, ())


class WheelsWithoutWatchdog(GestureTest):
    def test_plain_wheels_work(self):
        quillon = start_alone(self)
        self.history.go_to(1)
        self.go_into_band(BAND // 2, 400)
        quillon.wait_for_line("quillon-watchdog does not start")
        self.injector.scroll("up", 4)
        self.history.expect(0)
        self.go_out_of_band()
        self.expect_no_more_changes(quillon)


if __name__ == "__main__":
    unittest.main()
