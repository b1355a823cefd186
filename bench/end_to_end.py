"""Latencies of real scrolls on a real X server, with Quillon and with what people use instead.

    end_to_end.py BUILD-FOLDER      run inside a desktop, by script/bench

Everything is measured in one run, in turns, so that the ratios hold whatever the machine is doing.
"""

import contextlib
import os
import pathlib
import statistics
import subprocess
import sys
import tempfile
import time

BUILD = pathlib.Path(sys.argv[1])
LATENCY = BUILD / "bench/scroll_latency"
QUILLON = BUILD / "quillon"
ROUNDS = 5
PASSES = 200    # scrolls per round
SWITCHES = 40   # desktop switches per round: 200 in all

OUTSIDE = (640, 400)
IN_BAND = (5, 400)


def move_pointer(place):
    # The nudge after the jump is motion of a device, as a hand would make it.
    x, y = place
    subprocess.run(["xdotool", "mousemove", str(x), str(y), "mousemove_relative", "1", "0"],
                   check=True)


def wait_until(condition, what, limit=10.0):
    deadline = time.monotonic() + limit
    while not condition():
        if time.monotonic() > deadline:
            sys.exit(f"end_to_end: {what} did not happen within {limit:g} s")
        time.sleep(0.01)


@contextlib.contextmanager
def running(command, **settings):
    """A program with settings of its own, ended when the block ends."""
    with tempfile.TemporaryDirectory() as folder:
        environment = os.environ | {"XDG_CONFIG_HOME": folder} | settings
        for key, value in command.get("defaults", {}).items():
            subprocess.run([QUILLON, "defaults", "write", key, value], env=environment, check=True)
        process = subprocess.Popen(command["run"], env=environment, stdout=subprocess.DEVNULL,
                                   stderr=subprocess.DEVNULL)
        try:
            if "ready" in command:
                wait_until(command["ready"], f"{command['run'][0]} at work")
            yield process
        finally:
            process.terminate()
            process.wait()


def wheel_is_taken():
    return subprocess.run([BUILD / "tests/desktop/clients/x11_probe", "can-grab"],
                          stdout=subprocess.DEVNULL).returncode != 0


def quillon(sensitivity="4", armed="true", ready=None):
    command = {"run": [QUILLON], "defaults": {"Tool4LeftEdge": armed,
                                              "Tool4ScrollSensitivity": sensitivity}}
    return command | ({"ready": ready} if ready else {})


def xbindkeys(folder):
    """One notch of the wheel runs the command that people bind to it."""
    rc = pathlib.Path(folder) / "xbindkeysrc"
    rc.write_text('"wmctrl -s 0"\n  b:4\n"wmctrl -s 1"\n  b:5\n')
    return {"run": ["xbindkeys", "-n", "-f", str(rc)], "ready": wheel_is_taken}


def latency(*arguments):
    """(median, p99, arrived) of one call of the measuring program."""
    median, p99, arrived = subprocess.run([LATENCY, *map(str, arguments)], check=True, text=True,
                                          stdout=subprocess.PIPE).stdout.split()
    return float(median), float(p99), arrived


class Case:
    """One row of the table, gathered over the rounds."""

    def __init__(self, name):
        self.name, self.medians, self.p99s, self.arrived = name, [], [], []

    def add(self, measured):
        median, p99, arrived = measured
        self.medians.append(median)
        self.p99s.append(p99)
        self.arrived.append(arrived)

    def median(self):
        return statistics.median(self.medians)

    def row(self, base):
        if self.median() < 0:
            return f"{self.name:58} never arrives"
        arrived = [tuple(map(int, each.split("/"))) for each in self.arrived]
        total = f"{sum(a for a, _ in arrived)}/{sum(b for _, b in arrived)}"
        return (f"{self.name:58} {self.median():8.0f} {statistics.median(self.p99s):8.0f}"
                f" {self.median() / base.median():7.2f} {total:>10}")


def table(title, cases):
    print(f"\n{title}\n{'':58} {'median':>8} {'p99':>8} {'ratio':>7} {'arrived':>10}")
    for case in cases:
        print(case.row(cases[0]))


def main():
    without, off, outside, theirs_pass = (
        Case("no such program"), Case("Quillon, no edge armed"),
        Case("Quillon, left edge armed, pointer outside its band"),
        Case("xbindkeys bound to the wheel"))
    theirs, ours_one, ours_four = (
        Case("xbindkeys, one notch runs 'wmctrl -s'"), Case("Quillon, one notch"),
        Case("Quillon, the fourth of four notches"))
    subprocess.run(["wmctrl", "-s", "0"], check=True)
    with tempfile.TemporaryDirectory() as folder:
        for _ in range(ROUNDS):
            move_pointer(OUTSIDE)
            without.add(latency("pass", PASSES))
            with running(quillon(armed="false")):
                off.add(latency("pass", PASSES))
            move_pointer(IN_BAND)
            with running(quillon(ready=wheel_is_taken)):
                move_pointer(OUTSIDE)
                wait_until(lambda: not wheel_is_taken(), "letting go of the wheel")
                outside.add(latency("pass", PASSES))
            with running(xbindkeys(folder)):
                theirs_pass.add(latency("pass", 3))
                theirs.add(latency("switch", SWITCHES, 1))
            move_pointer(IN_BAND)
            with running(quillon(sensitivity="1", ready=wheel_is_taken)):
                ours_one.add(latency("switch", SWITCHES, 1))
            with running(quillon(ready=wheel_is_taken)):
                ours_four.add(latency("switch", SWITCHES, 4))
    print("All times in microseconds, from the injection of the scroll.")
    table("A scroll reaches the program under the pointer", [without, off, outside, theirs_pass])
    table("A scroll changes the desktop", [theirs, ours_one, ours_four])


if __name__ == "__main__":
    main()
