"""The ground of the tests of the window switcher: programs with plain windows, and who is in front."""

import json
import re

from quillon_desktop import GestureTest
from window_desktop import Program
from witnesses import Failed, wait_until

SUITE = "com.pelorin.shared"
PREFIX = "WindowSwitcher_"
SAYS = ("Window switcher", "Scroll UP/RIGHT", "Scroll DOWN/LEFT", "Cycling from", "Switched to",
        "No windows to switch to", "Only one window available")


def write_switcher_settings(desktop, **settings) -> None:
    """Makes these the only stored settings of the window switcher."""
    path = desktop.config / SUITE / "defaults.json"
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_text(json.dumps({PREFIX + name: value for name, value in settings.items()}))


class Windows(Program):
    """A program whose windows the window manager has taken up."""

    def __init__(self, desktop, name: str, count=1, place=(300, 150, 400, 300)):
        super().__init__(desktop, name, count, place, **{"class": f"{name.lower()}/{name}"})
        self.name, self._desktop = name, desktop
        wait_until(lambda: set(self.windows) <= set(managed(desktop)), f"{name} is managed")

    def quit(self) -> None:
        self.process.stdin.close()
        self._desktop.end(self.process)
        wait_until(lambda: not set(self.windows) & set(managed(self._desktop)), f"{self.name} is gone")


def _windows(desktop, name: str) -> list[int]:
    value = desktop.run("xprop", "-root", "-notype", name)
    return [int(number, 16) for number in re.findall(r"0x[0-9a-f]+", value)]


def managed(desktop) -> list[int]:
    return _windows(desktop, "_NET_CLIENT_LIST")


def stacking(desktop) -> list[int]:
    """From the back to the front, as the window manager says."""
    return _windows(desktop, "_NET_CLIENT_LIST_STACKING")


def active(desktop) -> int:
    return next(iter(_windows(desktop, "_NET_ACTIVE_WINDOW")), 0)


def focused(desktop) -> int:
    return int(desktop.run("xdotool", "getwindowfocus"))


class SwitcherTest(GestureTest):
    """One notch a switch, at the left edge."""

    def setUp(self):
        super().setUp()
        self.opened = []

    def start(self, **settings):
        write_switcher_settings(self.desktop, **{"LeftEdge": True,
                                                 "EdgeScrollSteps": 1} | settings)
        self.quillon = self.start_quillon()
        for part in SAYS:
            self.quillon.may_say(part)
        self.quillon.wait_for_line("Window switcher monitoring started")

    def open(self, name: str, count=1, **how) -> Windows:
        windows = Windows(self.desktop, name, count, **how)
        self.addCleanup(self._close, windows)
        self.opened.append(windows)
        return windows

    @staticmethod
    def _close(windows: Windows) -> None:
        if windows.process.poll() is None:
            windows.quit()

    def owner(self, window: int) -> str:
        return next((one.name for one in self.opened if window in one.windows), hex(window))

    def state(self) -> tuple[str, str, str]:
        """Whose window is active, is on top, and has the keyboard."""
        order = stacking(self.desktop)
        return (self.owner(active(self.desktop)), self.owner(order[-1]) if order else "",
                self.owner(focused(self.desktop)))

    def expect_front(self, name: str) -> None:
        try:
            wait_until(lambda: self.state() == (name,) * 3, f"{name} is in front", 5)
        except Failed as failure:
            self.fail(f"{failure}, but (active, on top, focused) {self.state()}")

    def count(self, part: str) -> int:
        return sum(part in line for line in self.quillon.lines())

    def switches(self) -> int:
        return self.count("Switched to")

    def see_switches(self, act, count: int) -> None:
        """What is done leads to so many switches."""
        before = self.switches()
        act()
        wait_until(lambda: self.switches() >= before + count, f"{count} switches")
        self.assertEqual(self.switches(), before + count)

    def turn(self, direction: str, *names: str) -> None:
        """A notch for each of these, which come forward one after the other; each is seen through
        to the end of its second stage."""
        for name in names:
            before = self.switches()
            self.notch(direction)
            self.expect_front(name)
            wait_until(lambda: self.switches() > before, "the second stage")  # noqa: B023
            self.expect_front(name)

    def notch(self, direction: str) -> None:
        self.injector.scroll(direction, 1)
