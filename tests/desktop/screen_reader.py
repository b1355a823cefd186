"""Somebody who does not see the screen: knows of programs what they tell assistive technology, and
uses them by what they offer to it."""

import dataclasses
import itertools
import json
import subprocess

from shell_desktop import SYSTEM_PYTHON
from witnesses import TREE, Failed, wait_until

BUS = "/usr/libexec/at-spi-bus-launcher"
READER = TREE / "tests/desktop/accessible.py"
ALWAYS_ON = {"QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1"}  # what the program runs with

_numbers = itertools.count(1)


def start_accessibility_bus(desktop) -> None:
    desktop.environment.pop("NO_AT_BRIDGE", None)
    desktop.start("accessibility-bus", [BUS, "--launch-immediately"])
    wait_until(lambda: "unix:" in desktop.run(
        "gdbus", "call", "--session", "--dest", "org.a11y.Bus", "--object-path",
        "/org/a11y/bus", "--method", "org.a11y.Bus.GetAddress"), "an accessibility bus")


@dataclasses.dataclass
class Thing:
    """What is told of one object, as far as it is shown."""

    path: list[int]  # positions, from the program down
    depth: int
    role: str
    name: str
    description: str
    states: list[str]
    actions: list[str] = dataclasses.field(default_factory=list)
    value: list[float] | None = None  # lowest, highest, current
    text: str | None = None
    place: list[int] | None = None  # x, y, width, height on the screen, in pixels

    def contains(self, other: "Thing") -> bool:
        return other.path[:len(self.path)] == self.path

    @property
    def middle(self) -> tuple[int, int]:
        x, y, width, height = self.place
        return x + width // 2, y + height // 2

    @property
    def is_shown(self) -> bool:
        return "showing" in self.states and self.place is not None

    @property
    def is_on(self) -> bool:
        return "checked" in self.states


class ScreenReader:
    """Reads the running program of that name."""

    def __init__(self, desktop, program: str):
        self._process = desktop.start(
            f"screen-reader-{next(_numbers)}",
            [SYSTEM_PYTHON, "-B", "-W", "ignore", READER, "serve", program],
            text=True, stdin=subprocess.PIPE, stdout=subprocess.PIPE)

    def _ask(self, *words):
        self._process.stdin.write(f"{json.dumps(words)}\n")
        self._process.stdin.flush()
        reply = json.loads(self._process.stdout.readline())
        if "error" in reply:
            raise Failed(f"{words}: {reply['error']}")
        return reply["answer"]

    def _all(self, *wanted) -> list[Thing]:
        """Those of a role and name, or without them all there are."""
        try:
            return [Thing(**facts) for facts in self._ask("tree", *wanted)]
        except Failed:  # it changes while it is read
            return []

    def things(self) -> list[Thing]:
        """All that is shown, from the outer to the inner; empty while it cannot be read."""
        return [thing for thing in self._all() if thing.is_shown]

    def find(self, role: str, name: str, description="", *, within: Thing | None = None) -> Thing:
        """The only one whose description begins so, as soon as it is shown. What has been scrolled
        away, and can have the keyboard, is asked to take it, which scrolls; what is hidden stays
        so."""
        def found():
            fitting = [thing for thing in self._all(role, name)
                       if thing.description.startswith(description)
                       and (within is None or within.contains(thing))]
            shown = [thing for thing in fitting if thing.is_shown]
            if not shown:
                for thing in fitting:
                    if "SetFocus" in thing.actions:
                        self.act(thing, "SetFocus")
            return shown[0] if len(shown) == 1 else None

        return wait_until(found, f"{role} {name!r} {description!r}")

    def shows(self, role: str, name: str) -> bool:
        return any(thing.is_shown for thing in self._all(role, name))

    def act(self, thing: Thing, action: str) -> None:
        if not self._ask("act", thing.path, action):
            raise Failed(f"{thing.name!r} does not {action}")

    def press(self, role: str, name: str, description="") -> None:
        self.act(self.find(role, name, description), "Press")

    def set_value(self, thing: Thing, number: float) -> None:
        self._ask("set", thing.path, number)

    def write(self, thing: Thing, text: str) -> None:
        self._ask("write", thing.path, text)

    def focus(self, thing: Thing) -> None:
        self._ask("focus", thing.path)
