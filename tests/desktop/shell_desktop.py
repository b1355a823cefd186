"""The ground of the tests of what people see: a desktop with a panel, the program's item in its
tray, and the hub."""

import itertools
import time

from quillon_desktop import HEIGHT, WIDTH, DesktopTest
from shell_view import Rectangle, ShellView
from witnesses import TREE, X11_PROBE, Failed, Injector, Lines, wait_until

SYSTEM_PYTHON = "/usr/bin/python3"
SCREEN = Rectangle(0, 0, WIDTH, HEIGHT)

_numbers = itertools.count(1)


class PixelWatch:
    """Every change of an area of the screen, as (seconds, distance from the first picture, hash).
    The clock is time.monotonic's."""

    def __init__(self, desktop, area: Rectangle):
        name = f"pixels-{next(_numbers)}"
        self._desktop, self._lines = desktop, Lines(desktop, name)
        self._process = desktop.start(name, [X11_PROBE, "watch", *map(str, (
            area.x, area.y, area.width, area.height))])
        desktop.wait_for(self._process, self._lines.all, "the first picture")

    def all(self) -> list[tuple[float, int, str]]:
        found = []
        for line in self._lines.all():
            moment, distance, number = line.split()
            found.append((int(moment) / 1e6, int(distance), number))
        return found

    def changes(self) -> list[tuple[float, int, str]]:
        return self.all()[1:]

    def close(self) -> None:
        self._desktop.end(self._process)


def at_rest(place, what: str, limit=10.0, rest=0.0) -> Rectangle:
    """Where something is when it is there and has stopped moving, for so many seconds."""
    before, since = None, 0.0

    def rests():
        nonlocal before, since
        last, before = before, place()
        if before is None or last != before:
            since = time.monotonic()
            return False
        return time.monotonic() - since >= rest
    wait_until(rests, what, limit)
    return before


class Shell(ShellView):
    """The program as somebody who sits at the desktop uses it."""

    def __init__(self, desktop, hand: Injector):
        super().__init__(desktop)
        self.hand = hand

    def await_item(self, limit=10.0) -> Rectangle:
        """Docked, and no longer moved about by the panel, which may take its time."""
        return at_rest(self.item, "the item is in the tray", limit, rest=0.2)

    def click_item(self, button=1) -> None:
        self.hand.move(*self.await_item().middle)
        self.hand.click(button)

    def await_hub(self, limit=10.0) -> str:
        return wait_until(self.hub, "the hub is open", limit)

    def await_no_hub(self, limit=10.0) -> None:
        wait_until(lambda: self.hub() is None, "the hub is closed", limit)

    def hub_has_focus(self) -> bool:
        try:
            return int(self.desktop.run("xdotool", "getwindowfocus")) == int(self.hub() or "0", 16)
        except Failed:
            return False

    def open_hub(self) -> None:
        self.click_item()
        self.await_hub()
        wait_until(self.hub_has_focus, "the hub has the keyboard's focus")

    def await_menu(self) -> Rectangle:
        return at_rest(self.menu, "the menu is open")

    def await_no_menu(self) -> None:
        wait_until(lambda: self.menu() is None, "the menu is closed")

    def press_key(self, *keys: str) -> None:
        self.desktop.run("xdotool", "key", *keys)


class NotifierShell(Shell):
    """On a desktop whose tray is tests/desktop/status_notifier_host.py."""

    BAR, MARGIN = 28, 60  # as in that program

    def start_host(self):
        name = f"status-notifier-host-{next(_numbers)}"
        host = self.desktop.start(name, [SYSTEM_PYTHON, "-B", "-W", "ignore",
                                         TREE / "tests/desktop/status_notifier_host.py"])
        self.host_lines = Lines(self.desktop, name)
        self.desktop.wait_for(host, lambda: "ready" in self.host_lines.new(), "a tray")
        return host

    def item(self) -> Rectangle | None:
        known = [line.split() for line in self.host_lines.new()]
        items = sum((word[0] == "item") - (word[0] == "gone") for word in known)
        pictures = any(word[0] == "icon" for word in known)
        if items == 0 or not pictures:
            return None
        return Rectangle(WIDTH - self.MARGIN - self.BAR, 0, self.BAR, self.BAR)


class ShellTest(DesktopTest):
    """A program of its own for each test, on the desktop of the class."""

    options = {"panel": "tint2", "bus": True}
    shell_type = Shell

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.injector = Injector(cls.desktop)

    def setUp(self):
        super().setUp()
        self.injector.move(WIDTH // 2, HEIGHT // 2)
        self.shell = self.shell_type(self.desktop, self.injector)

    def start_shell(self, **how):
        """Starts the program and waits for its item."""
        self.quillon = self.start_quillon(**how)
        self.shell.await_item()
        return self.quillon
