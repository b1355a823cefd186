#!/usr/bin/env python3
"""Special keys that a tool posts: who gets them, and that nobody else does."""

import pathlib
import statistics
import subprocess
import unittest
import wave

import key_grabber
import key_poster
from key_grabber import KeyGrabber, KeyWindow, Xbindkeys
from key_poster import KeyPoster
from media_players import MediaPlayer, status_of
from quillon_desktop import DesktopTest
from witnesses import await_idle, wait_until

MEDIA_KEYS = ((key_poster.PLAY, key_grabber.PLAY, "PlayPause"),
              (key_poster.NEXT, key_grabber.NEXT, "Next"),
              (key_poster.PREVIOUS, key_grabber.PREVIOUS, "Previous"))


class KeyTest(DesktopTest):
    options = {"bus": True}

    def setUp(self):
        self.poster = self.use(KeyPoster(self.desktop))

    def use(self, program):
        """Until the test ends."""
        self.addCleanup(lambda: self.desktop.end(program.process))
        return program

    def grabber(self, *keysyms: str, kind="core") -> KeyGrabber:
        return self.use(KeyGrabber(self.desktop, *keysyms, kind=kind))

    def window(self) -> KeyWindow:
        return self.use(KeyWindow(self.desktop))

    def player(self, name: str, status: str, **how) -> MediaPlayer:
        player = MediaPlayer(self.desktop, name, status, **how)
        self.addCleanup(player.stop)
        return player


class GrabbedKeys(KeyTest):
    def test_the_grabber_gets_it_and_no_player(self):
        player = self.player("one", "Playing")
        for kind in ("core", "xi2"):
            grabber = self.grabber(*(keysym for _, keysym, _ in MEDIA_KEYS), kind=kind)
            for code, keysym, _ in MEDIA_KEYS:
                self.poster.post(code)
                grabber.expect(keysym)
            grabber.stop()
        self.poster.post(key_poster.NEXT)
        player.expect("Next")

    def test_a_program_that_runs_commands_for_keys(self):
        player = self.player("one", "Playing")
        bound = self.use(Xbindkeys(self.desktop, key_grabber.PLAY, key_grabber.VOLUME_UP))
        self.poster.post(key_poster.VOLUME_UP)
        wait_until(lambda: self.presses_until_seen(bound), "the program has bound its keys")
        before = len(bound.seen())
        self.poster.post(key_poster.PLAY)
        wait_until(lambda: len(bound.seen()) > before, "the command runs")
        self.poster.post(key_poster.VOLUME_UP)
        wait_until(lambda: len(bound.seen()) > before + 1, "the command runs")
        self.assertEqual(bound.seen()[before:], [key_grabber.PLAY, key_grabber.VOLUME_UP])
        self.assertEqual(player.commands(), [])

    def presses_until_seen(self, bound: Xbindkeys) -> list[str]:
        if not bound.seen():
            self.poster.post(key_poster.VOLUME_UP)
            await_idle(self.poster.process)
        return bound.seen()

    def test_with_num_lock_and_caps_lock(self):
        grabber = self.grabber(key_grabber.PLAY)
        player = self.player("one", "Playing")
        for lock in ("Num_Lock", "Caps_Lock"):
            self.desktop.run("xdotool", "key", lock)
            self.poster.post(key_poster.PLAY)
            grabber.expect(key_grabber.PLAY)
        for lock in ("Num_Lock", "Caps_Lock"):
            self.desktop.run("xdotool", "key", lock)
        self.assertEqual(player.commands(), [])

    def test_volume_keys_in_a_row(self):
        grabber = self.grabber(key_grabber.VOLUME_UP, key_grabber.VOLUME_DOWN)
        self.poster.post(key_poster.VOLUME_UP, 5, 8)
        self.poster.post(key_poster.VOLUME_DOWN, 5, 8)
        grabber.expect(*[key_grabber.VOLUME_UP] * 5, *[key_grabber.VOLUME_DOWN] * 5)

    def test_keys_that_the_keyboard_lacks(self):
        """The grabber waits for a keyboard that has them."""
        self.desktop.run("xmodmap", "-e", f"keycode 123 =", "-e", "keycode 122 =")
        self.addCleanup(self.desktop.run, "xmodmap", "-e", f"keycode 123 = {key_grabber.VOLUME_UP}",
                        "-e", f"keycode 122 = {key_grabber.VOLUME_DOWN}")
        grabber = self.grabber(key_grabber.VOLUME_UP)
        self.poster.post(key_poster.VOLUME_UP, 5, 8)
        grabber.expect(*[key_grabber.VOLUME_UP] * 5)
        wait_until(lambda: key_grabber.VOLUME_UP not in self.desktop.run("xmodmap", "-pke"),
                   "the keyboard is as before")

    def test_ended_with_a_key_that_the_keyboard_lacks(self):
        """What is left of a program that is killed is used by the next."""
        before = self.desktop.run("xmodmap", "-pke")
        self.desktop.run("xmodmap", "-e", "keycode 123 =")
        self.addCleanup(self.desktop.run, "xmodmap", "-e", f"keycode 123 = {key_grabber.VOLUME_UP}")
        window = self.window()
        self.poster.post(key_poster.VOLUME_UP)
        window.expect(key_grabber.VOLUME_UP)
        self.poster.process.kill()
        self.poster.process.wait()
        kept = self.keycodes(key_grabber.VOLUME_UP)
        self.assertEqual(len(kept), 1)
        self.assertNotIn(f"{kept[0]} = X", before)
        poster = self.use(KeyPoster(self.desktop))
        poster.post(key_poster.VOLUME_UP)
        window.expect(key_grabber.VOLUME_UP)
        self.assertEqual(self.keycodes(key_grabber.VOLUME_UP), kept)
        self.desktop.run("xmodmap", "-e", f"{kept[0]} =")

    def keycodes(self, keysym: str) -> list[str]:
        return [line.partition("=")[0].strip()
                for line in self.desktop.run("xmodmap", "-pke").splitlines() if keysym in line]


class Players(KeyTest):
    def test_the_one_that_plays(self):
        players = [self.player("one", "Paused"), self.player("two", "Playing"),
                   self.player("three", "Stopped")]
        for code, _, command in MEDIA_KEYS[::-1]:
            self.poster.post(code)
            players[1].expect(command)
        self.assertEqual([player.commands() for player in players], [[], [], []])
        self.assertEqual(status_of(self.desktop, "two"), "Paused")

    def test_the_one_that_was_paused_last(self):
        one, two = self.player("one", "Playing"), self.player("two", "Playing")
        two.set_status("Paused")
        one.set_status("Paused")
        self.poster.post(key_poster.PLAY)
        one.expect("PlayPause")
        self.poster.post(key_poster.PLAY)
        one.expect("PlayPause")
        two.set_status("Stopped")
        self.poster.post(key_poster.PLAY)
        two.expect("PlayPause")
        self.assertEqual(one.commands(), [])

    def test_one_that_cannot(self):
        one = self.player("one", "Paused", cannot=["CanGoNext"])
        two = self.player("two", "Paused")
        self.poster.post(key_poster.NEXT)
        two.expect("Next")
        self.assertEqual(one.commands(), [])

    def test_one_that_hangs(self):
        one, two = self.player("one", "Playing"), self.player("two", "Paused")
        self.poster.post(key_poster.NEXT)
        one.expect("Next")
        one.hang()
        self.poster.post(key_poster.PLAY)
        two.expect("PlayPause")
        one.go_on()
        wait_until(lambda: status_of(self.desktop, "one"), "it answers again")
        two.stop()
        self.poster.post(key_poster.NEXT)
        one.expect("Next")

    def test_nobody_but_a_window(self):
        window = self.window()
        for code, keysym, _ in MEDIA_KEYS:
            self.poster.post(code)
            window.expect(keysym)


class RealPlayers(KeyTest):
    def setUp(self):
        super().setUp()
        silence = pathlib.Path(self.desktop.folder) / "silence"
        silence.mkdir(exist_ok=True)
        self.tracks = [silence / f"{number}.wav" for number in (1, 2, 3)]
        for track in self.tracks:
            with wave.open(str(track), "wb") as file:
                file.setparams((1, 2, 8000, 8000 * 60, "NONE", ""))
                file.writeframes(bytes(2 * 8000 * 60))

    def start_cmus(self):
        process = self.desktop.start(
            "cmus", ["script", "-qfc", f"cmus --listen {self.desktop.folder}/cmus", "/dev/null"],
            stdin=subprocess.PIPE, env=self.desktop.environment | {"TERM": "xterm"})
        self.addCleanup(self.desktop.end, process)
        self.desktop.wait_for(process, lambda: status_of(self.desktop, "cmus"), "a player")
        self.cmus("-C", "set output_plugin=pulse", "set continue=true", "set shuffle=false",
                  f"add -p {self.tracks[0].parent}", "view playlist")
        # It adds tracks in the background; while there is none, nothing begins.
        wait_until(lambda: status_of(self.desktop, "cmus") == "Playing"
                   or self.cmus("-C", "win-activate"), "it plays")

    def cmus(self, *arguments) -> str:
        return self.desktop.run("cmus-remote", "--server", f"{self.desktop.folder}/cmus", *arguments)

    def track(self) -> str:
        return next((line.rpartition("/")[2] for line in self.cmus("-Q").splitlines()
                     if line.startswith("file ")), "")

    def test_a_player_for_terminals(self):
        self.start_cmus()
        mine = self.player("mine", "Paused")
        self.poster.post(key_poster.NEXT)
        wait_until(lambda: self.track() == "2.wav", "the next track")
        self.poster.post(key_poster.PLAY)
        wait_until(lambda: status_of(self.desktop, "cmus") == "Paused", "it pauses")
        self.poster.post(key_poster.PLAY)
        wait_until(lambda: status_of(self.desktop, "cmus") == "Playing", "it plays again")
        self.poster.post(key_poster.PREVIOUS)
        wait_until(lambda: self.track() == "1.wav", "the track before")
        self.assertEqual(mine.commands(), [])

    def test_a_relay_on_the_bus(self):
        one, two = self.player("one", "Paused"), self.player("two", "Playing")
        relay = self.desktop.start("relay", ["playerctld"])
        self.addCleanup(self.desktop.end, relay)
        wait_until(lambda: status_of(self.desktop, "playerctld"), "the relay")
        for _ in range(2):
            self.poster.post(key_poster.PLAY)
            two.expect("PlayPause")
        self.poster.post(key_poster.NEXT)
        two.expect("Next")
        self.assertEqual(one.commands(), [])


RealPlayers.options = {"bus": True, "audio": True}


class KeyTimes(KeyTest):
    COUNT, APART = 200, 8

    def report(self, what: str, times: list[float]) -> None:
        times = sorted(1e6 * time for time in times)
        print(f"{what}: median {statistics.median(times):.0f}, p99 "
              f"{times[len(times) * 99 // 100]:.0f}, worst {times[-1]:.0f} microseconds")

    def test_to_a_grabber(self):
        self.player("one", "Playing")
        grabber = self.grabber(key_grabber.NEXT, key_grabber.VOLUME_UP)
        for code, keysym in ((key_poster.NEXT, key_grabber.NEXT),
                             (key_poster.VOLUME_UP, key_grabber.VOLUME_UP)):
            before = len(self.poster.posted())
            self.poster.post(code, self.COUNT, self.APART)
            wait_until(lambda: len(grabber.events()) == 2 * self.COUNT, "all strokes")
            downs = [event.time for event in grabber.events() if event.what == f"down {keysym}"]
            posted = self.poster.posted()[before:]
            self.report(keysym, [down - post for down, (post, _) in zip(downs, posted)])
            self.report(f"{keysym}, held up the main thread", [took for _, took in posted])
            grabber.forget()
            self.assertLess(statistics.median(took for _, took in posted), 0.002)

    def test_to_a_player(self):
        player = self.player("one", "Playing")
        self.poster.post(key_poster.NEXT, self.COUNT, self.APART)
        wait_until(lambda: len(player.events()) == self.COUNT, "all commands")
        posted = self.poster.posted()
        self.report("Next", [event.time - post for event, (post, _) in zip(player.events(), posted)])
        self.report("Next, held up the main thread", [took for _, took in posted])

    def test_rests_while_nobody_says_anything(self):
        self.player("one", "Playing")
        self.poster.post(key_poster.NEXT)
        await_idle(self.poster.process)
        before = self.switches()
        self.desktop.run("dbus-send", "--session", "--print-reply", "--dest=org.freedesktop.DBus",
                         "/", "org.freedesktop.DBus.ListNames")
        await_idle(self.poster.process)
        self.assertEqual(self.switches(), before)

    def switches(self) -> dict:
        """How often each thread has been awake."""
        tasks = pathlib.Path(f"/proc/{self.poster.process.pid}/task")
        return {task.name: [line for line in (task / "status").read_text().splitlines()
                            if "ctxt_switches" in line] for task in tasks.iterdir()}


if __name__ == "__main__":
    unittest.main()
