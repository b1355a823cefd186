"""A program that posts special keys, as the tools do."""

import itertools
import subprocess

from witnesses import KEY_POSTER, Lines

VOLUME_UP, VOLUME_DOWN, PLAY, NEXT, PREVIOUS = 0, 1, 16, 17, 18

_numbers = itertools.count(1)


class KeyPoster:
    """The running program. Each call returns when the keys have been posted."""

    def __init__(self, desktop):
        name = f"key-poster-{next(_numbers)}"
        self._desktop, self._lines = desktop, Lines(desktop, name)
        self.process = desktop.start(name, [KEY_POSTER], text=True, stdin=subprocess.PIPE)
        desktop.wait_for(self.process, lambda: "ready" in self._lines.all(), "a program that posts")

    def post(self, key: int, count=1, milliseconds=0) -> None:
        """So many strokes so far apart."""
        command = f"key {key} {count} {milliseconds}"
        before = self._lines.all().count(command)
        self.process.stdin.write(f"{command}\n")
        self.process.stdin.flush()
        self._desktop.wait_for(self.process, lambda: self._lines.all().count(command) > before,
                               command)

    def posted(self) -> list[tuple[float, float]]:
        """When each was posted, by the monotonic clock, and how long that took; in seconds."""
        words = (line.split() for line in self._lines.all() if line.startswith("posted"))
        return [(int(word[2]) / 1e9, int(word[3]) / 1e9) for word in words]
