#!/usr/bin/env python3
"""Clicks at the edge play, pause and skip: by the keyboard's keys where somebody has them, else by
the right player."""

import time
import unittest

from key_grabber import NEXT, PLAY, PREVIOUS, KeyGrabber, KeyWindow
from media_players import MediaPlayer, status_of
from quillon_desktop import HEIGHT, WIDTH, ClientTest, GestureTest
from shell_desktop import ShellTest
from witnesses import await_idle, wait_until

QUARTER = HEIGHT // 4  # in the upper client
PLACES = {"Left": (5, QUARTER), "Right": (WIDTH - 5, QUARTER), "Top": (WIDTH // 2, 5),
          "Bottom": (WIDTH // 2, HEIGHT - 5)}
LEFT, MIDDLE = 1, 2
DUPLICATE = 0.05  # seconds within which a click is taken for the one before


class MediaTest:
    """With the tool on at these edges, for both buttons."""

    def start_tool(self, *edges: str, **settings):
        armed = {f"MediaControl{edge}Edge": True for edge in edges or PLACES}
        self.quillon = self.start_quillon(MediaControlLeftButton=True, **armed, **settings)
        self.quillon.wait_for_line("Event monitor successfully created")
        for part in ("Edge check", "Click count", "Toggle Play/Pause", "Next Track",
                     "Previous Track"):
            self.quillon.may_say(part)

    def click(self, times: int, button=MIDDLE) -> None:
        """As one burst: each when the tool has heard of the one before, and no duplicate of it."""
        for _ in range(times):
            before = self.heard()
            self.injector.click(button)
            wait_until(lambda: self.heard() > before, "the click is heard", 2)
            since = time.monotonic()
            wait_until(lambda: time.monotonic() - since > DUPLICATE, "a pause")

    def heard(self) -> int:
        return sum("click detected at" in line for line in self.quillon.lines())


class MediaKeys(MediaTest, ClientTest):
    """Somebody has grabbed the keys, as desktops do; the player on the bus is to be left alone."""

    options = {"bus": True}

    def setUp(self):
        super().setUp()
        self.grabber = KeyGrabber(self.desktop, PLAY, NEXT, PREVIOUS)
        self.addCleanup(self.grabber.stop)
        self.player = MediaPlayer(self.desktop, "bystander", "Playing")
        self.addCleanup(self.player.stop)

    def test_bursts_at_every_edge_with_both_buttons(self):
        self.start_tool()
        for edge, place in PLACES.items():
            for button in (LEFT, MIDDLE):
                with self.subTest(edge=edge, button=button):
                    self.injector.move(*place)
                    for times, key in ((1, PLAY), (2, NEXT), (3, PREVIOUS)):
                        self.click(times, button)
                        self.grabber.expect(key)
                    self.click(4, button)
                    wait_until(lambda: "Ignoring 4 clicks" in self.quillon.lines()[-1],
                               "four clicks are none", 2)
        self.assertEqual(self.grabber.seen(), [])
        self.assertEqual(self.player.commands(), [])

    def test_the_click_reaches_the_program_below(self):
        self.start_tool()
        self.injector.move(*PLACES["Left"])
        for button in (LEFT, MIDDLE):
            self.gtk.forget()
            self.click(1, button)
            self.assertEqual(self.gtk.received(), [f"press {button}", f"release {button}"])
            self.grabber.expect(PLAY)

    def test_elsewhere_and_other_buttons_do_nothing(self):
        self.start_tool("Left")
        for place, button in (((WIDTH // 2, QUARTER), MIDDLE), (PLACES["Right"], MIDDLE),
                              (PLACES["Top"], LEFT), (PLACES["Left"], 3), (PLACES["Left"], 9)):
            self.injector.move(*place)
            self.injector.click(button)
        # What comes later is told later.
        self.injector.move(*PLACES["Left"])
        self.click(2)
        self.grabber.expect(NEXT)
        self.assertEqual(self.grabber.seen(), [])


class MediaPlayers(MediaTest, GestureTest):
    """Nobody has the keys."""

    options = {"bus": True}

    def player(self, name: str, status="Paused") -> MediaPlayer:
        player = MediaPlayer(self.desktop, name, status)
        self.addCleanup(player.stop)
        return player

    def test_the_one_that_plays(self):
        idle, playing = self.player("idle"), self.player("playing", "Playing")
        window = KeyWindow(self.desktop)
        self.addCleanup(window.stop)
        self.start_tool()
        self.injector.move(*PLACES["Bottom"])
        for times, command in ((2, "Next"), (3, "Previous"), (1, "PlayPause")):
            self.click(times)
            playing.expect(command)
        wait_until(lambda: status_of(self.desktop, "playing") == "Paused", "it pauses")
        self.click(1)  # nobody plays: the last one that did
        playing.expect("PlayPause")
        self.assertEqual(idle.commands(), [])
        self.assertEqual(window.seen(), [])

    def test_the_one_that_paused_last(self):
        first, second = self.player("first", "Playing"), self.player("second")
        self.start_tool()
        self.injector.move(*PLACES["Top"])
        first.set_status("Paused")
        second.set_status("Playing")
        second.set_status("Paused")
        first.set_status("Playing")
        first.set_status("Paused")
        self.click(1)
        first.expect("PlayPause")
        self.assertEqual(second.commands(), [])

    def test_with_nobody_at_all_the_focused_window_gets_the_key(self):
        window = KeyWindow(self.desktop)
        self.addCleanup(window.stop)
        self.start_tool()
        self.injector.move(*PLACES["Right"])
        self.click(2)
        window.expect(NEXT)


class OwnWindowClicks(MediaTest, ShellTest):
    def test_clicks_in_the_hub_do_not_count(self):
        grabber = KeyGrabber(self.desktop, PLAY, NEXT, PREVIOUS)
        # So wide that the hub, which hangs on the panel, is within it.
        self.start_tool("Top", "Bottom", MediaControlEdgeSensitivity=float(HEIGHT))
        self.shell.open_hub()
        before = self.heard()
        self.injector.move(*self.shell.hub_place().middle)
        self.injector.click(MIDDLE)
        await_idle(self.quillon.process)  # where the pointer is counts when it is heard of
        self.injector.move(WIDTH // 2, QUARTER)
        self.click(1, LEFT)  # a middle click opens a menu there
        grabber.expect(PLAY)
        self.assertEqual(self.heard(), before + 1)


if __name__ == "__main__":
    unittest.main()
