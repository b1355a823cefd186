"""What the item in the tray and its hub cost, beside two tray programs that people use.

    shell_cost.py       run by script/bench; it opens a desktop of its own

Times are taken from the pixels on the screen, in turns within one run: from the start of a program
until its icon is seen in the panel, from a click on it until something has opened below.
"""

import os
import pathlib
import statistics
import sys
import time

TREE = pathlib.Path(__file__).resolve().parents[1]
sys.path[:0] = [str(TREE / "script/lib"), str(TREE / "tests/desktop")]
BUILD = TREE / "build/bench"
os.environ.setdefault("QUILLON", str(BUILD / "quillon"))
os.environ.setdefault("X11_PROBE", str(BUILD / "tests/desktop/clients/x11_probe"))

import process_facts  # noqa: E402
from desktop import Failed, Interrupted, PrivateDesktop, wait_until  # noqa: E402
from shell_desktop import PixelWatch  # noqa: E402
from shell_view import Rectangle  # noqa: E402
from witnesses import QUILLON, Injector, await_idle  # noqa: E402

ROUNDS = 5
REOPENINGS = 5   # per round
IDLE = 20        # seconds over which wakeups are counted, longer than any interval of its timers
PANEL = Rectangle(0, 0, 1280, 30)
BELOW = Rectangle(780, 34, 500, 500)  # where what an icon opens comes to lie
FAR = (300, 700)
ICON = 22


class Program:
    def __init__(self, name, command, close):
        self.name, self.command, self._close = name, command, close
        self.start, self.first, self.again = [], [], []
        self.memory, self.wakeups, self.missed = [], [], []

    def open(self, hand, below) -> float:
        """The seconds from the click until something is seen. A click that brings nothing within a
        second is counted as missed, and made again."""
        hand.move(*self.place)
        while True:
            clicked = time.monotonic()
            hand.click(1)
            try:
                return wait_until(lambda: next((moment - clicked for moment, _, _ in below.changes()
                                                if moment > clicked), None), self.name, 1)
            except Failed:
                self.missed.append(1)

    def close(self, hand, below):
        """As its users would. Not every click is taken: one may be too fresh, or a double one."""
        def closed():
            hand.move(*(FAR if self._close == "elsewhere" else self.place))
            hand.click(1)
            try:
                return wait_until(lambda: rests(below) and below.all()[-1][1] == 0, "it is gone", 1)
            except Failed:
                return False
        wait_until(closed, f"what {self.name} has opened is closed")


def rests(watch):
    """Nothing has moved there for a while."""
    return time.monotonic() - watch.all()[-1][0] > 0.3


def first_change(watch, since):
    wait_until(watch.changes, "something on the screen")
    return watch.changes()[0][0] - since


def docked_icon(desktop, before) -> tuple[int, int]:
    """The middle of the icon: what is at the right end of all that has changed in the panel, where
    the taskbar has made room for it."""
    after = desktop.folder / "after.png"
    desktop.run("import", "-window", "root", "-crop", "1280x30+0+0", after)
    box = desktop.run("convert", before, after, "-compose", "difference", "-composite", "-trim",
                      "-format", "%X %Y %w %h", "info:").split()
    x, y, width, height = (int(value) for value in box)
    return x + width - ICON // 2, y + height // 2


def still(desktop, area):
    """Waits until nothing moves there any more."""
    watch = PixelWatch(desktop, area)
    wait_until(lambda: rests(watch), "a still screen")
    watch.close()


def measure(desktop, hand, program) -> None:
    hand.move(*FAR)
    still(desktop, PANEL)
    before = desktop.folder / "before.png"
    desktop.run("import", "-window", "root", "-crop", "1280x30+0+0", before)
    watch = PixelWatch(desktop, PANEL)
    started = time.monotonic()
    process = desktop.start(program.name, program.command)
    program.start.append(first_change(watch, started))
    watch.close()
    still(desktop, PANEL)
    await_idle(process)
    program.place = docked_icon(desktop, before)

    below = PixelWatch(desktop, BELOW)
    program.first.append(program.open(hand, below))
    for _ in range(REOPENINGS):
        wait_until(lambda: rests(below), "it is all there")
        program.close(hand, below)
        program.again.append(program.open(hand, below))
    wait_until(lambda: rests(below), "it is all there")
    program.close(hand, below)
    below.close()
    hand.move(*FAR)
    await_idle(process)
    program.memory.append(process_facts.resident_memory(process.pid))
    if len(program.wakeups) < 2:
        switches = process_facts.wakeups(process.pid)
        started = time.monotonic()
        wait_until(lambda: time.monotonic() - started > IDLE, "the time is over", 2 * IDLE)
        program.wakeups.append((process_facts.wakeups(process.pid) - switches)
                               / (time.monotonic() - started))
    desktop.end(process)


def table(programs) -> None:
    rows = (("start until the icon is seen, ms", "start", 1e3),
            ("click until the first opening is seen, ms", "first", 1e3),
            ("the same again, ms", "again", 1e3),
            ("resident memory, MiB", "memory", 1 / 2**20),
            ("wakeups per second, idle", "wakeups", 1))
    print(f"{'':44}" + "".join(f"{program.name:>22}" for program in programs))
    for title, figure, unit in rows:
        values = [statistics.median(getattr(program, figure)) * unit for program in programs]
        ratios = [f"{value:10.1f}  ({value / values[0]:5.2f})" if values[0] else f"{value:10.1f}"
                  for value in values]
        print(f"{title:44}" + "".join(f"{cell:>22}" for cell in ratios))
    print(f"{'clicks that opened nothing':44}"
          + "".join(f"{len(program.missed):>22}" for program in programs))


def main() -> None:
    with PrivateDesktop(panel="tint2", bus=True, audio=True) as desktop:
        # The mixer of the one knows only ALSA, which leads to the sound server.
        (desktop.home / ".asoundrc").write_text("pcm.!default pulse\nctl.!default pulse\n")
        settings = desktop.config / "volumeicon/volumeicon"
        settings.parent.mkdir(parents=True)
        settings.write_text("[StatusIcon]\nlmb_slider=true\n")
        hand = Injector(desktop)
        programs = [Program("Quillon", [QUILLON], "item"),
                    Program("pasystray", ["pasystray"], "elsewhere"),
                    Program("volumeicon", ["volumeicon"], "item")]
        for _ in range(ROUNDS):
            for program in programs:
                measure(desktop, hand, program)
        table(programs)


if __name__ == "__main__":
    try:
        main()
    except Failed as failure:
        sys.exit(f"shell_cost: {failure}")
    except Interrupted as interruption:
        sys.exit(interruption.status)
