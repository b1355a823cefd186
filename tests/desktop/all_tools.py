"""The ground of a test of all input tools at once: who counts, from outside, what each one does."""

import collections
import os
import re
import select

import switcher_desktop
from key_grabber import NEXT, PLAY, PREVIOUS, VOLUME_DOWN, VOLUME_UP, KeyGrabber
from media_players import MediaPlayer
from press_tap import left_button
from quillon_desktop import ClientTest
from sound_servers import NORM, PulseAudio
from witnesses import CONTACT_PLAYER, FENCE, Failed, Lines, wait_until

ROW = 31  # desktops
THREE = 3  # fingers that make a left press a middle one

# What each tool says by design, and as what it is counted.
SAYINGS = (("click detected at", "heard"), ("Click count", "counted"), ("Cycling from", "cycled"),
           ("Switched to", "switched"), ("Play/Pause", PLAY), ("Next Track", NEXT),
           ("Previous Track", PREVIOUS))


class Tally:
    """What a program prints, counted as it is read: each line as what `name` makes of it, as often
    as that says; it answers (name, times) or None."""

    def __init__(self, desktop, log: str, name):
        self._lines, self._name, self._seen = Lines(desktop, log), name, 0
        self._counts = collections.Counter()

    def counts(self) -> collections.Counter:
        lines = self._lines.all()
        for line in lines[self._seen:]:
            if named := self._name(line):
                self._counts[named[0]] += named[1]
        self._seen = len(lines)
        return self._counts

    def __getitem__(self, name: str) -> int:
        return self.counts()[name]

    def sum(self, start: str) -> int:
        return sum(count for name, count in self.counts().items() if name.startswith(start))


def input_line(line: str):
    """Buttons, scrolls and keys that a client gets; not the fence."""
    is_input = line.split()[0] in ("press", "release", "scroll", "key") if line else False
    return (line, 1) if is_input and line.split()[1] != str(FENCE) else None


def saying(line: str):
    if ended := re.search(r"(\d+) click\(s\) detected", line):
        return "ended", int(ended[1])
    return next(((name, 1) for part, name in SAYINGS if part in line), None)


class Fingers:
    """On a trackpad that a library of the test plays, for a program with this environment."""

    def __init__(self, desktop):
        pipe = desktop.folder / "contacts"
        paths = (pipe, f"{pipe}.seen")
        for path in paths:
            os.mkfifo(path)
        self._frames, self._seen = (open(path, "r+b", buffering=0) for path in paths)
        self.environment = {"QUILLON_TOUCH_LIBRARY": str(CONTACT_PLAYER),
                            "QUILLON_TEST_CONTACTS": str(pipe)}

    def rest(self, number: int) -> None:
        """So many. The program's monitor has been told; the button may still have to be taken."""
        self._frames.write(f"{number}\n".encode())
        if not select.select([self._seen], [], [], 10)[0]:
            raise Failed("nobody looks at the fingers")
        self._seen.read(1)

    def close(self) -> None:
        self._frames.close()
        self._seen.close()


class AllToolsTest(ClientTest):
    """The desktop switcher is at the left, the window switcher at the bottom, the volume at both
    sides, media keys at the top. Wheels are reversed, three fingers' press is a middle click."""

    options = {"bus": True}

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.desktop.run("wmctrl", "-n", ROW)
        wait_until(lambda: cls.desktop.desktop_count() == ROW, "a long row of desktops")
        cls.sound = PulseAudio(cls.desktop)
        cls.sound.start()

    def start_all(self) -> None:
        self.sound.set_volume(NORM // 2)
        self.history.go_to(ROW // 2)
        self.grabber = KeyGrabber(self.desktop, PLAY, NEXT, PREVIOUS, VOLUME_UP, VOLUME_DOWN)
        self.addCleanup(self.grabber.stop)
        self.bystander = MediaPlayer(self.desktop, "bystander", "Playing")
        self.addCleanup(self.bystander.stop)
        self.fingers = Fingers(self.desktop)
        self.addCleanup(self.fingers.close)
        self.tallies = {name: Tally(self.desktop, name, input_line) for name in ("GTK 3", "Qt 6")}
        self.changes = Tally(self.desktop, "desktop-history",
                             lambda line: ("change", 1) if "= " in line else None)
        switcher_desktop.write_switcher_settings(self.desktop, BottomEdge=True, EdgeScrollSteps=1)
        self.quillon = self.start_quillon(
            "Left", Tool4ScrollSensitivity=1.0, Tool5LeftEdge=True, Tool5RightEdge=True,
            MediaControlTopEdge=True, MediaControlLeftButton=True, ScrollReverseMouse=True,
            environment=self.fingers.environment)
        for part in (*switcher_desktop.SAYS, "Middle mouse click simulated", "Edge check",
                     "Click count", "Play/Pause", "Next Track", "Previous Track"):
            self.quillon.may_say(part)
        self.says = Tally(self.desktop, self.quillon.name, saying)
        for part in ("Window switcher monitoring started", "Event monitor successfully created"):
            self.quillon.wait_for_line(part)
        wait_until(self.is_reversed, "the wheel is reversed")

    def is_reversed(self) -> bool:
        numbers = self.desktop.run("xinput", "get-button-map", "Virtual core XTEST pointer")
        return numbers.startswith("1 2 3 5 4 7 6")

    def keys_and_buttons_down(self) -> list[str]:
        """Of every device that is not merely made up of others, as the server says."""
        devices = re.findall(r"id=(\d+)\s+\[slave", self.desktop.run("xinput", "list", "--short"))
        return [f"{device}: {line.strip()}" for device in devices
                for line in self.desktop.run("xinput", "query-state", device).splitlines()
                if line.endswith("=down")]

    def await_left_button(self, contacts: int) -> None:
        state = "taken" if contacts == THREE else "free"
        wait_until(lambda: left_button(self.desktop) == state, f"the left button is {state}")
