"""Windows of several programs on a desktop, and who asks our services about them."""

import json
import re
import subprocess

from quillon_desktop import DesktopTest
from witnesses import PLAIN_WINDOWS, WINDOW_TOOL, Failed, ask_until, wait_until

ALL_WINDOWS, IGNORING_OTHERS = 1, 2
EVERY_DESKTOP = 0xFFFFFFFF


class Program:
    """One process with windows that do nothing; `said` is what they say of themselves."""

    def __init__(self, desktop, title: str, count=1, place=(100, 100, 300, 200), **said):
        said.setdefault("class", f"{title}/{title.capitalize()}")
        self.title = title
        self.process = desktop.start(
            title, [PLAIN_WINDOWS, title, count, *place, *(f"{k}={v}" for k, v in said.items())],
            stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True)
        self.windows = [int(self.process.stdout.readline().split()[1], 16) for _ in range(count)]

    @property
    def pid(self) -> int:
        return self.process.pid

    def close(self, index: int) -> None:
        self.process.stdin.write(f"close {index}\n")
        self.process.stdin.flush()


class WindowTool:
    """Our services, in a process of their own that does what it is told."""

    def __init__(self, desktop):
        self._process = desktop.start("window-tool", [WINDOW_TOOL], text=True,
                                      stdin=subprocess.PIPE, stdout=subprocess.PIPE)

    def __call__(self, *words):
        self._process.stdin.write(" ".join(map(str, words)) + "\n")
        self._process.stdin.flush()
        answer = self._process.stdout.readline()
        if not answer:
            raise Failed(f"the window tool ended at {words}")
        return json.loads(answer)


class WindowsTest(DesktopTest):
    """With programs that end with their test. What is looked at from outside goes by window id."""

    entries = {}  # desktop entries of the user, by id

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        folder = cls.desktop.home / ".local/share/applications"
        folder.mkdir(parents=True)
        for name, text in cls.entries.items():
            (folder / f"{name}.desktop").write_text(f"[Desktop Entry]\nType=Application\n{text}\n")
        cls.tool = WindowTool(cls.desktop)

    def setUp(self):
        super().setUp()
        if self.desktop.current_desktop() != 0:
            self.desktop.set_desktop(0)

    def open(self, title: str, count=1, **how) -> Program:
        """In front of all others."""
        program = Program(self.desktop, title, count, **how)
        self.addCleanup(self._end, program)
        wait_until(lambda: set(program.windows) <= set(self.stacking()), f"windows of {title}", 30)
        return program

    def _end(self, program: Program) -> None:
        self.desktop.end(program.process)
        wait_until(lambda: not set(program.windows) & set(self.stacking()), "they are gone", 30)

    # From outside

    def _ids(self, *arguments) -> list[int]:
        return [int(word, 16)
                for word in re.findall(r"0x[0-9a-f]+", self.desktop.run("xprop", *arguments))]

    def stacking(self) -> list[int]:
        """Front to back. xfwm4 does not publish it before there is a second window."""
        name = "_NET_CLIENT_LIST"
        return (self._ids("-root", f"{name}_STACKING") or self._ids("-root", name))[::-1]

    def keyboard(self) -> tuple[int, int | None]:
        """The window that has it, and the one that the window manager calls active."""
        active = self._ids("-root", "_NET_ACTIVE_WINDOW")
        return int(self.desktop.run("xdotool", "getwindowfocus")), active[0] if active else None

    def focus(self) -> int | None:
        focus, active = self.keyboard()
        return focus if focus == active else None

    def frame(self, window: int) -> list[int]:
        """Its place together with all that the window manager has put around it."""
        while True:
            tree = self.desktop.run("xwininfo", "-tree", "-id", window)
            root, parent = (int(re.search(rf"{name} window id: (\w+)", tree)[1], 16)
                            for name in ("Root", "Parent"))
            if parent == root:
                break
            window = parent
        text = self.desktop.run("xwininfo", "-id", window)
        return [int(re.search(rf"{name}: +(-?\d+)", text)[1])
                for name in ("Absolute upper-left X", "Absolute upper-left Y", "Width", "Height")]

    def states(self, window: int) -> str:
        return self.desktop.run("xprop", "-id", window, "_NET_WM_STATE")

    def desktop_of(self, window: int) -> int:
        text = self.desktop.run("xprop", "-id", window, "-notype", "_NET_WM_DESKTOP")
        return int(text.split(" = ")[1])

    # By the hand of the user

    def use(self, window: int) -> None:
        """Clicks into it, so that it has been used later than anything else."""
        # A window manager may refuse while it still arranges what has just appeared.
        ask_until(lambda: self.desktop.run("wmctrl", "-i", "-a", window),
                  lambda: self.stacking()[0] == window, f"{window:#x} is in front")
        x, y, width, height = self.frame(window)
        self.desktop.run("xdotool", "mousemove", x + width // 2, y + height // 2)

        def has_taken_it():
            # One that is about to come forward may not be there for the first.
            self.desktop.run("xdotool", "click", 1)
            return self.focus() == window
        wait_until(has_taken_it, f"{window:#x} has the keyboard")

    def minimise(self, window: int) -> None:
        self.desktop.run("xdotool", "windowminimize", window)
        wait_until(lambda: "HIDDEN" in self.states(window), "it is minimised")

    def move_to_desktop(self, window: int, number: int) -> None:
        self.desktop.run("xdotool", "set_desktop_for_window", window,
                         -1 if number == EVERY_DESKTOP else number)
        wait_until(lambda: self.desktop_of(window) == number, f"it is on desktop {number}")

    # What is expected

    def expect_focus(self, window: int) -> None:
        try:
            wait_until(lambda: self.focus() == window, f"{window:#x} has the keyboard")
        except Failed as failure:
            self.fail(f"{failure}; {self.keyboard()}; in front {self.stacking()[:4]}")

    def expect_order(self, *windows: int) -> None:
        """Of these, front to back."""
        def order():
            return [each for each in self.stacking() if each in windows]
        try:
            wait_until(lambda: order() == list(windows), "the order of the windows")
        except Failed:
            self.assertEqual(order(), list(windows))

    def listed(self) -> list[dict]:
        return self.tool("list")

    def processes(self, on_screen=True) -> list[int]:
        return [each["process"] for each in self.listed() if each["on screen"] == on_screen]
