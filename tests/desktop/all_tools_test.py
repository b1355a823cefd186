#!/usr/bin/env python3
"""All input tools at once, and whatever somebody does, at random and fast: nothing is lost or
doubled, nothing sticks, nothing grows, and each tool goes on doing what it is for.

By hand, on a machine that does nothing else, also for long (ALL_TOOLS_EVENTS=100000): on a busy one
a whole turn of the injected wheel is now and then missing, and it is not known yet who loses it."""

import collections
import os
import random
import time
import unittest

from all_tools import ROW, THREE
from all_tools_hand import CENTRE, HALF, RandomHand
from key_grabber import NEXT, PLAY, PREVIOUS, strokes
from process_facts import is_sanitized, private_memory
from quillon_desktop import BAND, HEIGHT, WIDTH
from sound_servers import NORM
from switcher_desktop import active
from volume_desktop import INTERVAL, STEPS
from witnesses import QUILLON, X11_PROBE, await_idle, await_wheel, wait_until

EVENTS = int(os.environ.get("ALL_TOOLS_EVENTS", 4000))
ROUND = max(1000, EVENTS // 20)  # events after which all is compared
GROWTH = 256 << 10  # bytes by which the program may grow once it has seen everything
DUPLICATE = 0.05  # seconds within which a click is taken for the one before
STEP = NORM / STEPS
MEDIA_KEYS = {1: PLAY, 2: NEXT, 3: PREVIOUS}  # by clicks


class AllTools(RandomHand):
    def test_at_random(self):
        seed = int(os.environ.get("ALL_TOOLS_SEED") or random.randrange(1 << 32))
        print(f"{self.id()}: ALL_TOOLS_SEED={seed} ALL_TOOLS_EVENTS={EVENTS}")
        self.random = random.Random(seed)
        self.trace = collections.deque(maxlen=10)
        self.addCleanup(lambda: print(f"{self.id()}: last:", *self.trace, sep="\n    "))
        self.begin()
        self.compare()
        actions = {self.jump: 20, self.glide: 15, self.scroll: 30, self.click: 18, self.drag: 8,
                   self.chord: 3, self.touch: 6, self.turn_volume: 0.5}
        memory, start = [], time.monotonic()
        while self.events < EVENTS:
            due = min(self.events + ROUND, EVENTS)
            while self.events < due:
                action = self.random.choices([*actions], actions.values())[0]
                self.trace.append(f"{self.events}: at {self.place}, {self.contacts} fingers"
                                  f"{'' if self.is_settled else '?'}: {action.__name__}")
                action()
                self.assertTrue(self.quillon.is_running())
            self.compare()
            memory.append(private_memory(self.quillon.process.pid))
        print(f"{self.id()}: {self.events} events in {time.monotonic() - start:.0f} s; "
              f"{dict(self.done)}, {self.acted() - self.acted_before} consumed; "
              f"memory in kB: {[each >> 10 for each in memory]}")
        if not is_sanitized(QUILLON):
            self.assertLess(memory[-1] - memory[len(memory) // 3], GROWTH)

    # One of the things that are done

    def turn_volume(self) -> None:
        """At the right edge it moves, elsewhere it does not, nor at the left, where the scroll is
        another tool's."""
        where = self.random.choice(["left", "centre", "right", "right"])
        await_idle(self.quillon.process)
        self.expect_volume_turns(where)

    def expect_volume_turns(self, where: str) -> None:
        """To be called when the program rests."""
        before = self.sound.volume()
        y = self.random.randrange(HALF - BAND) + BAND // 2
        notches, start = self.random.randint(1, 5), time.monotonic()
        if where == "left":
            self.go(BAND // 2, y)
            self.scroll_tool(self.inwards(), notches)
        else:
            self.go(WIDTH - BAND // 2 if where == "right" else WIDTH // 2, y)
            await_wheel(self.desktop, "free")
            raises = before < NORM // 2
            self.scroll_below("GTK 3", self.random.choice(["down", "left"] if raises else
                                                          ["up", "right"]), notches)
        await_idle(self.quillon.process)
        change = (self.sound.volume() - before) / STEP
        if where != "right":
            self.assertEqual(change, 0, f"the volume at {where}")
            return
        steps = change if raises else -change
        self.assertAlmostEqual(steps, round(steps), delta=0.02)
        most = min(notches, 1 + int((time.monotonic() - start) / INTERVAL))
        self.assertTrue(1 <= round(steps) <= most, f"{steps} steps of {most}")

    # What is to be so whatever has been done

    def compare(self) -> None:
        self.trace.append(f"{self.events}: compare")
        self.rest(0)
        self.settle_fingers()
        self.injector.await_up()
        for (client, _), place in zip(self.clients, CENTRE.values(), strict=True):
            self.go(*place)
            client.received()
        await_wheel(self.desktop, "free")
        wait_until(lambda: self.says["ended"] == self.says["counted"], "the last burst has ended")
        wait_until(lambda: self.says["switched"] == self.says["cycled"], "the last second stage")
        await_idle(self.quillon.process)
        self.assertEqual(self.desktop.run(X11_PROBE, "buttons"), "")
        self.assertEqual(self.keys_and_buttons_down(), [])
        self.compare_input()
        self.compare_keys()
        self.compare_desktop()
        self.compare_volume()
        self.expect_answers()

    def compare_input(self) -> None:
        for name, tally in self.tallies.items():
            received = tally.counts()
            for line in {*received, *self.expected[name], *self.doubtful[name]}:
                least, more = self.expected[name][line], self.doubtful[name][line]
                self.assertTrue(least <= received[line] <= least + more,
                                f"{name}: {received[line]} times {line!r}, not {least}+{more}")
        self.assertEqual(self.accounted(), self.notches)
        self.assertGreaterEqual(self.acted() - self.acted_before, self.consumed)

    def compare_keys(self) -> None:
        """Each click is heard of, a turned one as neither the one nor the other, and what was made
        of them is what somebody else got."""
        lefts = sum(tally["press 1"] for tally in self.tallies.values())
        self.assertEqual(self.says["heard"], lefts + self.middle_clicks)
        made = collections.Counter({key: self.says[key] for key in MEDIA_KEYS.values()})
        wait_until(lambda: len(self.grabber.seen()) >= 2 * made.total(), f"strokes of {made}")
        seen = self.grabber.seen()
        self.assertEqual(seen, [each for key in seen[::2] for each in strokes(key.split()[1])])
        self.assertEqual(collections.Counter(each.split()[1] for each in seen[::2]), +made)
        self.assertEqual(self.bystander.commands(), [])

    def compare_desktop(self) -> None:
        self.assertEqual(self.desktop.current_desktop(), self.current)
        self.assertTrue(0 <= self.current < ROW)

    def compare_volume(self) -> None:
        """No further than the scrolls may have brought it."""
        volume = self.sound.volume()
        self.assertFalse(self.sound.is_muted())
        if self.volume_turns:
            steps = (volume - self.volume) / STEP
            self.assertTrue(-self.volume_turns["lower"] <= round(steps)
                            <= self.volume_turns["raise"], f"{steps} of {self.volume_turns}")
        self.volume = volume
        self.volume_turns.clear()

    def expect_answers(self) -> None:
        """Each tool does at once what it is for."""
        self.go(BAND // 2, HALF // 2)
        for direction in ("up", "left", "down", "right"):
            self.scroll_tool(direction, 1)
        front = active(self.desktop)
        self.go(WIDTH // 2, HEIGHT - 5)
        self.scroll_tool("up", 1)
        wait_until(lambda: active(self.desktop) not in (0, front), "another window is in front")
        wait_until(lambda: self.says["switched"] == self.says["cycled"], "the second stage")
        await_idle(self.quillon.process)
        self.expect_volume_turns("right")
        self.expect_media_key(self.random.choice([*MEDIA_KEYS]), self.random.choice([1, 2]))
        self.go(*CENTRE["Qt 6"])
        self.rest(THREE)
        self.settle_fingers()
        self.push(1, lambda: None)
        self.rest(0)
        self.settle_fingers()

    def expect_media_key(self, clicks: int, button: int) -> None:
        self.go(WIDTH // 2, BAND // 4)
        before, ended = self.grabber.seen(), self.says["ended"]
        for _ in range(clicks):
            heard, since = self.says["heard"], time.monotonic()
            self.push(button, lambda: None)
            wait_until(lambda: self.says["heard"] > heard, "the click is heard")  # noqa: B023
            wait_until(lambda: time.monotonic() - since > DUPLICATE, "a pause")  # noqa: B023
        wait_until(lambda: self.says["ended"] == ended + clicks, "the burst has ended")
        keys = strokes(MEDIA_KEYS[clicks])
        wait_until(lambda: len(self.grabber.seen()) >= len(before) + len(keys), f"{keys}")
        self.assertEqual(self.grabber.seen(), before + keys)


if __name__ == "__main__":
    unittest.main()
