#!/usr/bin/env python3
"""Another program may have the wheel already: it keeps it, and the program tries again later."""

import subprocess
import unittest

from quillon_desktop import BAND, WIDTH, GestureTest
from witnesses import X11_PROBE, Lines, await_idle, await_wheel, wait_until

REFUSAL = "Another program holds wheel button"


class WheelHolder(GestureTest):
    def start_holder(self, name: str) -> tuple[subprocess.Popen, Lines]:
        holder = self.desktop.start(name, [X11_PROBE, "hold-wheel"], stdin=subprocess.PIPE)
        lines = Lines(self.desktop, name)
        wait_until(lambda: lines.all() == ["held"], "the other program has the wheel")
        return holder, lines

    def refusals(self, quillon) -> list[str]:
        return [line for line in quillon.lines() if REFUSAL in line]

    def enter_band_and_rest(self, quillon) -> None:
        self.injector.move(BAND + 1, 400)
        await_idle(quillon.process)
        self.injector.move(BAND, 400)
        await_idle(quillon.process)

    def end_holder_and_leave(self, holder, quillon) -> None:
        """Until the program knows that the pointer has left: the wheel is free before that."""
        self.desktop.end(holder)
        self.go_out_of_band()
        await_idle(quillon.process)

    def test_it_says_so_once_and_tries_again(self):
        holder, lines = self.start_holder("holder")
        quillon = self.start_quillon("Left")
        self.history.go_to(2)
        for _ in range(3):
            self.enter_band_and_rest(quillon)
        quillon.wait_for_line(REFUSAL + "s 4 5 6 7")
        self.assertEqual(len(self.refusals(quillon)), 1)
        for direction in ("up", "down", "left", "right"):
            self.injector.scroll(direction, 4)
        wheel = [f"wheel {button}" for button in (4, 5, 6, 7) for _ in range(4)]
        wait_until(lambda: len(lines.all()) > len(wheel), "the other program gets the wheel")
        self.assertEqual(lines.all(), ["held", *wheel])

        self.end_holder_and_leave(holder, quillon)
        self.go_into_band(BAND, 400)
        self.injector.scroll("up", 4)
        self.history.expect(1)
        self.assertEqual(len(self.refusals(quillon)), 1)
        self.expect_no_more_changes(quillon)

    def test_a_second_conflict_is_told_too(self):
        quillon = self.start_quillon("Left")
        for conflict in (1, 2):
            self.go_into_band(BAND, 400)
            self.go_out_of_band()
            holder, _ = self.start_holder(f"holder-{conflict}")
            self.injector.move(BAND, 400)
            quillon.wait_for_line(REFUSAL)
            wait_until(lambda: len(self.refusals(quillon)) == conflict, f"line {conflict}")
            self.end_holder_and_leave(holder, quillon)

    def test_a_key_binder_keeps_its_button(self):
        record = self.desktop.home / "bound"
        record.touch()
        settings = self.desktop.home / "bindings"
        settings.write_text(f'"echo turned >> {record}"\n  b:4\n')
        binder = self.desktop.start("xbindkeys", ["xbindkeys", "-n", "-f", settings])
        self.addCleanup(self.desktop.end, binder)
        self.injector.move(WIDTH // 2, 400)
        await_wheel(self.desktop, "taken")
        quillon = self.start_quillon("Left")
        self.history.go_to(2)
        self.injector.move(BAND, 400)
        quillon.wait_for_line(REFUSAL + " 4;")
        self.injector.scroll("up", 4)
        wait_until(lambda: record.read_text().count("\n") >= 4, "the key binder gets its button")
        self.injector.scroll("down", 4)
        self.history.expect(3)
        self.assertEqual(record.read_text(), "turned\n" * 4)
        self.expect_no_more_changes(quillon)


if __name__ == "__main__":
    unittest.main()
