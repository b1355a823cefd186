"""What a switch to another application costs, up to the request to the window manager: the list of
windows, a look at the application of each, the front application, and the request.

    window_cost.py       run by script/bench; it opens a desktop of its own
"""

import os
import pathlib
import statistics
import sys
import time

TREE = pathlib.Path(__file__).resolve().parents[1]
sys.path[:0] = [str(TREE / "script/lib"), str(TREE / "tests/desktop")]
BUILD = TREE / "build/bench"
os.environ.setdefault("PLAIN_WINDOWS", str(BUILD / "tests/desktop/clients/plain_windows"))
os.environ.setdefault("WINDOW_TOOL", str(BUILD / "tests/Platform/Linux/window_tool"))

from desktop import Failed, Interrupted, PrivateDesktop, wait_until  # noqa: E402
from window_desktop import Program, WindowTool  # noqa: E402

SWITCHES = 200
GOAL = 5  # milliseconds


def by_wmctrl(desktop, program: Program) -> float:
    """What a shell script would do: milliseconds for the list and for the request."""
    start = time.monotonic()
    desktop.run("wmctrl", "-l", "-p", "-x")
    desktop.run("wmctrl", "-i", "-a", program.windows[0])
    return (time.monotonic() - start) * 1000


def measure(desktop, count: int) -> None:
    """With so many windows: two programs have one each, which take turns, and a third the rest."""
    programs = [Program(desktop, "first"), Program(desktop, "second")]
    programs += [Program(desktop, "rest", count - 2)] if count > 2 else []
    tool = WindowTool(desktop)
    wait_until(lambda: len(tool("list") or []) == count, f"{count} windows", 60)
    times = sorted(tool("measure", SWITCHES, programs[0].pid, programs[1].pid))
    median = statistics.median(times) / 1000
    instead = statistics.median(by_wmctrl(desktop, programs[number % 2]) for number in range(20))
    print(f"{count:4} windows: median {median:.2f} ms, p99 {times[len(times) * 99 // 100] / 1000:.2f} ms "
          f"(goal: {GOAL} ms); {median / instead:.2f} of what wmctrl takes, {instead:.1f} ms")
    for program in programs:
        desktop.end(program.process)


def main() -> None:
    with PrivateDesktop() as desktop:
        for count in (2, 20, 200):
            measure(desktop, count)


if __name__ == "__main__":
    try:
        main()
    except Failed as failure:
        sys.exit(f"window_cost: {failure}")
    except Interrupted as interruption:
        sys.exit(interruption.status)
