"""Programs on a desktop's bus that play, or say so, and what they have been told to do."""

import dataclasses
import itertools
import pathlib
import signal
import subprocess

from witnesses import Failed, Lines, wait_until

PROGRAM = pathlib.Path(__file__).with_name("mpris_player.py")
COMMANDS = ("PlayPause", "Play", "Pause", "Stop", "Next", "Previous")

_numbers = itertools.count(1)


@dataclasses.dataclass
class Command:
    name: str    # such as "PlayPause"
    time: float  # seconds of the monotonic clock


class MediaPlayer:
    """A player of the test's own, with this name and status ("Playing", "Paused", "Stopped"); it
    follows what it is told. `cannot` are properties that are false, such as "CanGoNext". The
    desktop needs a bus."""

    def __init__(self, desktop, name: str, status="Paused", cannot=()):
        log = f"player-{next(_numbers)}-{name}"
        self.name, self._desktop, self._lines = name, desktop, Lines(desktop, log)
        self.process = desktop.start(
            log, ["/usr/bin/python3", "-B", PROGRAM, name, status, "cannot", *cannot],
            text=True, stdin=subprocess.PIPE)
        desktop.wait_for(self.process, lambda: "ready" in self._lines.all(), "a player")

    def events(self) -> list[Command]:
        """The commands that it has got since the last forget(), in order."""
        words = (line.split() for line in self._lines.new())
        return [Command(word[0], int(word[1]) / 1e9) for word in words if word[0] in COMMANDS]

    def commands(self) -> list[str]:
        return [event.name for event in self.events()]

    def forget(self) -> None:
        self._lines.forget()

    def expect(self, *commands: str, limit=10.0) -> None:
        """These and no others so far; forgets them."""
        wait_until(lambda: len(self.commands()) >= len(commands), f"{self.name}: {commands}", limit)
        if self.commands() != list(commands):
            raise AssertionError(f"{self.name} got {self.commands()}, not {commands}")
        self.forget()

    def set_status(self, status: str) -> None:
        """By itself, as when somebody clicks in its window. Others know when this returns."""
        self.process.stdin.write(f"status {status}\n")
        self.process.stdin.flush()
        wait_until(lambda: status_of(self._desktop, self.name) == status,
                   f"{self.name} is {status}")

    def hang(self) -> None:
        self.process.send_signal(signal.SIGSTOP)

    def go_on(self) -> None:
        self.process.send_signal(signal.SIGCONT)

    def stop(self) -> None:
        self.go_on()
        self._desktop.end(self.process)


def status_of(desktop, name: str) -> str | None:
    """As an independent program reads it off the bus."""
    try:
        return desktop.run("playerctl", "--player", name, "status").strip()
    except Failed:
        return None
