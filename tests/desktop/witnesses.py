"""Who watches from outside: the wheel, the desktops and the clients, without a word of Quillon's."""

import json
import math
import os
import pathlib
import re
import shutil
import subprocess
import sys
import time

TREE = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(TREE / "script/lib"))

import desktop_parts as parts  # noqa: E402,F401
import wheel  # noqa: E402
from desktop import Failed, PrivateDesktop, wait_until  # noqa: E402

BUTTONS = {"up": 4, "down": 5, "left": 6, "right": 7}
SCROLLS = {"up": "scroll 0 1", "down": "scroll 0 -1", "left": "scroll -1 0", "right": "scroll 1 0"}
FENCE = 9  # a mouse button that no test scrolls or clicks with


def built(name: str, place: str) -> pathlib.Path:
    """A program of the build under test; CMake says where, by hand it is the debug build's."""
    return pathlib.Path(os.environ.get(name) or TREE / "build/debug" / place)


AUDIO_TOOL = built("AUDIO_TOOL", "tests/Platform/Linux/audio_tool")
QUILLON = built("QUILLON", "quillon")
CONTACT_PLAYER = built("CONTACT_PLAYER", "tests/desktop/clients/contact_player.so")
GTK3_CLIENT = built("GTK3_CLIENT", "tests/desktop/clients/gtk3_client")
KEY_GRABBER = built("KEY_GRABBER", "tests/desktop/clients/key_grabber")
KEY_POSTER = built("KEY_POSTER", "tests/desktop/clients/key_poster")
PLAIN_WINDOWS = built("PLAIN_WINDOWS", "tests/desktop/clients/plain_windows")
QT6_CLIENT = built("QT6_CLIENT", "tests/desktop/clients/qt6_client")
SHELL_WITH_SCREEN = built("SHELL_WITH_SCREEN", "tests/desktop/clients/shell_with_screen")
PRESS_TAP = built("PRESS_TAP", "tests/desktop/clients/press_tap")
REVERSE_TAP = built("REVERSE_TAP", "tests/desktop/clients/reverse_tap")
WATCHDOG = built("WATCHDOG", "quillon-watchdog")
X11_PROBE = built("X11_PROBE", "tests/desktop/clients/x11_probe")
TOUCH_PROBE = built("TOUCH_PROBE", "tests/desktop/clients/touch_probe")
WINDOW_TOOL = built("WINDOW_TOOL", "tests/Platform/Linux/window_tool")


def wheel_is_free(desktop) -> bool:
    """Whether any other client could take the wheel for the whole screen at this moment."""
    return wheel.is_free(desktop.environment)


def await_wheel(desktop, state: str, limit=10.0) -> None:
    wait_until(lambda: wheel_is_free(desktop) == (state == "free"), f"the wheel is {state}", limit)


def ask_until(ask, condition, what: str, limit=10.0, again=1.0):
    """Asks, and once more each `again` seconds until the condition is true; answers its value. For
    what other programs are asked for, who may not be up to it yet."""
    asked = -math.inf

    def check():
        nonlocal asked
        if time.monotonic() - asked >= again:
            asked = time.monotonic()
            ask()
        return condition()

    return wait_until(check, what, limit)


def await_idle(process: subprocess.Popen, limit=10.0) -> None:
    """Until each thread of it waits for something, and has not been awake for a tenth of a second.

    What it would do about all that has happened, it has then done."""
    def activity():
        threads = []
        for task in pathlib.Path(f"/proc/{process.pid}/task").iterdir():
            try:
                status = (task / "status").read_text()
            except (FileNotFoundError, ProcessLookupError):  # it has ended meanwhile
                continue
            threads += re.findall(r"^(?:State:\t\w|.*voluntary_ctxt_switches:.*)", status, re.MULTILINE)
        return threads

    since, before = time.monotonic(), None

    def rests():
        nonlocal since, before
        now = activity()
        if now != before or any("State" in line and line[-1] != "S" for line in now):
            since, before = time.monotonic(), now
        return time.monotonic() - since > 0.1

    wait_until(rests, "the program rests", limit)


class Injector:
    """A hand at the mouse. Each of its calls returns when the X server has done it."""

    def __init__(self, desktop):
        self._process = desktop.start("injector", [X11_PROBE, "inject"], text=True,
                                      stdin=subprocess.PIPE, stdout=subprocess.PIPE)

    def move(self, x: int, y: int) -> None:
        self._do(f"move {x} {y}")

    def scroll(self, direction: str, notches: int) -> None:
        """As fast as each of them is dealt with."""
        self._do(f"wheel {BUTTONS[direction]} {notches}")

    def press(self, button: int) -> None:
        self._do(f"press {button}")

    def release(self, button: int) -> None:
        self._do(f"release {button}")

    def click(self, button: int) -> None:
        self.press(button)
        self.release(button)

    def await_up(self) -> None:
        """Until no button of any device is down."""
        self._do("await-up")

    def quietly(self, command: str) -> None:
        """As a device would: the server has no reason to write to any program."""
        self._do(f"quietly {command}")

    def _do(self, command: str) -> None:
        self._process.stdin.write(f"{command}\n")
        self._process.stdin.flush()
        if (reply := self._process.stdout.readline()) != "ok\n":
            raise Failed(f"the injector says {reply!r} to {command!r}")


class Lines:
    """What a started program prints, from a point on that can be moved."""

    def __init__(self, desktop, name: str):
        self._desktop, self._name, self._seen = desktop, name, 0
        self._read, self._lines = 0, []  # bytes that were read, and the lines that they make

    def all(self) -> list[str]:
        # A last line without its end is still being written.
        complete, end, _ = self._desktop.log_from(self._name, self._read).rpartition(b"\n")
        self._read += len(complete + end)
        if end:
            self._lines += complete.decode(errors="replace").split("\n")
        return self._lines

    def new(self) -> list[str]:
        return self.all()[self._seen:]

    def forget(self) -> None:
        self._seen = len(self.all())


class Client:
    """An ordinary program with one window, on all desktops, that prints what it receives; with
    `options` "--all" also motion, coming and going, and double clicks. The hand is an Injector or
    whatever else clicks."""

    def __init__(self, desktop, hand, program: pathlib.Path, name: str, place, options=()):
        self._hand, self._lines = hand, Lines(desktop, name)
        self.process = desktop.start(name, [program, *options, name, *place])
        ready = "ready {} {} {} {}".format(*place)
        desktop.wait_for(self.process, lambda: ready in self._lines.all(), f"{ready!r}")
        desktop.show_everywhere(wait_until(lambda: desktop.window(name), f"the window of {name}"))

    def forget(self) -> None:
        self._lines.forget()

    def received(self) -> list[str]:
        """What it got since the last call, or forget(), with the pointer over it."""
        self.await_click()
        # The fence's own release may come late: it is left out whenever it comes.
        fences = (f"press {FENCE}", f"release {FENCE}", f"double {FENCE}")
        received = [line for line in self._lines.new() if line not in fences]
        self.forget()
        return received

    def count(self, start: str) -> int:
        """How many lines it has printed that begin like this."""
        return sum(line.startswith(start) for line in self._lines.all())

    def last(self, kind: str) -> str | None:
        """The last line of this kind that it has printed."""
        return next((line for line in reversed(self._lines.all()) if line.split()[0] == kind), None)

    def await_click(self, hand=None) -> None:
        """Until it has got a click, of which it makes nothing, that is made after everything else:
        then nothing is on its way. The pointer must be over it."""
        fence = f"press {FENCE}"
        before = self._lines.new().count(fence)
        (hand or self._hand).click(FENCE)
        wait_until(lambda: self._lines.new().count(fence) > before, "the client's next click")


class DesktopHistory:
    """Every change of the current desktop, as the window manager publishes it."""

    def __init__(self, desktop):
        self._desktop, self._lines = desktop, Lines(desktop, "desktop-history")
        desktop.start("desktop-history",
                      ["xprop", "-root", "-spy", "-notype", "_NET_CURRENT_DESKTOP"])
        wait_until(self._lines.new, "the first desktop")
        self.forget()

    def forget(self) -> None:
        self._lines.forget()

    def changes(self) -> list[int]:
        """Where it went since the last forget(). A value is read after its change, so of two
        quick ones the first may read like the second."""
        values = (re.search(r"= (\d+)$", line) for line in self._lines.new())
        return [int(value[1]) for value in values if value]

    def go_to(self, number: int) -> None:
        """Lets the window manager go there and forgets the way."""
        if self._desktop.current_desktop() != number:
            self._desktop.set_desktop(number)
            wait_until(lambda: self.changes()[-1:] == [number], "the history knows the desktop")
        self.forget()

    def expect(self, number: int, limit=10.0) -> None:
        """One change has brought us there."""
        wait_until(self.changes, f"the desktop changes, to {number}", limit)
        if self.changes() != [number]:
            raise AssertionError(f"not to {number} alone, but {self.changes()}")
        self.forget()

    def remainder(self, fence: int | None = None) -> list[int]:
        """What happened since the last forget(), to the end: a change, to `fence`, that is made
        after everything else ends it."""
        if fence is None:
            fence = (self._desktop.current_desktop() + 1) % self._desktop.desktop_count()
        self._desktop.set_desktop(fence)
        wait_until(lambda: self.changes()[-1:] == [fence], "the history knows the desktop")
        changes = self.changes()[:-1]
        self.forget()
        return changes


def write_settings(desktop, settings: dict) -> pathlib.Path:
    """Makes these the only stored settings of a user who has not started the program before."""
    shutil.rmtree(desktop.home / ".local/share/com.pelorin.PelorinApp", ignore_errors=True)
    path = desktop.config / "com.pelorin.PelorinApp/defaults.json"
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_text(json.dumps(settings))
    return path
