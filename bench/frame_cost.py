"""How well the hub keeps to the screen's frames while it opens, slides, is scrolled and dragged, and
what memory it has after its screens have been opened many times.

    frame_cost.py       run by script/bench; it opens a desktop of its own
"""

import json
import pathlib
import sys

TREE = pathlib.Path(__file__).resolve().parents[1]
sys.path.insert(0, str(TREE / "script/lib"))

from desktop import Failed, Interrupted, PrivateDesktop  # noqa: E402

FRAME = 1000 / 60  # milliseconds
PROGRAM = TREE / "build/bench/bench/frame_times"


def quantile(values, part) -> float:
    return sorted(values)[min(len(values) - 1, int(len(values) * part))]


def table(results) -> None:
    print(f"{'processor time of a frame, ms':30}{'median':>8}{'p99':>8}{'longest':>9}"
          f"{'p99 of a frame':>16}{'frames':>8}{'between two, median':>21}{'p99':>7}")
    for name, times in results.items():
        cost, between = times["cost"], times["between"] or [float("nan")]
        print(f"{name:30}{quantile(cost, 0.5):8.1f}{quantile(cost, 0.99):8.1f}{max(cost):9.1f}"
              f"{quantile(cost, 0.99) / FRAME:16.2f}{len(cost):8}{quantile(between, 0.5):21.1f}"
              f"{quantile(between, 0.99):7.1f}")


def main() -> None:
    with PrivateDesktop() as desktop:
        results = json.loads(desktop.run(PROGRAM, limit=300))
    memory = results.pop("memory")
    table(results)
    print("resident memory after opening every screen, MiB: "
          + ", ".join(f"{count} times {memory[count - 1] / 1024:.1f}"
                      for count in (1, 10, 20, 30, 40, 50)))


if __name__ == "__main__":
    try:
        main()
    except Failed as failure:
        sys.exit(f"frame_cost: {failure}")
    except Interrupted as interruption:
        sys.exit(interruption.status)
