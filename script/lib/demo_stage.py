"""The stage of script/demo: a furnished private desktop, a witness and a record.

The witness is xev, which knows nothing of Quillon and writes down every event that its window
receives; it lies over the left band on every desktop. Which desktop is current is what the
window manager publishes, read by xprop. What the wheel probe says is what any other client of
the display would find."""

import pathlib
import re
import sys

import scene
from desktop import Failed, PrivateDesktop, wait_until
from shell_view import ShellView

PROBE = pathlib.Path(__file__).with_name("wheel_probe.py")
FENCE = 9  # a mouse button that nobody on the stage uses
HAND = 0.04  # seconds between the notches of a hand that turns a wheel


class Stage:
    # Points to scroll at: over the witness in the left band, outside of every
    # band, and in the right band.
    left_band, outside, right_band = (12, 670), (640, 670), (1267, 670)
    bottom_band, beside_right_band = (640, 755), (1215, 670)

    def __init__(self, desktop: PrivateDesktop, program, pictures: pathlib.Path):
        self.desktop = desktop
        self.view = ShellView(desktop)
        self._program = program
        self._quillon = desktop.start("quillon", [program])
        self._pictures = pictures
        self._taken = 0
        self._record = desktop.folder / "record.txt"
        self._record.touch()
        scene.paint_wallpaper(desktop)
        terminal = scene.open_terminal(desktop, ["tail", "-n", "+1", "-f", self._record],
                                       (76, 66, 690, 450))
        witness = scene.open_window(
            desktop, ["stdbuf", "-oL", "xev", "-name", "A client", "-event", "button"], "A client",
            (0, 560, 1280, 200))
        for window in (terminal, witness):
            desktop.show_everywhere(window)
        scene.open_calculator(desktop)
        self._wait_for_quillon()

    def _wait_for_quillon(self) -> None:
        """It shows that it runs by taking the wheel when the pointer comes to a band."""
        def takes_the_wheel():
            self.go_to(self.left_band)
            return self.wheel_is("taken")
        self.expect(takes_the_wheel, "Quillon runs, and takes the wheel in the left band", 10)

    def start_again(self) -> None:
        """With what has been written into its settings since."""
        self.desktop.end(self._quillon)
        self._quillon = self.desktop.start("quillon-again", [self._program])
        self._wait_for_quillon()

    def say(self, text: str = "") -> None:
        """For the reader of the output, and for the one who watches."""
        print(text, flush=True)
        with self._record.open("a") as record:
            print(text, file=record)

    def expect(self, condition, what: str, limit=5.0) -> None:
        try:
            self.desktop.wait_for(self._quillon, condition, what, limit)
        except Failed:
            self.say(f"   FAILED  {what}")
            self.picture("failed")
            raise
        self.say(f"   ok  {what}")

    def go_to(self, point) -> None:
        self.desktop.move_pointer(*point)

    def click(self, button=1) -> None:
        self.desktop.run("xdotool", "click", button)

    def expect_picture_of_tooltip(self) -> None:
        """The pointer rests on the item until a word about it appears below."""
        shots = (self.desktop.folder / "before.ppm", self.desktop.folder / "now.ppm")
        self.desktop.screenshot(shots[0])

        def changed():
            self.desktop.screenshot(shots[1])
            return shots[0].read_bytes() != shots[1].read_bytes()
        self.expect(changed, "a word about it appears")
        self.picture("tooltip")

    def wheel_is(self, state: str) -> bool:
        return self.desktop.run(sys.executable, PROBE).strip() == state

    def turn_wheel(self, direction: str, notches: int) -> int:
        """Scrolls at the pointer; answers how many wheel events reached the witness meanwhile."""
        before = self.received(4, 5, 6, 7)
        self.desktop.scroll(direction, notches, HAND)
        return self.received(4, 5, 6, 7) - before

    def received(self, *buttons) -> int:
        """How many presses of these the witness has got. The pointer must be over it.

        A click of an unused button asks: when the witness has that, whatever else was on its way
        to it has arrived."""
        fences = self._received(FENCE)
        self.desktop.run("xdotool", "click", FENCE)
        wait_until(lambda: self._received(FENCE) > fences, "the client's next event")
        return self._received(*buttons)

    def _received(self, *buttons) -> int:
        presses = re.findall(r"^ButtonPress event.*?button (\d+)", self.desktop.log("A client"),
                             re.MULTILINE | re.DOTALL)
        return sum(int(button) in buttons for button in presses)

    def picture(self, name: str) -> None:
        """Keeps the screen as soon as it stands still, with the pointer drawn in."""
        self._taken += 1
        shot, before = self.desktop.folder / "shot.ppm", b""

        def still():
            nonlocal before
            self.desktop.screenshot(shot)
            last, before = before, shot.read_bytes()
            return last == before
        wait_until(still, "a screen that stands still")
        x, y = self.desktop.pointer()
        arrow = " ".join(f"{x + dx},{y + dy}" for dx, dy in
                         ((0, 0), (0, 24), (6, 18), (10, 28), (15, 26), (11, 16), (18, 16)))
        self.desktop.run("convert", shot, "-fill", "#ffcf33", "-stroke", "black", "-draw",
                         f"polygon {arrow}", self._pictures / f"{self._taken}-{name}.png")
