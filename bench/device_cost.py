"""What a 1 kHz mouse with scroll axes costs, with Quillon and without, outside a band and inside.

Run by script/bench. Processor time is that of the X server and of Quillon with its watchdog, read
from the system; whoever moves the mouse is not counted.
"""

import os
import pathlib
import statistics
import sys

TREE = pathlib.Path(__file__).resolve().parents[1]
sys.path[:0] = [str(TREE / "script/lib"), str(TREE / "tests/desktop")]
BUILD = TREE / "build/bench"
os.environ.setdefault("QUILLON", str(BUILD / "quillon"))
os.environ.setdefault("X11_PROBE", str(BUILD / "tests/desktop/clients/x11_probe"))

from desktop import Failed, Interrupted, PrivateDesktop  # noqa: E402
from devices import Device, await_taken  # noqa: E402
from process_facts import children, processor_time  # noqa: E402
from witnesses import QUILLON, write_settings  # noqa: E402

ROUNDS = 3
SECONDS, RATE = 3, 1000
OUTSIDE, IN_BAND = (640, 400), (20, 400)
DEVICES = ("mouse", "second mouse", "touchpad")


def seconds_used(processes) -> float:
    return sum(map(processor_time, processes))


def measure(desktop, mouse, place, quillon=None) -> tuple[float, float]:
    """The share of a processor that the X server takes, and Quillon."""
    desktop.move_pointer(*place)
    mouse.move(1, 0)
    if quillon:
        await_taken(desktop, DEVICES if place == IN_BAND else ())
    ours = [quillon.pid, *children(quillon.pid)] if quillon else []
    before = seconds_used([desktop.server.pid]), seconds_used(ours)
    for _ in range(SECONDS * RATE // 20):
        mouse.glide(0, 1, 10, 1 / RATE)
        mouse.glide(0, -1, 10, 1 / RATE)
    after = seconds_used([desktop.server.pid]), seconds_used(ours)
    return tuple((end - start) / SECONDS for start, end in zip(before, after))


def main() -> None:
    rows = {}
    with PrivateDesktop(server="xorg") as desktop:
        mouse = Device(desktop, "mouse")
        write_settings(desktop, {"Tool4LeftEdge": True})
        for _ in range(ROUNDS):
            for name, place in (("outside the bands", OUTSIDE), ("inside a band", IN_BAND)):
                rows.setdefault(f"no such program, {name}", []).append(
                    measure(desktop, mouse, place))
            quillon = desktop.start("quillon", [QUILLON])
            desktop.move_pointer(*IN_BAND)
            await_taken(desktop, DEVICES)
            for name, place in (("outside the bands", OUTSIDE), ("inside a band", IN_BAND)):
                rows.setdefault(f"Quillon, left edge armed, {name}", []).append(
                    measure(desktop, mouse, place, quillon))
            desktop.end(quillon)
    print(f"\nA mouse with scroll axes at {RATE} reports a second: share of a processor\n"
          f"{'':50} {'X server':>9} {'Quillon':>9} {'ratio of sums':>14}")
    base = None
    for name, measured in rows.items():
        server, ours = (statistics.median(column) for column in zip(*measured))
        base = base or server
        print(f"{name:50} {server:9.1%} {ours:9.1%} {(server + ours) / base:14.2f}")


if __name__ == "__main__":
    try:
        main()
    except Failed as failure:
        sys.exit(f"device_cost: {failure}")
    except Interrupted as interruption:
        sys.exit(interruption.status)
