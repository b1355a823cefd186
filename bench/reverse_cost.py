"""What scrolling the other way costs, with Quillon and with imwheel, which takes each notch from
the server and sends the opposite one.

    reverse_cost.py       run by script/bench; it opens a desktop of its own

Processor time is read from the system; whoever turns the wheel is not counted.
"""

import contextlib
import functools
import os
import pathlib
import statistics
import sys

TREE = pathlib.Path(__file__).resolve().parents[1]
sys.path[:0] = [str(TREE / "script/lib"), str(TREE / "tests/desktop")]
BUILD = TREE / "build/bench"
os.environ.setdefault("QUILLON", str(BUILD / "quillon"))
os.environ.setdefault("X11_PROBE", str(BUILD / "tests/desktop/clients/x11_probe"))
os.environ.setdefault("SCROLL_LATENCY", str(BUILD / "bench/scroll_latency"))

from desktop import Failed, Interrupted, PrivateDesktop, wait_until  # noqa: E402
from process_facts import children, exact_processor_time  # noqa: E402
from quillon_desktop import HEIGHT, WIDTH, Quillon  # noqa: E402
from witnesses import await_idle, await_wheel, write_settings  # noqa: E402

ROUNDS = 5
NOTCHES = 200          # per round, one every ten milliseconds
SPINS = (5, 2, 1)      # milliseconds between notches that wait for nothing
WHEEL = "Virtual core XTEST pointer"  # what turns here
IMWHEEL = '".*"\nNone, Up, Button5\nNone, Down, Button4\n'


@contextlib.contextmanager
def nothing(_desktop):
    yield []


@contextlib.contextmanager
def quillon(desktop, is_reversing=True):
    write_settings(desktop, {"ScrollReverseMouse": is_reversing})
    program = Quillon(desktop)
    program.wait_for_line("Setup complete")
    numbers = "1 2 3 5 4" if is_reversing else "1 2 3 4 5"
    wait_until(lambda: desktop.run("xinput", "get-button-map", WHEEL).startswith(numbers),
               f"the wheel's buttons are {numbers}")
    await_idle(program.process)
    yield [program.process.pid, *children(program.process.pid)]
    program.stop()


@contextlib.contextmanager
def imwheel(desktop):
    (desktop.home / ".imwheelrc").write_text(IMWHEEL)
    process = desktop.start("imwheel", ["imwheel", "--detach", "--buttons", "4 5"])
    await_wheel(desktop, "taken")
    yield [process.pid]
    desktop.end(process)


class Case:
    """One row of the table."""

    def __init__(self, name: str, running, is_reversing=True):
        self.name, self.running, self._is_reversing = name, running, is_reversing
        self._medians, self._p99s = [], []
        self._program = self._server = self._sent = 0
        self._right = self._wrong = 0
        self._spun = {apart: [0, 0] for apart in SPINS}

    def measure(self, desktop) -> None:
        with self.running(desktop) as pids:
            before = [seconds(pids), seconds([desktop.server.pid])]
            median, p99, _, *ways = turn(desktop, "turned", NOTCHES)
            after = [seconds(pids), seconds([desktop.server.pid])]
            self._medians.append(float(median))
            self._p99s.append(float(p99))
            self._program += after[0] - before[0]
            self._server += after[1] - before[1]
            self._sent += NOTCHES
            right, wrong = self._sorted(ways)
            self._right += right
            self._wrong += wrong
            for apart, spun in self._spun.items():
                for index, count in enumerate(self._sorted(turn(desktop, "spin", NOTCHES, apart))):
                    spun[index] += count

    def _sorted(self, ways) -> tuple[int, int]:
        """Those that went as they should, and those that did not."""
        turned, straight = map(int, ways)
        return (turned, straight) if self._is_reversing else (straight, turned)

    def median(self) -> float:
        return statistics.median(self._medians)

    def cost_row(self, base) -> str:
        thousands = self._sent / 1000
        return (f"{self.name:30} {self.median() / base.median():6.2f} {self.median():8.0f} "
                f"{statistics.median(self._p99s):8.0f} {self._program / thousands * 1000:10.2f} "
                f"{self._server / thousands * 1000:10.2f}")

    def arrival_row(self) -> str:
        counts = [(self._right, self._wrong), *self._spun.values()]
        return f"{self.name:30}" + "".join(f"{right:>9} {wrong:>5} {self._sent - right - wrong:>5}"
                                           for right, wrong in counts)


def seconds(pids) -> float:
    return sum(map(exact_processor_time, pids))


def turn(desktop, *arguments) -> list[str]:
    return desktop.run(os.environ["SCROLL_LATENCY"], *arguments, limit=60).split()


def main() -> None:
    cases = [Case("no such program", nothing, is_reversing=False),
             Case("Quillon that reverses nothing", functools.partial(quillon, is_reversing=False),
                  is_reversing=False),
             Case("Quillon", quillon), Case("imwheel", imwheel)]
    with PrivateDesktop() as desktop:
        desktop.move_pointer(WIDTH // 2, HEIGHT // 2)
        for _ in range(ROUNDS):
            for case in cases:
                case.measure(desktop)
    print(f"\nA notch reaches the program under the pointer, microseconds; and "
          f"processor time for a thousand, milliseconds\n"
          f"{'':30} {'ratio':>6} {'median':>8} {'p99':>8} {'program':>10} {'X server':>10}")
    for case in cases:
        print(case.cost_row(cases[0]))
    print(f"\nOf {ROUNDS * NOTCHES} notches, those that arrive as they should, the other way, and "
          f"not at all (or, below 0, twice)\n{'':30}{'one every 10 ms':>21}"
          + "".join(f"{f'every {apart} ms':>21}" for apart in SPINS))
    for case in cases:
        print(case.arrival_row())


if __name__ == "__main__":
    try:
        main()
    except Failed as failure:
        sys.exit(f"reverse_cost: {failure}")
    except Interrupted as interruption:
        sys.exit(interruption.status)
