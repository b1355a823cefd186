"""What a monitor hears, as the program prints it that has one."""

from press_tap import PressTap
from witnesses import wait_until

HEARD = {"up": "heard 22 0 1", "down": "heard 22 0 -1",
         "left": "heard 22 -1 0", "right": "heard 22 1 0"}
CLICKS = {1: ["heard 1 0", "heard 2 0"], 3: ["heard 3 1", "heard 4 1"],
          2: ["heard 25 2", "heard 26 2"], 8: ["heard 25 3", "heard 26 3"]}
LAST = 10  # a button of our own: when a client has got its fence, the monitor need not have
LAST_HEARD = "heard 26 5"
FENCES_HEARD = ["heard 25 4", "heard 26 4", "heard 25 5", LAST_HEARD]


class Listening:
    """To be mixed into a test with a `hand` at the mouse. Each test has the program anew."""

    def setUp(self):
        super().setUp()
        self.tap = PressTap(self.desktop, f"listening-{self.id().rpartition('.')[2]}")
        self.addCleanup(self._end)
        self._seen = 0

    def _end(self) -> None:
        self.desktop.end(self.tap.process)
        others = [line for line in self.tap.lines() if not line.startswith(("heard", "scrolled"))]
        print(f"{self.id()}: besides, the tap printed:", *others, sep="\n    ")

    def heard(self) -> list[str]:
        """Since it was asked last. A click, which is left out, is made after everything else."""
        before = self.tap.count(LAST_HEARD)
        self.hand.click(LAST)
        wait_until(lambda: self.tap.count(LAST_HEARD) > before, "the last click is heard of")
        lines, self._seen = self.tap.lines()[self._seen:], len(self.tap.lines())
        return [line for line in lines if line.startswith("heard") and line not in FENCES_HEARD]
