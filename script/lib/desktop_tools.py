"""Looking at a desktop and using it, all through independent tools."""

import re
import subprocess

from desktop_children import Failed, wait_until

BUTTONS = {"up": 4, "down": 5, "left": 6, "right": 7}


class DesktopTools:
    """What PrivateDesktop can be asked to do while it is open; `environment` leads to it."""

    environment: dict[str, str]

    def run(self, *arguments, limit=10.0) -> str:
        """Runs a short command in the desktop and answers what it printed; Failed if it fails."""
        command = [str(argument) for argument in arguments]
        try:
            done = subprocess.run(command, env=self.environment, stdin=subprocess.DEVNULL,
                                  capture_output=True, text=True, timeout=limit)
        except subprocess.TimeoutExpired:
            raise Failed(f"not within {limit:g} s: {' '.join(command)}") from None
        if done.returncode != 0:
            raise Failed(f"status {done.returncode} of {' '.join(command)}: {done.stderr.strip()}")
        return done.stdout

    # As the window manager publishes it

    def root_property(self, name: str) -> str:
        """The value as xprop prints it, empty when there is none."""
        return self.run("xprop", "-root", "-notype", name).partition(" = ")[2].strip()

    def has_window_manager(self) -> bool:
        """Whether one runs: a killed one leaves its property, but not the window it names."""
        name = "_NET_SUPPORTING_WM_CHECK"
        found = re.search(r"window id # (\w+)", self.run("xprop", "-root", name))
        try:
            return bool(found) and found[1] in self.run("xprop", "-id", found[1], name)
        except Failed:
            return False

    def desktop_count(self) -> int:
        return int(self.root_property("_NET_NUMBER_OF_DESKTOPS") or 0)

    def current_desktop(self) -> int | None:
        """Counted from 0; None while the window manager publishes none."""
        value = self.root_property("_NET_CURRENT_DESKTOP")
        return int(value) if value else None

    def set_desktop(self, number: int) -> None:
        self.run("wmctrl", "-s", number)
        wait_until(lambda: self.current_desktop() == number, f"desktop {number} is current")

    def window(self, title: str) -> str | None:
        """The id of the first window whose title contains this text."""
        if "0x" not in self.run("xprop", "-root", "_NET_CLIENT_LIST"):
            return None  # wmctrl calls an empty list an error
        for line in self.run("wmctrl", "-l").splitlines():
            window, _desktop, _host, *name = line.split(None, 3)
            if name and title in name[0]:
                return window
        return None

    def place(self, window: str, x: int, y: int, width=-1, height=-1) -> None:
        """Asks the window manager to move a window's frame, and to resize it unless -1."""
        self.run("wmctrl", "-i", "-r", window, "-e", f"0,{x},{y},{width},{height}")

    def show_everywhere(self, window: str) -> None:
        """Puts a window on every desktop."""
        self.run("xdotool", "set_desktop_for_window", window, "-1")
        wait_until(lambda: "= 4294967295" in self.run("xprop", "-id", window, "_NET_WM_DESKTOP"),
                   f"window {window} is on every desktop")

    # The screen

    def set_monitors(self, rectangles) -> None:
        """Divides the screen into monitors, each (x, y, width, height); the first is primary."""
        old = self.run("xrandr", "--listmonitors").splitlines()[1:]
        for name in (line.split()[1].lstrip("+*") for line in old):
            if name.startswith("part"):
                self.run("xrandr", "--delmonitor", name)
        output = self.run("xrandr", "--listmonitors").splitlines()[1].split()[-1]
        for number, (x, y, width, height) in enumerate(rectangles):
            millimetres = width * 254 // 960, height * 254 // 960
            self.run("xrandr", "--setmonitor", f"{'*' if number == 0 else ''}part{number}",
                     f"{width}/{millimetres[0]}x{height}/{millimetres[1]}+{x}+{y}",
                     output if number == 0 else "none")

    def screenshot(self, path) -> None:
        self.run("import", "-window", "root", path)

    # Input

    def pointer(self) -> tuple[int, int]:
        words = dict(word.split(":") for word in self.run("xdotool", "getmouselocation").split())
        return int(words["x"]), int(words["y"])

    def move_pointer(self, x: int, y: int) -> None:
        """Its last pixel is injected motion; what xdotool does before is a warp, which those
        who listen to raw events never see."""
        step = 1 if x > 0 else -1
        self.run("xdotool", "mousemove", x - step, y, "mousemove_relative", "--", step, 0)
        wait_until(lambda: self.pointer() == (x, y), f"the pointer is at {x},{y}")

    def scroll(self, direction: str, notches: int, gap=0.02) -> None:
        """Turns the wheel at the pointer, with at least a millisecond between notches: faster,
        an X server loses injected events while a grab is frozen."""
        self.run("xdotool", "click", "--repeat", notches, "--delay", max(1, round(gap * 1000)),
                 BUTTONS[direction])
