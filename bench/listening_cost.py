"""How soon the tools that only listen act: from a scroll at the edge to the changed volume, from a
click there to the music's key and player, beside what people bind to the mouse instead.

    listening_cost.py       run by script/bench; it opens a desktop of its own

Times are taken in turns within one run, from the injection of what the hand does until another
program has heard of what came of it.
"""

import contextlib
import os
import pathlib
import select
import statistics
import subprocess
import sys
import time

TREE = pathlib.Path(__file__).resolve().parents[1]
sys.path[:0] = [str(TREE / "script/lib"), str(TREE / "tests/desktop")]
BUILD = TREE / "build/bench"
CLIENTS = BUILD / "tests/desktop/clients"
os.environ.setdefault("QUILLON", str(BUILD / "quillon"))
for client in ("gtk3_client", "key_grabber", "x11_probe"):
    os.environ.setdefault(client.upper(), str(CLIENTS / client))

from desktop import Failed, Interrupted, PrivateDesktop, wait_until  # noqa: E402
from key_grabber import PLAY, KeyGrabber  # noqa: E402
from media_players import MediaPlayer  # noqa: E402
from quillon_desktop import HEIGHT, WIDTH, Quillon  # noqa: E402
from sound_servers import PulseAudio  # noqa: E402
from witnesses import (BUTTONS, GTK3_CLIENT, Client, Injector, await_wheel,  # noqa: E402
                       write_settings)

ROUNDS = 5
NOTCHES, CLICKS = 40, 24  # per round
NOTCH_INTERVAL = 0.12     # seconds; the tool follows one every 0.085
BURST = 0.3               # seconds in which the tool waits for a further click, on purpose
LIMIT = 2                 # seconds after which nothing has come of it
EDGE = (WIDTH - 5, HEIGHT // 4)


class VolumeWatch:
    """A client of the sound server that is told when the volume has changed."""

    def __init__(self, desktop):
        self._process = desktop.start("volume-watch", ["pactl", "subscribe"],
                                      stdout=subprocess.PIPE)
        self._text = b""
        os.set_blocking(self._process.stdout.fileno(), False)

    def change(self, limit: float) -> float | None:
        """When it has heard of the next one, unless that takes longer."""
        deadline = time.monotonic() + limit
        while True:
            *lines, self._text = self._text.split(b"\n")
            if any(line.startswith(b"Event 'change' on sink #") for line in lines):
                return self._heard
            left = max(deadline - time.monotonic(), 0)
            if not select.select([self._process.stdout], [], [], left)[0]:
                return None
            self._heard = time.monotonic()
            if not (text := os.read(self._process.stdout.fileno(), 4096)):
                raise Failed("who watches the volume has ended")
            self._text += text

    def forget(self) -> None:
        while self.change(0):
            pass


class Times:
    """One row of a table, in seconds; `waits` are those that pass on purpose."""

    def __init__(self, name: str, waits=0.0):
        self.name, self.waits, self.times, self.missed = name, waits, [], 0

    def add(self, seconds: float | None) -> None:
        if seconds is None:
            self.missed += 1
        else:
            self.times.append(seconds - self.waits)

    def median(self) -> float:
        return statistics.median(self.times) * 1000

    def p99(self) -> float:
        return sorted(self.times)[len(self.times) * 99 // 100] * 1000

    def row(self, base) -> str:
        if not self.times:
            return f"{self.name:62} nothing came of any"
        row = (f"{self.name:62} {self.median() / base.median():6.2f} {self.median():8.2f} "
               f"{self.p99():8.2f} {len(self.times):5}/{len(self.times) + self.missed}")
        if self.waits:
            row += (f"   with them {self.median() + self.waits * 1000:.1f} "
                    f"and {self.p99() + self.waits * 1000:.1f}")
        return row


class Bench:
    def __init__(self, desktop):
        self.desktop, self.hand, self.sound = desktop, Injector(desktop), PulseAudio(desktop)
        self.sound.start()
        self.sound.set_volume(2**15)
        self.watch = VolumeWatch(desktop)
        self.player = MediaPlayer(desktop, "player", "Playing")
        # Who is under the pointer: on the bare desktop a click would open a menu.
        Client(desktop, self.hand, GTK3_CLIENT, "GTK 3", (0, 0, WIDTH, HEIGHT))
        self.hand.move(*EDGE)
        self._turned = 0.0
        self._is_up = False

    # The two programs

    @contextlib.contextmanager
    def quillon(self, **settings):
        write_settings(self.desktop, settings)
        quillon = Quillon(self.desktop)
        quillon.wait_for_line("Event monitor successfully created")
        yield
        quillon.stop()

    @contextlib.contextmanager
    def xbindkeys(self, commands: dict[int, str]):
        """By mouse button."""
        rules = self.desktop.folder / "xbindkeysrc"
        rules.write_text("".join(f'"{command}"\n  b:{button}\n'
                                 for button, command in commands.items()))
        process = self.desktop.start("xbindkeys", ["xbindkeys", "-n", "-f", rules])
        yield
        self.desktop.end(process)

    # What they are asked to do: the seconds until it is done, unless it is not

    def turn(self) -> float | None:
        """By one notch, in turns up and down, until the volume has changed."""
        before = self.sound.volume()
        self.watch.forget()
        wait_until(lambda: time.monotonic() - self._turned > NOTCH_INTERVAL, "a pause")
        self._is_up = not self._is_up
        self._turned = time.monotonic()
        self.hand.quietly(f"wheel {BUTTONS['up' if self._is_up else 'down']} 1")
        heard = self.watch.change(LIMIT)
        if heard and (self.sound.volume() > before) != self._is_up:
            raise Failed(f"the volume has not moved {'up' if self._is_up else 'down'}")
        return heard and heard - self._turned

    def click(self, whom) -> float | None:
        """Until this player has got its command, or this program its key."""
        whom.forget()
        clicked = time.monotonic()
        for what in ("press", "release"):
            self.hand.quietly(f"{what} 2")
        with contextlib.suppress(Failed):
            wait_until(whom.events, "something comes of a click", LIMIT)
            return whom.events()[0].time - clicked
        return None

    def gather(self, times: Times, count: int, action) -> None:
        """After all is connected that the first one connects."""
        wait_until(lambda: action() is not None, times.name)
        action()
        for _ in range(count):
            times.add(action())

    # The two subjects

    def volume(self) -> None:
        theirs = Times("xbindkeys running 'pactl set-sink-volume'")
        ours = Times("Quillon")
        step = "pactl set-sink-volume @DEFAULT_SINK@"
        for _ in range(ROUNDS):
            with self.xbindkeys({4: f"{step} +1%", 5: f"{step} -1%"}):
                await_wheel(self.desktop, "taken")
                self.gather(theirs, NOTCHES, self.turn)
            with self.quillon(Tool5RightEdge=True, Tool5VolumeSteps=4.0):
                self.gather(ours, NOTCHES, self.turn)
        table("A scroll at the edge, until another program knows the changed volume",
              [theirs, ours])

    def clicks(self) -> None:
        theirs = Times("xbindkeys running 'playerctl play-pause', to a player")
        to_player = Times("Quillon, to a player, without the 0.3 s it waits on purpose", BURST)
        to_grabber = Times("Quillon, to who has grabbed the key, without them", BURST)
        for _ in range(ROUNDS):
            with self.xbindkeys({2: "playerctl play-pause"}):
                self.gather(theirs, CLICKS, lambda: self.click(self.player))
            with self.quillon(MediaControlRightEdge=True):
                self.gather(to_player, CLICKS, lambda: self.click(self.player))
                grabber = KeyGrabber(self.desktop, PLAY)
                self.gather(to_grabber, CLICKS, lambda: self.click(grabber))
                grabber.stop()
        table("A click at the edge, until the music stops or goes on", [theirs, to_player,
                                                                        to_grabber])


def table(title: str, rows) -> None:
    print(f"\n{title}, ms\n{'':62} {'ratio':>6} {'median':>8} {'p99':>8} {'done':>9}")
    for times in rows:
        print(times.row(rows[0]))


def main() -> None:
    with PrivateDesktop(bus=True) as desktop:
        bench = Bench(desktop)
        bench.volume()
        bench.clicks()


if __name__ == "__main__":
    try:
        main()
    except Failed as failure:
        sys.exit(f"listening_cost: {failure}")
    except Interrupted as interruption:
        sys.exit(interruption.status)
