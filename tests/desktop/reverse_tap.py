"""A program with a tap that reverses scrolling, as the tool has one."""

import subprocess

from witnesses import REVERSE_TAP, WATCHDOG, Lines


class ReverseTap:
    """The running program. Each of its calls returns when the program has done it."""

    def __init__(self, desktop, name: str):
        self._desktop, self._lines = desktop, Lines(desktop, name)
        self.process = desktop.start(name, [REVERSE_TAP, WATCHDOG], text=True,
                                     stdin=subprocess.PIPE)
        # It has looked by then for what an earlier one may have left behind.
        desktop.wait_for(self.process, lambda: "ready" in self.lines(), "a tap")

    def lines(self) -> list[str]:
        return self._lines.all()

    def reverse(self, what: str) -> None:
        self._do(f"reverse {what}")

    def hold_band(self, answer: str) -> None:
        """At the left edge, by a tap that is asked first; it answers "pass" or "consume" to each
        notch."""
        self._do(f"band {answer}")

    def forget(self) -> None:
        self._lines.forget()

    def notches(self) -> list[tuple[float, ...]]:
        """What the tap in the band was asked about since forget(): lines up and right, points up
        and right."""
        return [tuple(map(float, line.split()[1:])) for line in self._lines.new()
                if line.startswith("notch ")]

    def stop(self) -> None:
        """As by its user."""
        self.process.stdin.close()
        self.process.wait(10)

    def kill(self) -> None:
        self.process.kill()
        self.process.wait(10)

    def _do(self, command: str) -> None:
        def count():
            return self.lines().count(command)

        before = count()
        self.process.stdin.write(f"{command}\n")
        self.process.stdin.flush()
        self._desktop.wait_for(self.process, lambda: count() > before, command)
