"""Programs that get keys: who has grabbed them for the whole screen, or has the keyboard."""

import dataclasses
import itertools
import pathlib

from witnesses import KEY_GRABBER, Lines, wait_until

VOLUME_UP, VOLUME_DOWN = "XF86AudioRaiseVolume", "XF86AudioLowerVolume"
PLAY, NEXT, PREVIOUS = "XF86AudioPlay", "XF86AudioNext", "XF86AudioPrev"

_numbers = itertools.count(1)


def strokes(*keys: str) -> list[str]:
    """What a program gets that each of the keys is pressed and released for."""
    return [f"{way} {key}" for key in keys for way in ("down", "up")]


@dataclasses.dataclass
class KeyEvent:
    what: str    # such as "down XF86AudioPlay"
    time: float  # seconds of the monotonic clock


class _KeyProgram:
    def __init__(self, desktop, *arguments: str):
        name = f"keys-{next(_numbers)}-{arguments[0]}"
        self._desktop, self._lines = desktop, Lines(desktop, name)
        self.process = desktop.start(name, [KEY_GRABBER, *arguments])
        desktop.wait_for(self.process, lambda: "ready" in self._lines.all(), "a program for keys")
        self._lines.forget()

    def events(self) -> list[KeyEvent]:
        """What it has got since the last forget(), in order."""
        words = (line.split() for line in self._lines.new())
        return [KeyEvent(f"{way} {key}", int(time) / 1e9) for way, key, time in words]

    def seen(self) -> list[str]:
        return [event.what for event in self.events()]

    def forget(self) -> None:
        self._lines.forget()

    def expect(self, *keys: str, limit=10.0) -> None:
        """These strokes, each down and up once, in this order; forgets them."""
        expected = strokes(*keys)
        wait_until(lambda: len(self.seen()) >= len(expected), f"strokes of {keys}", limit)
        if self.seen() != expected:
            raise AssertionError(f"not {expected}, but {self.seen()}")
        self.forget()

    def stop(self) -> None:
        self._desktop.end(self.process)


class KeyGrabber(_KeyProgram):
    """Has grabbed keys, by the names of their keysyms, for the whole screen: by the core protocol,
    or by the input extension. It follows changes of the keyboard."""

    def __init__(self, desktop, *keysyms: str, kind="core"):
        assert kind in ("core", "xi2")
        super().__init__(desktop, kind, *keysyms)


class KeyWindow(_KeyProgram):
    """A window that has the keyboard."""

    def __init__(self, desktop):
        super().__init__(desktop, "focus")


class Xbindkeys:
    """The program of that name, which runs a command for each key: here one that writes down the
    key's name."""

    def __init__(self, desktop, *keysyms: str):
        self._record = pathlib.Path(desktop.folder) / f"xbindkeys-{next(_numbers)}"
        self._record.touch()
        rules = self._record.with_suffix(".rc")
        rules.write_text("".join(f'"echo {key} >> {self._record}"\n    {key}\n'
                                 for key in keysyms))
        self.process = desktop.start(self._record.name,
                                     ["xbindkeys", "--nodaemon", "--file", rules])

    def seen(self) -> list[str]:
        return self._record.read_text().split()
